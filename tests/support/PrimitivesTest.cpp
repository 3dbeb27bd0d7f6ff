#include "support/AudioThread.h"
#include "support/CallbackLock.h"
#include "support/Clock.h"
#include "support/GainRamp.h"
#include "support/NoiseTable.h"
#include "support/files/AudioFileTypes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

TEST (RandGeneratorLCG, ReachesTheTenThousandthStateOfTheMinimalStandard)
{
    RandGeneratorLCG random (1);
    int32_t state = 0;
    for (int i = 0; i < 10000; ++i)
        state = random.nextInt();
    EXPECT_EQ (state, 1043618065); // the check value published with the generator
}

TEST (RandGeneratorLCG, NeverSticksWhateverTheSeed)
{
    for (const int64_t seed :
         { int64_t { 0 }, int64_t { -1 }, int64_t { 0x7fffffff }, std::numeric_limits<int64_t>::min() })
    {
        RandGeneratorLCG random;
        random.seed (seed);
        const auto first = random.nextDouble();
        EXPECT_GT (first, 0.0);
        EXPECT_LT (first, 1.0);
        EXPECT_NE (first, random.nextDouble());
    }
}

TEST (NoiseTable, IsInaudibleAndNeverSubnormal)
{
    RandGeneratorLCG random;
    NoiseTable noise;
    noise.fill (random);
    for (int i = 0; i < 1000; ++i)
    {
        const auto value = noise.next();
        EXPECT_GT (value, static_cast<double> (std::numeric_limits<float>::min()));
        EXPECT_LE (value, 1e-14);
    }
}

TEST (GainRamp, ReachesItsTargetIn64EvenSteps)
{
    GainRamp ramp (1.0);
    ramp.setTarget (0.25);
    double last = 1.0;
    for (int i = 0; i < GainRamp::steps; ++i)
    {
        const auto value = ramp.next();
        EXPECT_NEAR (last - value, 0.75 / GainRamp::steps, 1e-12);
        last = value;
    }
    EXPECT_EQ (last, 0.25);
    EXPECT_EQ (ramp.next(), 0.25);
}

TEST (GainRamp, TurnsRoundWithoutAJump)
{
    GainRamp ramp (0.0);
    ramp.setTarget (1.0);
    double last = 0.0;
    for (int i = 0; i < 200; ++i)
    {
        if (i == 20)
            ramp.setTarget (0.0);
        const auto value = ramp.next();
        EXPECT_LE (std::abs (value - last), 1.0 / GainRamp::steps + 1e-12);
        last = value;
    }
    EXPECT_EQ (last, 0.0);
}

TEST (Clock, ElapsedTimeSurvivesWrapAndSmallStepsBack)
{
    EXPECT_EQ (millisecondsBetween (100, 126), 26u);
    EXPECT_EQ (millisecondsBetween (UINT32_MAX - 9, 16), 26u);
    EXPECT_EQ (millisecondsBetween (5000, 4001), 0u);
    EXPECT_EQ (millisecondsBetween (5000, 4000), 0u);
    EXPECT_GT (millisecondsBetween (5000, 3999), 2000u);
}

TEST (CallbackLock, RemembersTheLongestHoldingAndItsReason)
{
    const juce::CriticalSection section;
    CallbackLock::resetLongest();
    {
        const CallbackLock outer (section, "outer");
        const CallbackLock inner (section, "inner");
    }
    EXPECT_EQ (std::string (CallbackLock::longest().reason), "outer");
    EXPECT_GT (CallbackLock::longest().nanoseconds, 0);
}

TEST (AudioThreadScope, NestsAndEnds)
{
    EXPECT_FALSE (AudioThreadScope::isActive());
    {
        const AudioThreadScope outer;
        {
            const AudioThreadScope inner;
        }
        EXPECT_TRUE (AudioThreadScope::isActive());
    }
    EXPECT_FALSE (AudioThreadScope::isActive());
    assertMayBlock();
}

TEST (AudioFileTypes, GoByTheExtensionAlone)
{
    for (const auto* name : { "/a/b.mp3", "/a/B.MP3", "/a/b.m4a", "/a/b.wav", "/a/b.aif", "/a/b.aiff",
                              "/a/b.wma", "/a/b.flac", "/a/b.c.ogg" })
        EXPECT_TRUE (AudioFileTypes::matches (juce::File (name))) << name;
    for (const auto* name : { "/a/b", "/a/b.", "/a/mp3", "/a/b.mp3x", "/a/b.mp4", "/a/b.wav.txt" })
        EXPECT_FALSE (AudioFileTypes::matches (juce::File (name))) << name;
}
