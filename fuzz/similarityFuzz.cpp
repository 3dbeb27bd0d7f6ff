#include "Check.h"

#include "similarity/store/SessionFile.h"

#include <cstring>

/** Tracks of any bytes are usable, and a file written from them reads as the same. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    // Aligned as a mapped file is.
    std::vector<uint64_t> words ((size + 7) / 8);
    if (size > 0)
        std::memcpy (words.data(), data, size);
    const auto contents = SessionFile::read ({ reinterpret_cast<const std::byte*> (words.data()), size });
    using State = SessionFile::Contents::State;
    FUZZ_CHECK ((contents.state == State::torn) == (contents.lost > 0));
    FUZZ_CHECK (contents.sample.members.size() <= SessionFile::mostMembers);

    std::vector<std::byte> bytes;
    SessionFile::appendHeader (bytes);
    if (contents.sample.draw != 0)
        SessionFile::append (bytes, contents.sample);
    for (const auto& track : contents.tracks)
    {
        FUZZ_CHECK (isUsable (track.stored->description) && !track.path.empty());
        FUZZ_CHECK (distance (track.stored->description, contents.tracks.front().stored->description)
                    >= 0.0f);
        SessionFile::append (bytes, *track.stored, track.path);
    }
    const auto again = SessionFile::read (bytes);
    FUZZ_CHECK (again.state == State::whole && again.tracks.size() == contents.tracks.size());
    FUZZ_CHECK (again.sample.draw == contents.sample.draw);
    for (size_t i = 0; i < again.tracks.size(); ++i)
        FUZZ_CHECK (again.tracks[i].path == contents.tracks[i].path);
    return 0;
}
