#include "AdecLibrary.h"

#include <cstring>

using OggCut = AdecTest;

namespace
{
/** The checksum of an Ogg page: polynomial 0x04c11db7, neither reflected nor inverted. */
uint32_t pageChecksum (const uint8_t* page, size_t bytes)
{
    uint32_t sum = 0;
    for (size_t i = 0; i < bytes; ++i)
    {
        sum ^= static_cast<uint32_t> (page[i]) << 24;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum << 1) ^ (0x04c11db7u & (0u - (sum >> 31)));
    }
    return sum;
}

/** Makes every page end that many frames earlier, as in a stream that was cut out of a longer one. */
void movePagesBack (juce::MemoryBlock& file, int64_t frames)
{
    auto* const bytes = static_cast<uint8_t*> (file.getData());
    for (size_t at = 0; at + 27 <= file.getSize();)
    {
        auto* const page = bytes + at;
        ASSERT_EQ (std::memcmp (page, "OggS", 4), 0);
        size_t size = 27u + page[26];
        for (size_t segment = 0; segment < page[26]; ++segment)
            size += page[27 + segment];

        int64_t position = 0;
        std::memcpy (&position, page + 6, sizeof (position));
        position -= position > 0 ? frames : 0;
        std::memcpy (page + 6, &position, sizeof (position));
        std::memset (page + 22, 0, 4);
        const auto sum = pageChecksum (page, size);
        std::memcpy (page + 22, &sum, sizeof (sum));
        at += size;
    }
}
}

TEST_F (OggCut, WhatLiesBeforeTimeZeroIsNotHeard)
{
    constexpr int sourceFrames = 100000;
    const auto wholeFile = encoded ("whole.ogg", { "-c:a", "libvorbis" }, sourceFrames);
    const auto whole = library.decode (wholeFile);
    ASSERT_EQ (whole.frames(), sourceFrames);

    for (const int early : { 1, 500, 5000 })
    {
        juce::MemoryBlock bytes;
        ASSERT_TRUE (wholeFile.loadFileAsData (bytes));
        movePagesBack (bytes, early);
        const auto file = folder.file ("cut.ogg");
        ASSERT_TRUE (file.replaceWithData (bytes.getData(), bytes.getSize()));
        const auto cut = library.decode (file);
        ASSERT_EQ (cut.frames(), sourceFrames - early);
        EXPECT_TRUE (std::equal (cut.samples.begin(), cut.samples.end(), whole.samples.begin() + early * 8));
    }
}
