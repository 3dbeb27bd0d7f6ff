#include "analysis/track/TrackAnalyser.h"

#include "beats/Rhythm.h"

#include <gtest/gtest.h>

namespace
{
constexpr double rate = 44100.0;

std::vector<float> drums (double seconds, double bpm)
{
    return Rhythm::play ({ 4, "x...x...x...x...", "....x.......x...", "x.x.x.x.x.x.x.x." }, seconds, rate,
                         [bpm] (double beat) { return 0.1 * rate + beat * rate * 60.0 / bpm; })
        .samples;
}

TrackAnalysis analysed (const std::vector<float>& audio, int tempoRangeIndex = 0)
{
    const auto frames = static_cast<int> (audio.size());
    TrackAnalyser analyser (rate, TrackAnalyser::isClip (frames, rate));
    analyser.add (audio.data(), audio.data(), frames);
    TrackAnalysis found;
    analyser.finish (tempoRangeIndex, found);
    return found;
}
}

TEST (TrackAnalyser, TemposAreRoundedAndLimited)
{
    constexpr std::pair<double, double> stored[] { { 127.994, 127.99 }, { 128.006, 128.01 }, { 29.0, 30.0 },
                                                   { 128.0, 128.0 },    { 30.0, 30.0 },      { 250.0, 250.0 },
                                                   { 251.0, 250.0 },    { 127.9951, 128.0 } };
    for (const auto& [measured, kept] : stored)
        EXPECT_DOUBLE_EQ (TrackAnalyser::storedTempo (measured), kept) << measured;

    EXPECT_FALSE (TrackAnalyser::isTooSlow (60.0, 0));
    EXPECT_TRUE (TrackAnalyser::isTooSlow (79.99, 1));
    EXPECT_FALSE (TrackAnalyser::isTooSlow (80.0, 1));
    EXPECT_FALSE (TrackAnalyser::isTooSlow (160.0, 5));
    EXPECT_FALSE (TrackAnalyser::isTooSlow (0.0, 5)); // nothing found

    EXPECT_TRUE (TrackAnalyser::isClip (static_cast<int64_t> (30 * rate) - 1, rate));
    EXPECT_FALSE (TrackAnalyser::isClip (static_cast<int64_t> (30 * rate), rate));
    EXPECT_FALSE (TrackAnalyser::isClip (1, 0.0)); // not known
}

TEST (TrackAnalyser, ATempoBelowThePreferenceIsDoubledWithItsGrid)
{
    const auto audio = drums (40.0, 100.0);
    const auto plain = analysed (audio), doubled = analysed (audio, 3);
    EXPECT_NEAR (plain.tempoTracker, 100.0, 0.1);
    EXPECT_NEAR (doubled.tempoTracker, 200.0, 0.2);
    EXPECT_NEAR (static_cast<double> (doubled.beatMarks->size()),
                 2.0 * static_cast<double> (plain.beatMarks->size()), 4.0);

    // Marks stand half a beat apart, and the downbeat is one of them.
    const auto& marks = *plain.beatMarks;
    EXPECT_NEAR (marks[11].pos - marks[1].pos, 10 * rate * 30.0 / 100.0, 100.0);
    EXPECT_EQ (marks[static_cast<size_t> (plain.downbeatId)].pos, plain.downbeatPos);
}

TEST (TrackAnalyser, WithoutBeatsTheTempoStaysAndTheGridIsEmpty)
{
    for (const auto& found : { analysed ({}), analysed (std::vector<float> (200'000, 0.0f)) })
    {
        EXPECT_EQ (found.beatMarks, std::vector<BeatMark>());
        EXPECT_EQ (found.tempoTracker, 120.0);
    }
    TrackAnalyser none (8000.0, false);
    EXPECT_FALSE (none.canAnalyse());
    TrackAnalysis found;
    none.finish (0, found);
    EXPECT_TRUE (found.beatMarks && found.beatMarks->empty());
    EXPECT_EQ (none.finishNear (120.0), 0.0);
}
