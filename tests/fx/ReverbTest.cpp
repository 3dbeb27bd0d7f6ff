#include "Response.h"
#include "fx/reverb/ReverbFx.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace
{
struct Stereo
{
    std::vector<float> left, right;
};

Stereo noise (int frames)
{
    return { Signals::noise (frames, 1), Signals::noise (frames, 2) };
}

void process (Reverb& reverb, Stereo& sound, int block = 128)
{
    const auto frames = static_cast<int> (sound.left.size());
    for (int done = 0; done < frames; done += block)
        reverb.process (sound.left.data() + done, sound.right.data() + done, std::min (block, frames - done));
}

Stereo tail (Reverb& reverb, int frames)
{
    Stereo silence { std::vector<float> (static_cast<size_t> (frames)),
                     std::vector<float> (static_cast<size_t> (frames)) };
    process (reverb, silence);
    return silence;
}

/** A reverb that rings of a burst of noise, without a dry part. */
Reverb ringing (double rate, Reverb::Settings settings)
{
    Reverb reverb;
    reverb.setSampleRate (rate);
    settings.dry = 0.0f;
    reverb.setSettings (settings);
    reverb.setBypass (false);
    auto burst = noise (static_cast<int> (rate / 2));
    process (reverb, burst);
    return reverb;
}
}

TEST (Reverb, FirstEchoIsTheShortestCombsAtTheRatesLengthAndTheWidthsLevels)
{
    for (const auto rate : { 8000.0, 44100.0, 48000.0, 192000.0 })
    {
        Reverb reverb;
        reverb.setSampleRate (rate);
        reverb.setBypass (false);
        reverb.reset();
        Stereo sound { Response::impulse (8000), std::vector<float> (8000) };
        process (reverb, sound);
        const auto length = static_cast<size_t> (1116 * rate / 44100.0);
        EXPECT_EQ (sound.left[0], 1.0f);
        EXPECT_EQ (Signals::peak (std::span (sound.left).subspan (1, length - 1)), 0.0) << rate;
        EXPECT_NEAR (sound.left[length], 0.015 * 0.5 * 3.0 * 0.9, 1e-6) << rate;
        EXPECT_NEAR (sound.right[length], 0.015 * 0.5 * 3.0 * 0.1, 1e-6) << rate;
        const auto rightLength = static_cast<size_t> (1139 * rate / 44100.0);
        EXPECT_GT (sound.right[rightLength], 0.015) << rate;
    }
}

TEST (Reverb, TailDecaysBetweenTheRatesOfItsShortestAndItsLongestComb)
{
    for (const auto rate : { 44100.0, 96000.0 })
        for (const auto roomSize : { 0.0f, 0.25f, 0.5f, 0.75f, 1.0f })
        {
            auto reverb = ringing (rate, { .roomSize = roomSize, .damp = 0.0f });
            const auto second = static_cast<int> (rate);
            tail (reverb, second / 10);
            const auto early = tail (reverb, second / 10);
            tail (reverb, second / 10);
            const auto late = tail (reverb, second / 10);
            const auto perSecond =
                Response::decibels (Signals::rms (late.left) / Signals::rms (early.left)) / 0.2;
            // A line of m samples loses its feedback once in m samples.
            const auto feedback = 0.7 + 0.28 * roomSize;
            EXPECT_GT (perSecond, Response::decibels (feedback) * 44100.0 / 1116.0 - 3.0)
                << rate << " " << roomSize;
            EXPECT_LT (perSecond, Response::decibels (feedback) * 44100.0 / 1640.0 + 3.0)
                << rate << " " << roomSize;
        }
}

TEST (Reverb, DampingTakesTheHighFrequenciesFirst)
{
    const auto brightness = [] (float damp)
    {
        auto reverb = ringing (44100.0, { .damp = damp });
        tail (reverb, 11025);
        const auto late = tail (reverb, 8192);
        return Signals::largestStep (late.left) / Signals::rms (late.left);
    };
    EXPECT_LT (brightness (1.0f), 0.7 * brightness (0.0f));
}

TEST (Reverb, LargestRoomStillDecaysAndOnlyTheFrozenOneDoesNot)
{
    auto largest = ringing (44100.0, { .roomSize = 1.0f });
    EXPECT_FLOAT_EQ (largest.feedback(), 0.98f);

    auto frozen = ringing (44100.0, { .roomSize = 0.5f });
    auto settings = frozen.settings();
    settings.mode = 0.5f;
    frozen.setSettings (settings);
    tail (frozen, 44100);
    const auto before = Signals::rms (tail (frozen, 88200).left);
    for (int seconds = 0; seconds < 30; ++seconds)
    {
        auto ignored = noise (44100);
        process (frozen, ignored);
    }
    EXPECT_NEAR (Signals::rms (tail (frozen, 88200).left) / before, 1.0, 0.02);
    tail (largest, 180 * 44100);
    EXPECT_LT (Signals::peak (tail (largest, 4410).left), 1e-11);
}

TEST (Reverb, AnotherRateEndsTheTailAndTheSameOneDoesNot)
{
    auto reverb = ringing (44100.0, {});
    reverb.setSampleRate (44100.0);
    EXPECT_GT (Signals::peak (tail (reverb, 4410).left), 1e-4);
    for (const auto rate : { 48000.0, 192000.0, 8000.0, 44100.0 })
    {
        auto burst = noise (4410);
        process (reverb, burst);
        reverb.setSampleRate (rate);
        EXPECT_EQ (Signals::peak (tail (reverb, 44100).left), 0.0) << rate;
    }
}
