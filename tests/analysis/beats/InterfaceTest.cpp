#include "beats/Rhythm.h"

#include "analysis/AnalysisError.h"
#include "analysis/beats/onset/BeatMarks.h"
#include "analysis/beats/onset/FirFilter.h"

#include <gtest/gtest.h>

#include <numeric>

namespace
{
using namespace Rhythm;
using namespace AnalysisError;

const Bar rock { 4, "x.......x.......", "....x.......x...", "x.x.x.x.x.x.x.x." };

/** An instance with marks of given tempos, a second apart. */
Tracker restored (const std::vector<double>& tempos, double start = 0.0, double period = 88200.0)
{
    auto tracker = make (44100);
    std::vector<CaufTAKT_If::Beat> marks;
    for (const auto bpm : tempos)
        marks.push_back ({ static_cast<int32_t> (marks.size()) * 11025, bpm, 1.0 });
    const CaufTAKT_If::Result result { 120.0f, static_cast<int> (marks.size()), 7, 0, 1.0f, start, period };
    EXPECT_EQ (tracker->setResult (result, marks.data()), none);
    return tracker;
}
}

TEST (BeatTrackerInterface, RefusesWhatItCannotServe)
{
    const struct
    {
        int rate, channels, engine, code;
        bool made;
    } cases[] { { 44100, 2, 1, none, true },
                { 11025, 1, 0, none, true },
                { 11024, 2, 1, badSampleRate, false },
                { 0, 2, 0, badSampleRate, false },
                { 44100, 0, 1, badChannelCount, false },
                { 44100, -1, 0, badChannelCount, false },
                { 44100, 2, 2, none, false },
                { 0, 0, -1, none, false } };
    for (const auto& c : cases)
    {
        CaufTAKT_If* made = nullptr;
        EXPECT_EQ (CaufTAKT_If::CreateInstance (&made, c.rate, c.channels, c.engine), c.code)
            << c.rate << ' ' << c.channels;
        EXPECT_EQ (made != nullptr, c.made) << c.rate << ' ' << c.channels;
        EXPECT_EQ (CaufTAKT_If::DestroyInstance (&made), c.made ? none : badArgument);
        EXPECT_EQ (made, nullptr);
    }
    EXPECT_EQ (CaufTAKT_If::CreateInstance (nullptr, 44100, 2, 1), badArgument);
    EXPECT_EQ (CaufTAKT_If::DestroyInstance (nullptr), badArgument);
}

TEST (BeatTrackerInterface, AnswersByItsState)
{
    const auto track = play (rock, 20.0, 44100.0, steady (100.0, 44100.0));
    for (const auto engine : { 0, 1 })
    {
        auto tracker = make (44100, 1, engine);
        CaufTAKT_If::Result result;
        CaufTAKT_If::Beat beat;
        const float* missing[] { nullptr };
        const float* present[] { track.samples.data() };
        EXPECT_EQ (tracker->process (nullptr, 1), badArgument);
        EXPECT_EQ (tracker->process (missing, 1), badArgument);
        EXPECT_EQ (tracker->process (present, -1), badArgument);
        EXPECT_EQ (tracker->trackBeats (0, 0, 0, 0), wrongState);
        EXPECT_EQ (tracker->getResult (&result), wrongState);
        EXPECT_EQ (tracker->getResult (nullptr), badArgument);
        EXPECT_EQ (tracker->getNumberOfBeats (0), 0);
        EXPECT_EQ (tracker->getDownbeatIndex (0, 0), -1);
        EXPECT_EQ (tracker->getBeatsPerBar (0), -1);
        EXPECT_EQ (tracker->getAverageTempo (0), 0.0);
        for (const auto bpm : { 0.0f, -120.0f, 19.0f, 401.0f, std::nanf ("") })
            EXPECT_EQ (tracker->setTempo (bpm), badArgument) << bpm;

        feed (*tracker, track.samples);
        EXPECT_EQ (tracker->flush (true), none);
        EXPECT_EQ (tracker->flush (true), wrongState);
        EXPECT_EQ (tracker->process (present, 1), wrongState);
        EXPECT_TRUE (tracker->hasResult());
        EXPECT_EQ (tracker->trackBeats (std::nanf (""), 0, 0, 0), badArgument);
        EXPECT_EQ (tracker->trackBeats (4.9f, 0, 0, 0), none);
        EXPECT_EQ (tracker->getBeat (&beat, 0, 0), none);
        EXPECT_NEAR (beat.position, 5.1 * 44100, 100);
        EXPECT_EQ (tracker->trackBeats (0, 0, 0, 0), none);
        const auto count = tracker->getNumberOfBeats (0);
        EXPECT_NEAR (count, 67, 1);
        EXPECT_EQ (tracker->getBeat (&beat, count - 1, 0), none);
        EXPECT_EQ (tracker->getBeat (&beat, count, 0), badArgument);
        EXPECT_EQ (tracker->getBeat (&beat, -1, 0), badArgument);
        EXPECT_EQ (tracker->getBeat (nullptr, 0, 0), badArgument);
        EXPECT_EQ (tracker->getBeat (&beat, 0, 9), badArgument);
        EXPECT_GT (tracker->getNumberOfBeats (1), 40) << "onsets";
        EXPECT_NEAR (tracker->getAverageTempo (1), 100.0, 0.05);
        EXPECT_NEAR (tracker->getNormalisedTempo(), 100.0, 0.05);
        EXPECT_EQ (tracker->getResult (&result), none);
        EXPECT_EQ (result.beats, count);
        EXPECT_EQ (result.hypotheses, 7);
        EXPECT_NEAR (result.beatPeriod, 4 * 0.6 * 44100, 5.0);
    }
}

