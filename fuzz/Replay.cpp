#include <juce_core/juce_core.h>

#include <cstdint>
#include <cstdio>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);

namespace
{
using Bytes = std::vector<uint8_t>;

constexpr int mutationsPerSeed = 2000;

/** Pieces that readers of text trip over. */
constexpr const char* pieces[] { "<",
                                 "</",
                                 ">",
                                 "/>",
                                 "<![CDATA[",
                                 "]]>",
                                 "<!--",
                                 "&#0;",
                                 "&#x110000;",
                                 "&amp",
                                 "%",
                                 "%00",
                                 "%c3",
                                 "\xff",
                                 "\xfe\xff",
                                 "'",
                                 "\"",
                                 "\r",
                                 "\n#",
                                 "\\",
                                 "-1e9",
                                 "9999999999999999999999",
                                 "\xed\xa0\x80",
                                 "\xef\xbb\xbf" };

void mutate (Bytes& bytes, juce::Random& random)
{
    const auto place = static_cast<size_t> (random.nextInt (static_cast<int> (bytes.size()) + 1));
    const auto at = bytes.begin() + static_cast<std::ptrdiff_t> (place);
    const auto rest = bytes.size() - place;
    const auto length = static_cast<std::ptrdiff_t> (
        rest > 0 ? random.nextInt (static_cast<int> (std::min<size_t> (rest, 64))) : 0);
    switch (random.nextInt (5))
    {
    case 0:
        if (rest > 0)
            *at = static_cast<uint8_t> (random.nextInt (256));
        break;
    case 1:
    {
        const std::string_view piece (pieces[random.nextInt (static_cast<int> (std::size (pieces)))]);
        bytes.insert (at, piece.begin(), piece.end());
        break;
    }
    case 2:
        bytes.erase (at, at + length);
        break;
    case 3:
    {
        const Bytes copy (at, at + length);
        bytes.insert (bytes.begin() + random.nextInt (static_cast<int> (bytes.size()) + 1), copy.begin(),
                      copy.end());
        break;
    }
    default:
        if (random.nextInt (8) == 0)
            bytes.resize (place);
        break;
    }
}
}

/** Runs every file of a folder through the reader, whole and then changed in the same ways at every run.
    usage: fuzz_NAME FOLDER */
int main (int count, char** arguments)
{
    const juce::File folder (count > 1 ? juce::String::fromUTF8 (arguments[1]) : juce::String());
    auto seeds = folder.findChildFiles (juce::File::findFiles, true);
    seeds.sort();
    if (seeds.isEmpty())
        return std::fprintf (stderr, "There are no seeds in the folder.\n"), 1;

    juce::Random random (20110714);
    for (const auto& seed : seeds)
    {
        juce::MemoryBlock block;
        seed.loadFileAsData (block);
        const auto* begin = static_cast<const uint8_t*> (block.getData());
        const Bytes whole (begin, begin + block.getSize());
        LLVMFuzzerTestOneInput (whole.data(), whole.size());
        auto bytes = whole;
        for (int i = 0; i < mutationsPerSeed; ++i)
        {
            if (i % 8 == 0)
                bytes = whole;
            mutate (bytes, random);
            LLVMFuzzerTestOneInput (bytes.data(), bytes.size());
        }
    }
    std::printf ("%d seeds\n", seeds.size());
    return 0;
}
