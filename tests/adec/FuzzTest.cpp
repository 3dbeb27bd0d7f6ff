#include "AdecLibrary.h"

namespace
{
class DamagedFile : public AdecTest, public testing::WithParamInterface<const char*>
{
};
}

/** Nothing is expected but an end: no crash, no fault that a sanitizer sees, no endless file. */
TEST_P (DamagedFile, SurvivesDamagedBytes)
{
    constexpr int mutations = 300, frames = 11025;
    constexpr int64_t mostBytes = 400'000'000;
    juce::MemoryBlock original;
    ASSERT_TRUE (encoded (juce::String ("encoded") + GetParam(), {}, frames).loadFileAsData (original));

    juce::Random random (4711);
    const auto file = folder.file (juce::String ("damaged") + GetParam());
    for (int i = 0; i < mutations; ++i)
    {
        auto bytes = original;
        // Headers stand at the start, MP4's tables at the end: half of the damage goes there.
        const auto size = static_cast<int> (bytes.getSize());
        const auto edge = std::min (size, 1500);
        for (int change = 1 + random.nextInt (8); change > 0; --change)
        {
            const int places[] = { random.nextInt (size), random.nextInt (size), random.nextInt (edge),
                                   size - 1 - random.nextInt (edge) };
            const int values[] = { random.nextInt (256), 0, 255, 128 };
            bytes[static_cast<size_t> (places[random.nextInt (4)])] =
                static_cast<char> (values[random.nextInt (4)]);
        }
        if (random.nextInt (8) == 0)
            bytes.setSize (static_cast<size_t> (random.nextInt (size)));
        ASSERT_TRUE (file.replaceWithData (bytes.getData(), bytes.getSize()));
        const auto decoded = library.decode (file, random.nextInt (4) == 0 ? 1 + random.nextInt (5000) : 0);
        EXPECT_LT (static_cast<int64_t> (decoded.samples.size()), mostBytes) << i;
    }
}

INSTANTIATE_TEST_SUITE_P (Formats, DamagedFile,
                          testing::Values (".mp3", ".m4a", ".ogg", ".flac", ".wma", ".aiff", ".wav"),
                          [] (const auto& info) { return std::string (info.param + 1); });