TEST (BeatTrackerInterface, FollowsTheTempoThatItIsTold)
{
    const auto track = play (rock, 20.0, 44100.0, steady (100.0, 44100.0));
    for (const auto& [told, exact] :
         { std::pair { 100.0f, 100.0 }, { 101.5f, 100.0 }, { 200.0f, 200.0 }, { 51.0f, 50.0 } })
    {
        auto tracker = make (44100);
        feed (*tracker, track.samples);
        EXPECT_EQ (tracker->flush (false), none);
        EXPECT_EQ (tracker->getTempoEstimate(), 0.0f);
        EXPECT_EQ (tracker->trackBeats (0, 0, 0, 0), wrongState) << "no tempo is known yet";
        EXPECT_EQ (tracker->setTempo (told), none);
        EXPECT_EQ (tracker->trackBeats (0, 0, 0, 0), none);
        EXPECT_NEAR (tracker->getAverageTempo (0), exact, 0.05);
    }
}

TEST (BeatTrackerInterface, ShortClipsHaveNoTempo)
{
    auto clip = play (rock, 1.0, 44100.0, steady (240.0, 44100.0)).samples;
    clip.resize (4095);
    EXPECT_EQ (analyse (clip, 44100.0, 1, 0)->getTempoEstimate(), 0.0f);
}

TEST (BeatTrackerInterface, AveragesTheTempoThatMostMarksAgreeOn)
{
    const struct
    {
        std::vector<double> tempos;
        double average;
    } cases[] { { { 128, 128, 128, 128 }, 128.0 },
                { { 120, 121, 122, 200, 60 }, 121.0 },
                { { 100, 100, 140, 140 }, 100.0 }, // the first of two equals
                { { 100, 115, 115.5 }, 115.25 },   // 15 above the lowest is in the second bin up
                { {}, 0.0 } };
    for (const auto& c : cases)
        EXPECT_NEAR (restored (c.tempos)->getAverageTempo (0), c.average, 1e-4);
}

TEST (BeatTrackerInterface, CountsTheBarFromRestoredMarks)
{
    const std::vector<double> marks (40, 120.0); // a quarter of a second apart: halves of beats
    const struct
    {
        double start, period;
        int bar, downbeat;
    } cases[] { { 0, 88200, 4, 0 },
                { 33075, 88200, 4, 3 },
                { 9 * 11025.0, 88200, 4, 1 },
                { 5 * 11025.0 + 3000, 66150, 3, 5 },
                { 0, 12 * 22050.0, 4, 0 } };
    for (const auto& c : cases)
    {
        const auto tracker = restored (marks, c.start, c.period);
        EXPECT_EQ (tracker->getBeatsPerBar (0), c.bar);
        EXPECT_EQ (tracker->getDownbeatIndex (0, 0), c.downbeat);
        EXPECT_EQ (tracker->getDownbeatIndex (0, 1), c.downbeat % 2);
    }
    auto tracker = make (44100);
    EXPECT_EQ (tracker->setResult ({ 120.0f, 1, 7, 0, 1.0f, 0.0, 88200.0 }, nullptr), badArgument);
    EXPECT_EQ (tracker->setResult ({ 0.0f, 0, 7, 0, 1.0f, 0.0, 88200.0 }, nullptr), badArgument);
}

TEST (BeatMarks, FindsTheNearest)
{
    CBeatMarks marks;
    EXPECT_EQ (marks.nearest (5.0), -1);
    for (const auto position : { 10, 20, 40 })
        marks.add ({ position, 0, 0.0f, 0.0f });
    for (const auto& [position, index] :
         { std::pair { -5.0, 0 }, { 14.0, 0 }, { 15.0, 0 }, { 16.0, 1 }, { 31.0, 2 }, { 900.0, 2 } })
        EXPECT_EQ (marks.nearest (position), index) << position;
}

TEST (OnsetFilter, KeepsPlaceAndSum)
{
    std::vector<float> in (21, 0.0f);
    in[10] = 2.0f;
    const auto out = zplOnsetTracking::CFIRFilter::smoother (5).process (in);
    EXPECT_NEAR (std::accumulate (out.begin(), out.end(), 0.0f), 2.0f, 1e-5f);
    for (size_t i = 1; i <= 5; ++i)
    {
        EXPECT_FLOAT_EQ (out[10 - i], out[10 + i]);
        EXPECT_LE (out[10 + i], out[9 + i]);
    }
}
