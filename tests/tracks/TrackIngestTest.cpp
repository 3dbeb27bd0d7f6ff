#include "tracks/TrackIngest.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <memory>
#include <numbers>

namespace
{
constexpr double rate = 44100.0;

struct Track
{
    TrackTarget target() { return { samples, *overview, frames, sampleRate }; }

    PXAudioSampleBuffer samples;
    std::unique_ptr<TrackOverview> overview = std::make_unique<TrackOverview>();
    Published<int32_t> frames;
    Published<double> sampleRate { rate };
};

int entryOf (int frame)
{
    return frame / framesPerOverviewEntry;
}

/** Appends a stereo pair in pieces of odd sizes. */
void ingest (Track& track, const std::vector<int16_t>& left, const std::vector<int16_t>& right, int piece)
{
    TrackIngest into (track.target());
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
    Track tracks[3];
    ingest (tracks[0], left, right, 20'011);
    ingest (tracks[1], left, right, 1);
    ingest (tracks[2], left, right, 577);
    for (const auto& track : tracks)
    {
        ASSERT_EQ (track.frames, 20'011);
        ASSERT_TRUE (std::equal (left.begin(), left.end(), track.samples.left()));
        ASSERT_TRUE (std::equal (right.begin(), right.end(), track.samples.right()));
        for (size_t e = 0; e < 41; ++e)
        {
            const auto picture = [e] (const TrackOverview& of)
            {
                return std::array<int, 6> { of.overviewMax[e], of.overviewMin[e], of.overviewLevel[e],
                                            of.overviewLow[e], of.overviewMid[e], of.overviewHigh[e] };
            };
            ASSERT_EQ (picture (*track.overview), picture (*tracks[0].overview));
        }
    }
}

TEST (TrackIngest, ThePeaksAreThoseOfTheSamplesShiftedBy10Bits)
{
    const auto left = to16 (Signals::noise (4096, 7, 0.95)), right = to16 (Signals::noise (4096, 8, 0.2));
    Track track;
    ingest (track, left, right, 300);
    for (int e = 0; e < 8; ++e)
    {
        int most = 0, least = 0;
        for (int i = 512 * e; i < 512 * (e + 1); ++i)
            for (const auto* side : { &left, &right })
            {
                most = std::max (most, (*side)[static_cast<size_t> (i)] >> 10);
                least = std::min (least, (*side)[static_cast<size_t> (i)] >> 10);
            }
        EXPECT_EQ (track.overview->overviewMax[static_cast<size_t> (e)], most);
        EXPECT_EQ (track.overview->overviewMin[static_cast<size_t> (e)], least);
    }
}

TEST (TrackIngest, FullScaleAndSilenceReachTheEndsOfTheScales)
{
    struct Case
    {
        int16_t even, odd;
        int most, least, level;
    };
    // The level is the root of the mean square over 511 frames of 512: a constant 32 stays below 32.
    for (const auto& c : { Case { INT16_MAX, INT16_MIN, 31, -32, 31 },
                           { INT16_MIN, INT16_MIN, 0, -32, 31 },
                           { 0, 0, 0, 0, 0 } })
    {
        std::vector<int16_t> square (20'480, c.even);
        for (size_t i = 1; i < square.size(); i += 2)
            square[i] = c.odd;
        Track track;
        ingest (track, square, square, 1000);
        EXPECT_EQ (track.overview->overviewMax[10], c.most);
        EXPECT_EQ (track.overview->overviewMin[10], c.least);
        EXPECT_EQ (track.overview->overviewLevel[10], c.level);
    }
}

namespace
{
struct Bands
{
    int low = 0, mid = 0, high = 0;
};

/** The colours of all whole entries by the plain transform, one bin after the other. */
std::vector<Bands> plainColours (const std::vector<int16_t>& left, const std::vector<int16_t>& right)
{
    std::vector<Bands> all;
    Bands state;
    for (size_t begin = 0; begin + 512 <= left.size(); begin += 512)
    {
        double low = -120.0, mid = -120.0, high = -120.0, least = 255.0;
        for (int k = 0; k < 256; ++k)
        {
            std::complex<double> sum;
            for (size_t i = 0; i < 512; ++i)
                sum += (left[begin + i] + right[begin + i]) * 0.5 / 32768.0
                       * std::polar (1.0, -2.0 * std::numbers::pi * k * static_cast<double> (i) / 512.0);
            auto& band = k < 4 ? low : (k < 25 ? mid : high);
            band = std::max (band, std::abs (sum));
            least = std::min (least, std::abs (sum));
        }
        const auto widest = std::max (low, high) - least;
        const auto range = widest == 0.0 ? 1.0 : widest;
        const auto follow = [] (int& value, double target)
        { value = std::clamp (static_cast<int> (value + (target - value) * 0.5), 0, 255); };
        const auto x = (low - least) / range, y = (high - least) / range;
        follow (state.low, x * x * (3.0 - 2.0 * x) * 150.0);
        follow (state.mid, (mid - least) / range * 160.0);
        follow (state.high, y * y * (3.0 - 2.0 * y) * 170.0);
        all.push_back (state);
    }
    return all;
}
}

TEST (TrackIngest, TheColoursAreThoseOfThePlainTransform)
{
    const auto sine = [] (double hz) { return to16 (Signals::sine (hz, rate, 8192, 0.8)); };
    auto burst = sine (1000.0); // towers above its range, and must be gone when it ends
    std::fill (burst.begin() + 4096, burst.end(), int16_t { 0 });
    const std::vector<std::pair<std::vector<int16_t>, std::vector<int16_t>>> cases {
        { sine (100.0), sine (100.0) },
        { sine (8000.0), sine (300.0) },
        { burst, burst },
        { std::vector<int16_t> (2048), std::vector<int16_t> (2048) },
        { to16 (Signals::noise (8192, 3, 0.9)), to16 (Signals::noise (8192, 4, 0.3)) },
    };
    for (size_t c = 0; c < cases.size(); ++c)
    {
        Track track;
        const auto& [left, right] = cases[c];
        ingest (track, left, right, 777);
        const auto expected = plainColours (left, right);
        for (size_t e = 0; e < expected.size(); ++e)
        {
            // One unit for what single precision cuts off elsewhere.
            const auto& overview = *track.overview;
            EXPECT_NEAR (overview.overviewLow[e], expected[e].low, 1) << c << ' ' << e;
            EXPECT_NEAR (overview.overviewMid[e], expected[e].mid, 1) << c << ' ' << e;
            EXPECT_NEAR (overview.overviewHigh[e], expected[e].high, 1) << c << ' ' << e;
        }
    }
}

TEST (TrackIngest, WhatIsBeyondTheMemoryIsDropped)
{
    Track track;
    track.frames = PXAudioSampleBuffer::maxFrames - 100; // as after 12 minutes
    TrackIngest into (track.target());
    const std::vector<int16_t> piece (1000, 7);
    EXPECT_EQ (into.append (piece.data(), piece.data(), 1000), 100);
    EXPECT_EQ (into.append (piece.data(), piece.data(), 1000), 0);
    EXPECT_EQ (track.frames, PXAudioSampleBuffer::maxFrames);
    EXPECT_EQ (track.samples.left()[PXAudioSampleBuffer::maxFrames - 1], 7);
    EXPECT_EQ (entryOf (PXAudioSampleBuffer::maxFrames - 1), TrackOverview::entries - 1);
}
