#include "beats/Rhythm.h"

#include "analysis/AnalysisError.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
using namespace Rhythm;

const Bar clicks { 4, "", "", "x...x...x...x...", false };
const Bar fourOnTheFloor { 4, "x...x...x...x...", "....x.......x...", "..x...x...x...x." };
const Bar drumsOnly { 4, "x...x...x...x...", "....x.......x...", "..x...x...x...x.", false };
const Bar rock { 4, "x.......x.......", "....x.......x...", "x.x.x.x.x.x.x.x." };
const Bar brokenBeat { 4, "x.....x...x.....", "....x.......x..x", "x.x.x.x.x.x.x.x." };
const Bar halfTime { 4, "x...............", "........x.......", "x.x.x.x.x.x.x.x." };
const Bar shuffle { 4, "x.....x.....", "...x.....x..", "x.xx.xx.xx.x" };
const Bar waltz { 3, "x...........", "....x...x...", "x.x.x.x.x.x." };
const Bar plainWaltz { 3, "x..", "...", ".xx" };
const Bar jazzWaltz { 3, "x.....x..", "...x.....", "x..x.xx.." };
const Bar swing { 4, "x..x..x..x..", "...x.....x..", "x..x.xx..x.x" };
const Bar sixEight { 4, "x.....x.....", "...x.....x..", "x.xx.xx.xx.x" };

struct Case
{
    const char* name;
    const Bar& bar;
    double bpm;
    double reportedBpm; ///< folded into 65 to 165
    double seconds = 35.0;
    double rate = 44100.0;
    int engine = 1;
};

/** Random values for sounds without a beat. */
std::vector<float> hiss (double seconds)
{
    std::mt19937 random (3);
    std::vector<float> samples (static_cast<size_t> (seconds * 44100));
    for (auto& x : samples)
        x = static_cast<float> (random() / 8589934592.0 - 0.25);
    return samples;
}
}

TEST (BeatTracker, LaysAnExactGridOverSteadyRhythms)
{
    const Case cases[] {
        { "clicks", clicks, 60, 120 },
        { "clicks", clicks, 91.37, 91.37 },
        { "clicks", clicks, 150, 150 },
        { "clicks", clicks, 200, 100 },
        { "four on the floor", fourOnTheFloor, 128, 128 },
        { "four on the floor", fourOnTheFloor, 123.45, 123.45 },
        { "four on the floor", fourOnTheFloor, 174, 87 },
        { "drums only", drumsOnly, 123.45, 123.45 },
        { "drums only", drumsOnly, 95.3, 95.3 },
        { "rock", rock, 95.3, 95.3 },
        { "rock", rock, 190, 95 },
        { "broken beat", brokenBeat, 140, 140 },
        { "broken beat", brokenBeat, 110, 110 },
        { "half-time", halfTime, 140, 140 },
        { "shuffle", shuffle, 120, 120 },
        { "waltz", waltz, 140, 140 },
        { "plain waltz", plainWaltz, 88, 88 },
        { "plain waltz", plainWaltz, 116, 116 },
        { "plain waltz", plainWaltz, 150, 150 },
        { "jazz waltz", jazzWaltz, 112, 112 },
        { "jazz waltz", jazzWaltz, 144, 144 },
        { "slow rock", rock, 80, 80 },
        { "swing", swing, 90, 90 },
        { "swing", swing, 135, 135 },
        { "six eight", sixEight, 70, 70 },
        { "six eight", sixEight, 96, 96 },
        { "clip", rock, 117.3, 117.3, 20, 44100, 0 },
        { "clip", fourOnTheFloor, 133, 133, 13, 44100, 0 },
        { "low rate", rock, 126.7, 126.7, 35, 11025 },
        { "odd rate", rock, 126.7, 126.7, 35, 30000 },
        { "48 kHz", rock, 126.7, 126.7, 35, 48000 },
        { "96 kHz", rock, 126.7, 126.7, 35, 96000 },
        { "192 kHz", rock, 126.7, 126.7, 31, 192000 },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (testing::Message() << c.name << " at " << c.bpm << " BPM, " << c.rate << " Hz");
        const auto track = play (c.bar, c.seconds, c.rate, steady (c.bpm, c.rate, 0.31));
        const auto tracker = analyse (track.samples, c.rate, 1, c.engine);
        EXPECT_NEAR (tracker->getAverageTempo (0), c.reportedBpm, 0.05);
        const auto every = static_cast<size_t> (std::max (1.0, std::round (c.bpm / c.reportedBpm)));
        // A tempo that was halved may take either half of the beats.
        auto best = 0.0;
        for (size_t phase = 0; phase < every; ++phase)
        {
            std::vector<double> beats;
            for (auto i = phase; i + 1 < track.beats.size(); i += every)
                beats.push_back (track.beats[i]);
            best = std::max (best, hits (beats, beatsOf (*tracker),
                                         c.rate < 22050       ? 10.0
                                         : c.bar.kick.empty() ? 1.0
                                                              : 5.0,
                                         c.rate));
        }
        EXPECT_EQ (best, 1.0);
        // Chords tell the bar; the marks stand half a beat apart.
        CaufTAKT_If::Beat first, next, downbeat;
        ASSERT_EQ (tracker->getBeat (&first, 0, 0), AnalysisError::none);
        ASSERT_EQ (tracker->getBeat (&next, 1, 0), AnalysisError::none);
        EXPECT_NEAR (next.position - first.position, 30.0 * c.rate / c.reportedBpm, 2.0 + 0.001 * c.rate);
        if (c.bar.chords && every == 1)
        {
            EXPECT_EQ (tracker->getBeatsPerBar (0), c.bar.beats);
            ASSERT_EQ (tracker->getBeat (&downbeat, tracker->getDownbeatIndex (0, 0), 0),
                       AnalysisError::none);
            const auto bars = (downbeat.position / c.rate - 0.31) * c.bpm / 60.0 / c.bar.beats;
            EXPECT_NEAR (bars, std::round (bars), 0.02);
        }
    }
}

