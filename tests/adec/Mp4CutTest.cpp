#include "AdecLibrary.h"

#include <cstring>

/** An MP4 file's statements on its start and end, in forms that the ffmpeg program doesn't write. */
namespace
{
constexpr int sourceFrames = 44100 + 5; // the last packet holds 73 frames

using Bytes = std::vector<uint8_t>;

Bytes load (const juce::File& file)
{
    juce::MemoryBlock block;
    EXPECT_TRUE (file.loadFileAsData (block));
    const auto* const begin = static_cast<const uint8_t*> (block.getData());
    return Bytes (begin, begin + block.getSize());
}

size_t positionOf (const Bytes& bytes, const char* type)
{
    const auto found = std::search (bytes.begin(), bytes.end(), type, type + 4);
    EXPECT_NE (found, bytes.end()) << type;
    return static_cast<size_t> (found - bytes.begin());
}

uint32_t bigEndian (const Bytes& bytes, size_t at)
{
    return juce::ByteOrder::bigEndianInt (bytes.data() + at);
}

void putBigEndian (Bytes& bytes, size_t at, uint32_t value)
{
    const auto swapped = juce::ByteOrder::swapIfLittleEndian (value);
    std::memcpy (bytes.data() + at, &swapped, 4);
}

Bytes box (const char* type, const Bytes& content)
{
    Bytes bytes (8);
    putBigEndian (bytes, 0, static_cast<uint32_t> (content.size() + 8));
    std::memcpy (bytes.data() + 4, type, 4);
    bytes.insert (bytes.end(), content.begin(), content.end());
    return bytes;
}

Bytes operator+ (Bytes first, const Bytes& second)
{
    first.insert (first.end(), second.begin(), second.end());
    return first;
}

Bytes text (const juce::String& words)
{
    const auto* const begin = words.toRawUTF8();
    return Bytes (begin, begin + words.getNumBytesAsUTF8());
}

/** Adds the tag to a file whose "moov" box is the last one. */
void addGaplessTag (Bytes& file, const juce::String& value)
{
    const Bytes zeros (4), version (4);
    const auto item = box ("----", box ("mean", version + text ("com.apple.iTunes"))
                                       + box ("name", version + text ("iTunSMPB"))
                                       + box ("data", Bytes { 0, 0, 0, 1 } + zeros + text (value)));
    const auto handler = box ("hdlr", Bytes (8) + text ("mdirappl") + Bytes (9));
    const auto added = box ("udta", box ("meta", version + handler + box ("ilst", item)));
    const auto movie = positionOf (file, "moov") - 4;
    putBigEndian (file, movie, bigEndian (file, movie) + static_cast<uint32_t> (added.size()));
    file.insert (file.end(), added.begin(), added.end());
}

juce::String gaplessText (int priming, int padding, int frames)
{
    return juce::String::formatted (" 00000000 %08X %08X %016X 00000000", priming, padding, frames);
}

class Mp4Cut : public AdecTest
{
protected:
    Bytes encodeWith (const char* options)
    {
        return load (
            encoded ("encoded.m4a", juce::StringArray::fromTokens (options, false), sourceFrames, 1));
    }

    AdecLibrary::Decoded decode (const Bytes& bytes)
    {
        const auto file = folder.file ("patched.m4a");
        EXPECT_TRUE (file.replaceWithData (bytes.data(), bytes.size()));
        return library.decode (file);
    }
};
}

TEST_F (Mp4Cut, GaplessTagStatesStartAndLength)
{
    auto file = encodeWith ("-c:a aac -use_editlist 0");
    const auto whole = decode (file).channel (0);
    ASSERT_EQ (static_cast<int> (whole.size()), 1024 + sourceFrames);

    addGaplessTag (file, gaplessText (1024, 951, sourceFrames - 100));
    const auto cut = decode (file).channel (0);
    ASSERT_EQ (static_cast<int> (cut.size()), sourceFrames - 100);
    EXPECT_TRUE (std::equal (cut.begin(), cut.end(), whole.begin() + 1024));
}

TEST_F (Mp4Cut, AGaplessTagThatCannotBeIsNoTag)
{
    const auto file = encodeWith ("-c:a aac");
    for (const auto& value : { gaplessText (1024, 0, 1 << 30), gaplessText (1 << 24, 0, 1000),
                               gaplessText (0, 0, 0), juce::String ("nonsense"), juce::String() })
    {
        auto tagged = file;
        addGaplessTag (tagged, value);
        EXPECT_EQ (decode (tagged).frames(), sourceFrames) << value;
    }
}

TEST_F (Mp4Cut, EditListCutsBothEndsToTheFrame)
{
    auto file = encodeWith ("-c:a aac -movie_timescale 44100");
    const auto whole = decode (file).channel (0);
    ASSERT_EQ (static_cast<int> (whole.size()), sourceFrames);

    const auto list = positionOf (file, "elst") + 4; // version, count, then duration and start
    ASSERT_EQ (bigEndian (file, list + 12), 1024u);
    putBigEndian (file, list + 8, sourceFrames - 20000);
    putBigEndian (file, list + 12, 1024 + 7001);
    const auto cut = decode (file).channel (0);
    ASSERT_EQ (static_cast<int> (cut.size()), sourceFrames - 20000);
    EXPECT_TRUE (std::equal (cut.begin(), cut.end(), whole.begin() + 7001));
}

TEST_F (Mp4Cut, MillisecondsOfTheMovieClockDontShortenTheEnd)
{
    // Each of these ends a different part of a millisecond and of a packet behind the movie clock's tick.
    for (const int frames : { 44100, 44101, 44143, 44144, 45056, 45057, 45099 })
    {
        const auto file = encoded ("encoded.m4a", { "-c:a", "aac" }, frames, 1);
        EXPECT_EQ (library.decode (file).frames(), frames);
    }
}

TEST_F (Mp4Cut, AProtectedTrackIsRefused)
{
    for (const auto* tag : { "drms", "enca" })
    {
        auto file = encodeWith ("-c:a aac");
        std::memcpy (file.data() + positionOf (file, "mp4a"), tag, 4);
        const auto decoded = decode (file);
        EXPECT_FALSE (decoded.hasAudio) << tag;
        EXPECT_EQ (decoded.frames(), 0) << tag;
    }
}
