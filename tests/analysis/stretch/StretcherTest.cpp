// The contract with callers: errors, limits, exact demand, exact place.

#include "StretcherDriver.h"

#include "analysis/AnalysisError.h"
#include "analysis/stretch/StretchFactors.h"

#include <cmath>
#include <random>

extern "C"
{
    __attribute__ ((weak)) void __rtsan_ensure_initialized();
    __attribute__ ((weak)) void __rtsan_realtime_enter();
    __attribute__ ((weak)) void __rtsan_realtime_exit();
}

TEST (Stretcher, CreationAnswersWithTheFamilysNumbers)
{
    struct Case
    {
        int block, channels;
        float rate;
        int mode, error;
    };
    for (const auto& c : { Case { 1024, 2, 44100.0f, 2, 0 }, Case { 1, 1, 8000.0f, 3, 0 },
                           Case { 64, 48, 384000.0f, 2, 0 }, Case { 1025, 2, 44100.0f, 2, 5000003 },
                           Case { 0, 2, 44100.0f, 2, 5000003 }, Case { 128, 2, 7999.0f, 2, 5000004 },
                           Case { 128, 2, 384001.0f, 2, 5000004 }, Case { 128, 2, NAN, 2, 5000004 },
                           Case { 128, 0, 44100.0f, 2, 5000005 }, Case { 128, 49, 44100.0f, 2, 5000005 },
                           Case { 128, 2, 44100.0f, 0, 5000003 }, Case { 128, 2, 44100.0f, 1, 5000003 },
                           Case { 128, 2, 44100.0f, 4, 5000003 }, Case { 128, 2, 44100.0f, -1, 5000003 } })
    {
        CElastiqueProIf* made = nullptr;
        EXPECT_EQ (CElastiqueProIf::CreateInstance (made, c.block, c.channels, c.rate, c.mode), c.error);
        EXPECT_EQ (made != nullptr, c.error == 0)
            << c.block << ' ' << c.channels << ' ' << c.rate << ' ' << c.mode;
        CElastiqueProIf::DestroyInstance (made);
    }
}

TEST (Stretcher, FactorsAreLimitedByTheirProductAndWrittenBackByTheHops)
{
    StretcherDriver driver;
    struct Case
    {
        float stretch, pitch;
        bool isAllowed;
    };
    for (const auto& c :
         { Case { 20.0f, 0.5f, true }, Case { 10.0f, 1.0f, true }, Case { 0.1f, 1.0f, true },
           Case { 2.0f, 0.5f, true }, Case { 1.06f, 1.0f, true }, Case { 0.67f, 2.0f, true },
           Case { 11.0f, 1.0f, false }, Case { 0.099f, 1.0f, false }, Case { 20.0f, 0.51f, false },
           Case { 0.0f, 1.0f, false }, Case { -1.0f, -1.0f, false }, Case { NAN, 1.0f, false },
           Case { 1.0f, NAN, false }, Case { 0.01f, 20.0f, false } })
    {
        auto stretch = c.stretch, pitch = c.pitch;
        const auto before = driver->getFramesNeeded();
        const auto error = c.isAllowed ? 0 : AnalysisError::badArgument;
        EXPECT_EQ (driver->setStretchPitch (&stretch, c.pitch, 0), error) << c.stretch << ' ' << c.pitch;
        EXPECT_EQ (driver->setStretchAndPitch (c.stretch, &pitch, 0), error);
        if (!c.isAllowed)
        {
            EXPECT_EQ (driver->getFramesNeeded(), before);
            EXPECT_EQ (driver->getFramesNeededFor (c.stretch, c.pitch), 0);
            continue;
        }
        // The hop of the input is never below a 64th of a frame of 4096.
        EXPECT_NEAR (stretch / c.stretch, 1.0, 2.0 / 64.0 / c.stretch / c.pitch + 1e-6);
        EXPECT_NEAR (stretch / c.stretch, pitch / c.pitch, 1e-6);
        EXPECT_EQ (driver->getFramesNeededFor (c.stretch, c.pitch), driver->getFramesNeeded());
    }
    auto stretch = 2.0f;
    EXPECT_EQ (driver->setStretchPitch (&stretch, 0.5f, 0), 0);
    EXPECT_EQ (stretch, 2.0f); // the hops of unity
    stretch = 1.06f;
    driver->setStretchPitch (&stretch, 1.0f, 0);
    EXPECT_FLOAT_EQ (stretch, 1084.0f / 1024.0f);
}