TEST (BeatTracker, HearsTheSameGridAtAllRates)
{
    const auto inSeconds = [] (double rate)
    {
        const auto track = play (swing, 40.0, rate, steady (113.3, rate, 0.31));
        auto beats = beatsOf (*analyse (track.samples, rate));
        for (auto& beat : beats)
            beat /= rate;
        return beats;
    };
    const auto expected = inSeconds (44100.0);
    for (const auto rate : { 11025.0, 16000.0, 22050.0, 32000.0, 48000.0, 88200.0, 96000.0, 192000.0 })
    {
        const auto found = inSeconds (rate);
        ASSERT_NEAR (static_cast<double> (found.size()), static_cast<double> (expected.size()), 1.0) << rate;
        EXPECT_EQ (hits (expected, found, rate < 22050 ? 10.0 : 5.0, 1.0), 1.0) << rate;
    }
}

TEST (BeatTracker, BeginsBarsWhereTheMusicDoes)
{
    constexpr auto rate = 44100.0, bpm = 120.0;
    const auto bars = [] (int count, int beats)
    { return std::vector<int> (static_cast<size_t> (count), beats); };
    const auto joined = [] (std::vector<std::vector<int>> parts)
    {
        std::vector<int> all;
        for (const auto& part : parts)
            all.insert (all.end(), part.begin(), part.end());
        return all;
    };
    const struct
    {
        const char* name;
        std::vector<int> lengths; ///< of bars, in beats
        int mostly;
    } cases[] {
        { "four", bars (24, 4), 4 },
        { "three", bars (32, 3), 3 },
        { "five", bars (20, 5), 5 },
        { "seven", bars (16, 7), 7 },
        { "a dropped beat", joined ({ bars (12, 4), { 3 }, bars (16, 4) }), 4 },
        { "a bar of two", joined ({ bars (16, 4), { 2 }, bars (12, 4) }), 4 },
        { "four, then three", joined ({ bars (16, 4), bars (14, 3) }), 4 },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        const auto samples = playBars (c.lengths, bpm, rate);
        const auto tracker = analyse (samples, rate);
        std::vector<double> expected, found;
        auto beat = 0;
        for (const auto length : c.lengths)
        {
            expected.push_back (beat * 60.0 / bpm * rate);
            beat += length;
        }
        CaufTAKT_If::Beat mark;
        for (int i = 0; tracker->getBeat (&mark, i, CaufTAKT_If::barList) == AnalysisError::none; ++i)
            found.push_back (mark.position);
        EXPECT_EQ (tracker->getBeatsPerBar (0), c.mostly);
        // The change itself may be found a bar or two late.
        EXPECT_GE (hits (expected, found, 35.0, rate), 0.9);
        EXPECT_GE (hits (found, expected, 35.0, rate), 0.9);
    }
}

