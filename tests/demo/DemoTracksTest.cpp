#include "demo/DemoTracks.h"
#include "Measure.h"
#include "demo/PortableMath.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <numbers>
#include <set>
#include <string>

namespace
{
using Kind = DemoSection::Kind;

const juce::AudioBuffer<float>& rendered (const DemoTrack& track)
{
    static std::map<std::string, juce::AudioBuffer<float>> all;
    const auto found = all.find (track.title);
    return found != all.end() ? found->second
                              : all.emplace (track.title, renderDemoTrack (track)).first->second;
}

/** The samples from one bar to another. */
std::span<const double> bars (const std::vector<double>& samples, const DemoTrack& track, int from, int to)
{
    const auto begin = static_cast<size_t> (track.barFrames (from));
    return std::span (samples).subspan (begin, static_cast<size_t> (track.barFrames (to)) - begin);
}

/** Calls back with the kind, the first bar and the bar after the last of each section. */
template <typename Visit>
void forEachSection (const DemoTrack& track, Visit&& visit)
{
    int bar = 0;
    for (const auto& section : demoSections (track))
    {
        visit (section.kind, bar, bar + section.bars);
        bar += section.bars;
    }
}

bool drumsOnly (Kind kind)
{
    return kind == Kind::intro || kind == Kind::outro;
}

/** Seconds from a frame to where the signal around it first passes a third of its peak after it. */
double onsetAfter (const std::vector<double>& samples, double frame)
{
    const auto at = static_cast<size_t> (frame + 0.5);
    constexpr size_t before = 900, after = 500;
    double peak = 0.0;
    for (size_t i = at; i < at + after; ++i)
        peak = std::max (peak, std::abs (samples[i]));
    auto i = at > before ? at - before : 0;
    while (std::abs (samples[i]) < peak / 3.0)
        ++i;
    return (static_cast<double> (i) - frame) / DemoTrack::sampleRate;
}
}

TEST (DemoTracks, TheTableSuitsMixingPractice)
{
    std::set<std::string> files;
    for (const auto& track : demoTracks())
    {
        SCOPED_TRACE (track.title);
        EXPECT_TRUE (files.insert (track.fileName).second);
        EXPECT_EQ (track.fileName, std::string (track.artist) + " - " + track.title + ".flac");
        const auto seconds = static_cast<double> (track.barFrames (track.bars)) / DemoTrack::sampleRate;
        EXPECT_TRUE (seconds >= 60.0 && seconds <= 90.5) << seconds;

        // Intro, main part, break, main part, outro, with 8 bars of drums to mix over at both ends, in phrases of 4.
        std::vector<Kind> form;
        int lastBar = 0;
        forEachSection (track,
                        [&] (Kind kind, int from, int to)
                        {
                            form.push_back (kind);
                            EXPECT_EQ ((to - from) % 4, 0);
                            lastBar = to;
                        });
        EXPECT_EQ (lastBar, track.bars);
        EXPECT_THAT (form, testing::ElementsAre (Kind::intro, Kind::build, Kind::mainPart, Kind::breakdown,
                                                 Kind::mainPart, Kind::outro));
        EXPECT_GE (demoSections (track).back().bars, 8);
    }
}

TEST (DemoTracks, DrumsStrikeOnTheGrid)
{
    // The strokes on the four beats of every bar: a kick, a snare, or nothing that could be told from the rest.
    const std::map<double, std::string> broken { { 100.0, "KS.S" }, { 174.0, "KS.S" } };
    for (const auto& track : demoTracks())
    {
        SCOPED_TRACE (track.title);
        const auto& audio = rendered (track);
        ASSERT_EQ (audio.getNumSamples(), track.barFrames (track.bars));
        const auto strokes = broken.contains (track.bpm) ? broken.at (track.bpm) : "KKKK";
        const auto sum = Measure::mono (audio);
        const auto kickBand = Measure::lowPassed (sum, 400.0);
        const auto snareBand = Measure::bandPassed (sum, 250.0, 2000.0);

        for (size_t i = 0; i < static_cast<size_t> (track.firstBeatFrames); ++i)
            ASSERT_EQ (sum[i], 0.0) << "sound before the first beat at " << i;
        forEachSection (track,
                        [&] (Kind kind, int from, int to)
                        {
                            if (!drumsOnly (kind))
                                return;
                            // On the outro's first beat the bass before it still rings.
                            for (int beat = 4 * from + (from > 0 ? 1 : 0); beat < 4 * to; ++beat)
                            {
                                const auto stroke = strokes[static_cast<size_t> (beat % 4)];
                                if (stroke == '.')
                                    continue;
                                // The tempo is told in minutes here, not by the record's own arithmetic.
                                const auto frame = static_cast<double> (track.firstBeatFrames)
                                                   + beat * (60.0 / track.bpm) * DemoTrack::sampleRate;
                                const auto late = onsetAfter (stroke == 'K' ? kickBand : snareBand, frame);
                                ASSERT_NEAR (late, 0.0, 0.002) << "beat " << beat;
                            }
                        });
    }
}