TEST (Stretcher, OnlyPairsHaveAStereoModeAndFormantsAreLeftAlone)
{
    for (const int channels : { 1, 2, 3 })
    {
        StretcherDriver driver (channels);
        EXPECT_EQ (driver->setStereoMode (1), channels == 2 ? 0 : AnalysisError::wrongState);
        EXPECT_EQ (driver->setEnvelopeFactor (2.0f), 0);
        EXPECT_EQ (driver->setEnvelopeOrder (64), 0);
    }
    EXPECT_EQ (StretcherDriver()->setStereoMode (2), AnalysisError::badArgument);
}

TEST (Stretcher, TheDemandIsExactWhileFactorsAndBlocksChange)
{
    // Full blocks are what render() asserts; what is never read must not pile up either.
    std::mt19937 random (5);
    auto between = [&] (double from, double to) { return from + (to - from) * (random() % 1000) / 999.0; };
    for (const int block : { 1, 37, 128, 1024 })
    {
        StretcherDriver driver (2, block);
        const auto noise = Signals::noise (1 << 22, 1);
        const auto frames = std::min (300 * block, 90'000);
        driver.render ({ noise, noise }, frames,
                       [&] (int made)
                       {
                           const auto pitch = made % 3 == 0 ? 1.0 : std::exp2 (between (-3.9, 3.9));
                           driver.set (std::exp2 (between (-3.3, 3.3)) / pitch, pitch);
                           EXPECT_LT (driver.taken - driver->getInputPositionOfOutput(), 40'000.0);
                       });
        driver->reset();
        EXPECT_EQ (driver->getFramesNeeded(), driver->getPreFramesNeeded());
    }
}

TEST (Stretcher, TooLittleInputGivesNothingAndIsKept)
{
    StretcherDriver driver;
    const auto count = driver->getFramesNeeded();
    const std::vector<float> noise = Signals::noise (count, 3);
    float left[128] { 7.0f }, right[128] { 7.0f };
    float* const out[] { left, right };
    const float* in[] { noise.data(), noise.data() };
    EXPECT_EQ (driver->process (in, 1000, out), -1);
    EXPECT_EQ (left[0], 7.0f);
    EXPECT_EQ (driver->getFramesNeeded(), count - 1000);
    in[0] = in[1] = noise.data() + 1000;
    EXPECT_EQ (driver->process (in, count - 1000, out), 0);
    for (int i = 0; i < 128; ++i)
        ASSERT_NEAR (left[i], noise[static_cast<size_t> (i)], 1e-5);
}

TEST (Stretcher, ThePlaceThatIsHeardIsExactAfterTwentyMinutes)
{
    for (const auto& [stretch, pitch, rate] : { std::tuple { 1.0 / 1.04, 1.0, 44'100 },
                                                { 1.0 / 1.04, 1.04, 8'000 },
                                                { 1.0 / 0.93, std::exp2 (3.0 / 12.0), 8'000 } })
    {
        StretcherDriver driver (1, 1024, static_cast<float> (rate));
        driver.set (stretch, pitch);
        const auto inForce = static_cast<double> (static_cast<float> (stretch));
        float output[1024];
        float* const out[] { output };
        const std::vector<float> silence (16'384);
        const float* in[] { silence.data() };
        auto farthest = 0.0;
        for (int frames = 0; frames < 20 * 60 * rate;)
        {
            ASSERT_EQ (driver->process (in, driver->getFramesNeeded(), out), 0);
            frames += 1024;
            if (frames > 20'000) // the beginning comes out as it is, whatever the tempo
                farthest =
                    std::max (farthest, std::abs (driver->getInputPositionOfOutput() - frames / inForce));
        }
        EXPECT_LT (farthest, 2.0) << stretch << ' ' << pitch;
    }
}

TEST (Stretcher, AKeyChangeLeavesTheTempo)
{
    StretcherDriver driver;
    const auto noise = Signals::noise (400'000, 1, 0.1);
    auto heard = 0.0;
    driver.render ({ noise, noise }, 300'000,
                   [&] (int made)
                   {
                       const auto semitones = made / 20'000 * 5 % 7 - 3; // from -3 to 3, by 5 up or 2 down
                       driver.set (1.0 / 1.04, std::exp2 (semitones / 12.0));
                       const auto now = driver->getInputPositionOfOutput();
                       if (made > 20'000)
                       {
                           EXPECT_NEAR (now, made * 1.04, 130.0) << made; // 3 ms
                           EXPECT_NEAR ((now - heard) / 128.0, 1.04, 0.35) << made;
                       }
                       heard = now;
                   });
}

TEST (Stretcher, FlushPlaysOutWhatIsInside)
{
    for (const double stretch : { 1.0, 0.8 })
    {
        StretcherDriver driver;
        driver.set (stretch, 1.0);
        const std::vector<float> ones (40'000, 0.25f);
        driver.render ({ ones, ones }, 10'000);
        float left[128], right[128];
        float* const out[] { left, right };
        auto rest = 0;
        for (int frames = driver->flush (out); frames > 0; frames = driver->flush (out))
            rest += frames;
        EXPECT_NEAR (static_cast<double> (driver.out[0].size()) + rest, driver.taken * stretch, 130.0);
        EXPECT_EQ (driver->flush (out), -1);
    }
}

TEST (Stretcher, FramesAndHopsFollowTheirTables)
{
    for (const auto& [rate, length] : { std::pair { 8000.0, 2048 },
                                        { 31'999.0, 2048 },
                                        { 32'000.0, 4096 },
                                        { 44'100.0, 4096 },
                                        { 64'000.0, 8192 },
                                        { 128'000.0, 16'384 },
                                        { 256'000.0, 32'768 } })
        EXPECT_EQ (stretchFrameLength (rate), length);
    struct Case
    {
        float stretch, pitch;
        int hopIn, hopInFine, hopOut;
    };
    for (const auto& c : { Case { 1.0f, 1.0f, 1024, 512, 1024 }, Case { 1.5f, 1.0f, 1024, 512, 1536 },
                           Case { 0.1f, 1.0f, 1024, 512, 102 }, Case { 2.2f, 1.0f, 512, 512, 1126 },
                           Case { 4.0f, 0.8f, 256, 256, 818 }, Case { 4.2f, 1.0f, 128, 128, 536 },
                           Case { 5.0f, 2.0f, 64, 64, 640 }, Case { 1.06f, 1.0f / 1.06f, 1024, 512, 1024 } })
    {
        const auto plain = StretchFactors::of (c.stretch, c.pitch, 4096),
                   fine = StretchFactors::of (c.stretch, c.pitch, 4096, true);
        EXPECT_EQ (plain->hopIn, c.hopIn) << c.stretch;
        EXPECT_EQ (fine->hopIn, c.hopInFine) << c.stretch;
        EXPECT_EQ (plain->hopOut, c.hopOut) << c.stretch;
    }
}

TEST (Stretcher, NoNumbersPassThroughAndLeaveNothingBehind)
{
    StretcherDriver driver;
    driver.set (1.06, 1.0);
    auto noise = Signals::noise (60'000, 1);
    noise[20'000] = NAN;
    noise[20'500] = INFINITY;
    noise[21'000] = 3.0e38f;
    driver.render ({ noise, noise }, 60'000);
    for (size_t i = 35'000; i < 55'000; ++i)
        ASSERT_LT (std::abs (driver.out[0][i]), 2.0f) << i;
}

// In the program that is linked with the real-time sanitizer this proves that no call allocates, waits or calls the system.
TEST (StretcherRealTime, CallsOnlyCompute)
{
    const auto guarded = __rtsan_ensure_initialized != nullptr;
    if (guarded)
        __rtsan_ensure_initialized();
    StretcherDriver driver;
    const auto noise = Signals::noise (1 << 17, 1);
    float output[2][1024];
    const float* in[] { noise.data(), noise.data() };
    float* const out[] { output[0], output[1] };
    if (guarded)
        __rtsan_realtime_enter();
    auto full = 0;
    for (int i = 0; i < 2'000; ++i)
    {
        auto pitch = 0.5f + static_cast<float> (i % 40) / 20.0f;
        driver->setStretchAndPitch (0.6f + static_cast<float> (i % 70) / 50.0f, &pitch, 0);
        full += driver->process (in, driver->setOutputBlockSize (1 + i * 37 % 1024), out) == 0 ? 1 : 0;
        if (i % 100 == 99)
        {
            driver->flush (out);
            driver->getInputPositionOfOutput();
            driver->setStereoMode (i % 200 == 99 ? 1 : 0);
            driver->reset();
        }
    }
    if (guarded)
        __rtsan_realtime_exit();
    EXPECT_EQ (full, 2'000);
}