TEST (BeatTracker, FollowsATempoThatMovesAndKeepsStillOtherwise)
{
    constexpr auto rate = 44100.0;
    const auto wave = [] (double depth, double seconds)
    {
        const auto w = 2.0 * std::numbers::pi / seconds;
        return [=] (double beat)
        {
            const auto t = beat * 60.0 / 110.0;
            return rate * (t + depth / w * std::sin (w * t));
        };
    };
    const struct
    {
        const char* name;
        std::function<double (double)> beats;
        bool moves;
    } cases[] {
        { "slows down and up by 4 percent", wave (0.04, 40.0), true },
        { "slows down and up by 2 percent", wave (0.02, 15.0), true },
        { "another tempo halfway",
          [] (double b) { return rate * 60 * (b < 70 ? b / 110 : 70 / 110.0 + (b - 70) / 117); }, true },
        { "record off its centre", wave (0.002, 1.8), false },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        const auto track = play (rock, 80.0, rate, c.beats);
        const auto tracker = analyse (track.samples, rate);
        EXPECT_GE (hits (track.beats, beatsOf (*tracker), 35.0, rate), 0.97);
        std::vector<double> tempos;
        CaufTAKT_If::Beat beat;
        for (int i = 0; tracker->getBeat (&beat, i, 0) == AnalysisError::none; ++i)
            tempos.push_back (beat.bpm);
        const auto [low, high] = std::minmax_element (tempos.begin(), tempos.end());
        EXPECT_EQ (*high > *low * 1.02, c.moves);
    }
}

TEST (BeatTracker, FindsTheBeatThroughSilenceAndFades)
{
    constexpr auto rate = 44100.0;
    const auto track = play (rock, 90.0, rate, steady (126.7, rate, 0.2));
    auto faded = track.samples, gaps = track.samples;
    for (size_t i = 0; i < faded.size(); ++i)
    {
        const auto t = static_cast<double> (i) / rate;
        faded[i] *= static_cast<float> (std::min (1.0, t / 30.0));
        if (t < 15 || (t > 40 && t < 70))
            gaps[i] = 0.0f;
    }
    for (const auto* samples : { &faded, &gaps })
    {
        const auto tracker = analyse (*samples, rate);
        EXPECT_NEAR (tracker->getAverageTempo (0), 126.7, 0.05);
        EXPECT_EQ (hits (track.beats, beatsOf (*tracker), 5.0, rate), 1.0);
    }
}

TEST (BeatTracker, GivesNothingOrAnEvenGridWhereThereIsNoBeat)
{
    const std::vector<float> silence (44100 * 40, 0.0f), constant (44100 * 40, 0.5f);
    auto click = silence, broken = silence, wild = hiss (40), sparse = silence;
    click[1000000] = 1.0f;
    std::fill (broken.begin(), broken.end(), std::numeric_limits<float>::quiet_NaN());
    wild[5000] = std::numeric_limits<float>::infinity();
    wild[6000] = 1e38f;
    std::mt19937 random (5);
    for (int i = 0; i < 130; ++i)
        sparse[random() % sparse.size()] = 1.0f;
    const struct
    {
        const char* name;
        const std::vector<float>& samples;
        bool hasMarks;
    } cases[] { { "silence", silence, false },       { "constant", constant, false },
                { "one click", click, false },       { "no numbers", broken, false },
                { "no samples", {}, false },         { "noise", wild, true },
                { "clicks at random", sparse, true } };
    for (const auto& c : cases)
        for (const auto engine : { 0, 1 })
        {
            SCOPED_TRACE (testing::Message() << c.name << ", engine " << engine);
            auto tracker = make (44100, 1, engine);
            feed (*tracker, c.samples);
            EXPECT_EQ (tracker->flush (true), AnalysisError::none);
            EXPECT_EQ (tracker->trackBeats (0, 0, 0, 0),
                       c.hasMarks ? AnalysisError::none : AnalysisError::wrongState);
            EXPECT_EQ (tracker->getTempoEstimate() > 0.0f, c.hasMarks);
            EXPECT_EQ (tracker->getNumberOfBeats (0) > 0, c.hasMarks);
            CaufTAKT_If::Beat beat;
            for (int i = 0; tracker->getBeat (&beat, i, 0) == AnalysisError::none; ++i)
                ASSERT_NEAR (beat.bpm, tracker->getAverageTempo (0), 1e-3);
        }
}

TEST (BeatTracker, DoesNotDependOnBlocksOrEqualChannels)
{
    const auto track = play (brokenBeat, 50.0, 44100.0, steady (117.9, 44100.0));
    const auto expected = beatsOf (*analyse (track.samples, 44100.0));
    for (const auto block : { 1, 333, 1024, 16384, 3000000 })
        EXPECT_EQ (beatsOf (*analyse (track.samples, 44100.0, 1, 1, block)), expected) << block;
    for (const auto channels : { 2, 4 })
    {
        const auto marks = beatsOf (*analyse (track.samples, 44100.0, channels));
        EXPECT_EQ (hits (expected, marks, 1.0, 44100.0), 1.0) << channels;
    }
}