TEST (DemoTracks, TheFormIsHeard)
{
    for (const auto& track : demoTracks())
    {
        SCOPED_TRACE (track.title);
        const auto sum = Measure::mono (rendered (track));
        const auto kickBand = Measure::bandPassed (sum, 35.0, 100.0);
        const auto chordBand = Measure::bandPassed (sum, 300.0, 900.0);
        double mainKick = 0.0, mainChords = 0.0;
        forEachSection (track,
                        [&] (Kind kind, int from, int to)
                        {
                            if (kind != Kind::mainPart)
                                return;
                            mainKick = Measure::rms (bars (kickBand, track, from, to));
                            mainChords = Measure::sustainedRms (bars (chordBand, track, from, to));
                        });
        forEachSection (track,
                        [&] (Kind kind, int from, int to)
                        {
                            // The crash and the echoes of what was before belong to the first bar.
                            const auto kick = Measure::rms (bars (kickBand, track, from + 1, to));
                            const auto chords = Measure::sustainedRms (bars (chordBand, track, from + 1, to));
                            if (kind == Kind::breakdown)
                            {
                                EXPECT_LT (Measure::decibels (kick / mainKick), -20.0) << "bar " << from;
                                EXPECT_GT (Measure::decibels (chords / mainChords), -9.0) << "bar " << from;
                            }
                            else
                                EXPECT_GT (Measure::decibels (kick / mainKick), -6.0) << "bar " << from;
                            if (drumsOnly (kind))
                            {
                                EXPECT_LT (Measure::decibels (chords / mainChords), -14.0) << "bar " << from;
                            }
                        });
    }
}

TEST (DemoTracks, LevelsAreReadyForTheMixer)
{
    double loudest = -100.0, softest = 0.0;
    for (const auto& track : demoTracks())
    {
        SCOPED_TRACE (track.title);
        const auto& audio = rendered (track);
        const auto frames = audio.getNumSamples();
        EXPECT_NEAR (Measure::decibels (audio.getMagnitude (0, frames)), -0.5, 0.02);

        const auto sum = Measure::mono (audio), difference = Measure::mono (audio, Measure::Part::difference);
        const auto level = Measure::decibels (std::hypot (Measure::rms (sum), Measure::rms (difference)));
        loudest = std::max (loudest, level);
        softest = std::min (softest, level);
        for (const auto* part : { &sum, &difference })
        {
            double mean = 0.0;
            for (const auto sample : *part)
                mean += sample;
            EXPECT_LT (std::abs (mean / frames), 1e-4);
        }

        const auto lowSum = Measure::rms (Measure::bandPassed (sum, 20.0, 80.0));
        const auto lowDifference = Measure::rms (Measure::bandPassed (difference, 20.0, 80.0));
        EXPECT_LT (Measure::decibels (lowDifference / lowSum), -35.0);
        EXPECT_GT (Measure::decibels (Measure::rms (difference) / Measure::rms (sum)), -12.0) << "too narrow";

        EXPECT_EQ (audio.getMagnitude (frames - 1, 1), 0.0f);
        EXPECT_LT (audio.getMagnitude (frames - 44, 44), 0.05f);
    }
    EXPECT_LT (loudest - softest, 2.0);
    EXPECT_GT (softest, -15.0);
}

TEST (DemoTracks, TheSpectrumFallsSmoothlyFromTheSub)
{
    // The level in octaves of equal loudness to the meter falls: club music has most in the sub and air up to 16 kHz.
    for (const auto& track : demoTracks())
    {
        SCOPED_TRACE (track.title);
        const auto sum = Measure::mono (rendered (track));
        const auto level = [&] (double hz)
        { return Measure::decibels (Measure::rms (Measure::bandPassed (sum, hz / 1.3, hz * 1.3))); };
        const auto sub = level (50.0);
        EXPECT_LT (std::abs (level (1000.0) - sub + 14.0), 8.0);
        EXPECT_LT (std::abs (level (4000.0) - sub + 18.0), 8.0);
        EXPECT_GT (level (12000.0) - sub, -26.0);
        EXPECT_LT (level (22.0) - sub, -6.0);
    }
}

TEST (DemoTracks, RenderingRepeatsToTheBitAndTracksDiffer)
{
    std::set<float> fingerprints;
    for (const auto& track : demoTracks())
    {
        const auto again = renderDemoTrack (track);
        const auto& first = rendered (track);
        ASSERT_EQ (again.getNumSamples(), first.getNumSamples());
        for (int channel = 0; channel < 2; ++channel)
            EXPECT_TRUE (std::equal (first.getReadPointer (channel),
                                     first.getReadPointer (channel) + first.getNumSamples(),
                                     again.getReadPointer (channel)))
                << track.title;
        fingerprints.insert (again.getRMSLevel (0, 0, again.getNumSamples()));
    }
    EXPECT_EQ (fingerprints.size(), demoTracks().size());
}

TEST (PortableMath, AgreesWithTheLibrary)
{
    for (double x = 0.0; x < 1.0; x += 0.00173)
    {
        EXPECT_NEAR (PortableMath::sine (x), std::sin (2.0 * std::numbers::pi * x), 1e-8);
        EXPECT_NEAR (PortableMath::exp2 (40.0 * x - 20.0) / std::exp2 (40.0 * x - 20.0), 1.0, 1e-10);
        EXPECT_NEAR (PortableMath::tanPi (0.45 * x), std::tan (0.45 * std::numbers::pi * x), 1e-6);
    }
    EXPECT_NEAR (PortableMath::noteHz (57), 220.0, 1e-9);
    EXPECT_NEAR (PortableMath::fromDecibels (-20.0), 0.1, 1e-12);
}
