#include "Check.h"

#include "session/archive/TarFile.h"

#include <unistd.h>

namespace
{
constexpr juce::int64 mostBytes = 4 << 20; ///< of what a few compressed bytes may claim to be
constexpr size_t mostText = 4096;

/** A file of this process, gone when it ends. */
struct Passing
{
    explicit Passing (const char* name)
        : file (juce::File::getSpecialLocation (juce::File::tempDirectory)
                    .getChildFile ("archive-fuzz-" + juce::String (::getpid()) + name))
    {
    }
    ~Passing() { file.deleteFile(); }

    const juce::File file;
};
}

/** Unpacks any bytes entry by entry, as a restore does: a text is no longer than asked for, and a file that counts as unpacked is as
    long as its entry says. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    static const Passing archive (".tar"), unpacked (".out");
    archive.file.replaceWithData (data, size);
    TarReader tar (archive.file);
    juce::int64 total = 0;
    for (int entry = 0; tar.next() == TarReader::Step::entry; ++entry)
    {
        FUZZ_CHECK (tar.size() >= 0);
        total += tar.size();
        if (total > mostBytes)
            break;
        if (entry % 2 == 0)
        {
            FUZZ_CHECK (tar.text (mostText).getNumBytesAsUTF8() <= 3 * mostText); // Latin-1 grows
            continue;
        }
        unpacked.file.deleteFile();
        if (tar.unpack (unpacked.file))
            FUZZ_CHECK (unpacked.file.getSize() == tar.size());
    }
    return 0;
}
