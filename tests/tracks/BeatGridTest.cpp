#include "tracks/BeatGrid.h"

#include <gtest/gtest.h>

#include <random>

TEST (BeatGrid, NearestEvenBeatAgreesWithASearchOfAllEntries)
{
    std::mt19937 random (11);
    for (int round = 0; round < 300; ++round)
    {
        std::vector<BeatMark> marks;
        int32_t at = static_cast<int32_t> (random() % 20'000);
        for (auto count = random() % 40; count > 0; --count)
        {
            marks.push_back ({ at, 120.0 });
            at += static_cast<int32_t> (random() % (round % 3 == 0 ? 150'000 : 25'000));
        }
        BeatGrid grid;
        grid.beats = marks.data();
        grid.numBeats = static_cast<int32_t> (marks.size());
        grid.downbeatIndex = static_cast<int32_t> (random() % 7);
        grid.loadedFrames = at + 1;

        for (int probe = 0; probe < 20; ++probe)
        {
            const auto frame =
                static_cast<double> (random() % static_cast<unsigned> (at + 200'000)) - 50'000.0;
            std::optional<double> expected;
            for (int32_t i = 0; i < grid.beatCount(); ++i)
                if ((i - grid.downbeatIndex) % 2 == 0 && std::abs (grid.beatAt (i) - frame) < 100'000.0
                    && (!expected || std::abs (grid.beatAt (i) - frame) < std::abs (*expected - frame)))
                    expected = grid.beatAt (i);
            ASSERT_EQ (grid.nearestEvenBeat (frame), expected) << round << ' ' << frame;
        }
    }
}

TEST (BeatGrid, AFixedGridCountsFromItsDownbeat)
{
    BeatGrid grid;
    grid.fixedGrid = true;
    grid.bpm = 120.0;
    grid.downbeatPosition = 30'000; // 2.72 half beats of 11025 frames
    grid.loadedFrames = 441'000;
    EXPECT_DOUBLE_EQ (grid.period(), 11'025.0);
    EXPECT_EQ (grid.beatCount(), 40);
    EXPECT_EQ (grid.downbeatEntry(), 2);
    EXPECT_NEAR (grid.beatAt (grid.downbeatEntry()), 30'000.0, 1e-6);
    ASSERT_TRUE (grid.nearestEvenBeat (40'000.0).has_value());
    EXPECT_NEAR (*grid.nearestEvenBeat (40'000.0), 30'000.0, 1e-6);
    EXPECT_NEAR (*grid.nearestEvenBeat (42'000.0), 52'050.0, 1e-6);

    grid.bpm = 0.0;
    EXPECT_EQ (grid.beatCount(), 0);
    EXPECT_FALSE (grid.nearestEvenBeat (0.0).has_value());
}
