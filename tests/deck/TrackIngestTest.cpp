#include "DeckFixture.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{
constexpr double rate = DeckFixture::rate;

int entryOf (int frame)
{
    return frame / framesPerOverviewEntry;
}

/** Appends a stereo pair in pieces of odd sizes. */
void ingest (DeckPlayer& deck, const std::vector<int16_t>& left, const std::vector<int16_t>& right, int piece)
{
    TrackIngest into (deck);
    for (int done = 0; done < static_cast<int> (left.size()); done += piece)
        into.append (left.data() + done, right.data() + done,
                     std::min (piece, static_cast<int> (left.size()) - done));
}

std::vector<int16_t> to16 (const std::vector<float>& signal)
{
    std::vector<int16_t> out;
    for (const auto sample : signal)
        out.push_back (static_cast<int16_t> (std::lround (sample * 32767.0f)));
    return out;
}
}

TEST (TrackIngest, PiecesOfAnySizeGiveTheSameTrackAndPicture)
{
    const auto left = to16 (Signals::noise (20'011, 5, 0.9)), right = to16 (Signals::noise (20'011, 6, 0.4));
    DeckFixture decks;
    ingest (decks.deck (0), left, right, 20'011);
    ingest (decks.deck (1), left, right, 1);
    ingest (decks.deck (2), left, right, 577);
    for (int d = 0; d < 3; ++d)
    {
        const auto& deck = decks.deck (d);
        ASSERT_EQ (deck.loadedFrames, 20'011);
        ASSERT_TRUE (std::equal (left.begin(), left.end(), deck.audioMemory.left()));
        ASSERT_TRUE (std::equal (right.begin(), right.end(), deck.audioMemory.right()));
        for (size_t e = 0; e < 41; ++e)
        {
            const auto &mine = *deck.overview, &first = *decks.deck (0).overview;
            ASSERT_EQ (mine.overviewMax[e].get(), first.overviewMax[e].get());
            ASSERT_EQ (mine.overviewMin[e].get(), first.overviewMin[e].get());
            ASSERT_EQ (mine.overviewLevel[e].get(), first.overviewLevel[e].get());
            ASSERT_EQ (mine.overviewLow[e].get(), first.overviewLow[e].get());
            ASSERT_EQ (mine.overviewMid[e].get(), first.overviewMid[e].get());
            ASSERT_EQ (mine.overviewHigh[e].get(), first.overviewHigh[e].get());
        }
    }
}

TEST (TrackIngest, ThePeaksAreThoseOfTheSamplesShiftedBy10Bits)
{
    const auto left = to16 (Signals::noise (4096, 7, 0.95)), right = to16 (Signals::noise (4096, 8, 0.2));
    DeckFixture decks;
    ingest (decks.deck(), left, right, 300);
    for (int e = 0; e < 8; ++e)
    {
        int most = 0, least = 0;
        for (int i = 512 * e; i < 512 * (e + 1); ++i)
            for (const auto* side : { &left, &right })
            {
                most = std::max (most, (*side)[static_cast<size_t> (i)] >> 10);
                least = std::min (least, (*side)[static_cast<size_t> (i)] >> 10);
            }
        EXPECT_EQ (decks.deck().overview->overviewMax[static_cast<size_t> (e)], most);
        EXPECT_EQ (decks.deck().overview->overviewMin[static_cast<size_t> (e)], least);
    }
}

TEST (TrackIngest, FullScaleAndSilenceReachTheEndsOfTheScales)
{
    DeckFixture decks;
    std::vector<int16_t> square (20'480);
    for (size_t i = 0; i < square.size(); ++i)
        square[i] = i % 2 == 0 ? INT16_MAX : INT16_MIN;
    ingest (decks.deck(), square, square, 1000);
    const auto& loud = *decks.deck().overview;
    EXPECT_EQ (loud.overviewMax[10], 31);
    EXPECT_EQ (loud.overviewMin[10], -32);
    EXPECT_EQ (loud.overviewLevel[10], 31); // root of the mean of 31 and 32 squared, over 511 of 512

    const std::vector<int16_t> silence (20'480);
    ingest (decks.deck (1), silence, silence, 1000);
    const auto& quiet = *decks.deck (1).overview;
    EXPECT_EQ (quiet.overviewMax[10], 0);
    EXPECT_EQ (quiet.overviewLevel[10], 0);
    EXPECT_EQ (quiet.overviewLow[10], 0);
    EXPECT_EQ (quiet.overviewHigh[10], 0);
}

TEST (TrackIngest, ColoursFollowTheBands)
{
    const auto coloursOf = [] (double frequency)
    {
        DeckFixture decks;
        const auto tone = to16 (Signals::sine (frequency, rate, 40'960, 0.8));
        ingest (decks.deck(), tone, tone, 4096);
        const auto& o = *decks.deck().overview;
        return std::array { static_cast<int> (o.overviewLow[60]), static_cast<int> (o.overviewMid[60]),
                            static_cast<int> (o.overviewHigh[60]) };
    };
    const auto bass = coloursOf (100.0), treble = coloursOf (8000.0);
    EXPECT_GT (bass[0], 140); // red near its top of 150
    EXPECT_LT (bass[2], 10);
    EXPECT_GT (treble[2], 160); // blue near its top of 170
    EXPECT_LT (treble[0], 10);
}

TEST (TrackIngest, WhatIsBeyondTheMemoryIsDropped)
{
    DeckFixture decks;
    auto& deck = decks.deck();
    deck.loadedFrames = PXAudioSampleBuffer::maxFrames - 100; // as after 12 minutes
    TrackIngest into (deck);
    const std::vector<int16_t> piece (1000, 7);
    EXPECT_EQ (into.append (piece.data(), piece.data(), 1000), 100);
    EXPECT_EQ (into.append (piece.data(), piece.data(), 1000), 0);
    EXPECT_EQ (deck.loadedFrames, PXAudioSampleBuffer::maxFrames);
    EXPECT_EQ (deck.audioMemory.left()[PXAudioSampleBuffer::maxFrames - 1], 7);
    EXPECT_EQ (entryOf (PXAudioSampleBuffer::maxFrames - 1), TrackOverview::entries - 1);
}
