#include "timecode/filter/HumFilter.h"

#include <array>
#include <cmath>
#include <numbers>

namespace
{
constexpr std::array toneHz { 50.0, 150.0, 250.0, 60.0, 180.0, 300.0 };
constexpr int secondsAsleep = 4; // where a second held no hum
constexpr double memorySeconds = 0.15;

/** Square of a tone against the carrier's power; what is below, -38 dB, are sidebands of the code. */
constexpr float audible = 2 * 0.0125f * 0.0125f;
}

void HumFilter::prepare (double sampleRate, int framesInTick) noexcept
{
    ticksASecond = static_cast<int> (sampleRate / framesInTick);
    perFrame = 1 / static_cast<float> (framesInTick);
    learning = static_cast<float> (framesInTick / (memorySeconds * sampleRate));
    for (std::size_t i = 0; i < toneHz.size(); ++i)
    {
        const auto turn = 2 * std::numbers::pi * toneHz[i] * framesInTick / sampleRate;
        turnCosine.values[i] = static_cast<float> (std::cos (turn));
        turnSine.values[i] = static_cast<float> (std::sin (turn));
    }
    reset();
}

void HumFilter::reset() noexcept
{
    awakeTicks = asleepTicks = 0;
    shareX = shareY = {};
    cosine = sine = {};
    for (std::size_t i = 0; i < toneHz.size(); ++i)
        cosine.values[i] = 1;
}

float HumFilter::Share::level() const noexcept
{
    auto square = 0.0f;
    for (int i = 0; i < TickLanes::size; ++i)
    {
        const auto tone = cosine[i] * cosine[i] + sine[i] * sine[i];
        square += tone > audible * power ? tone : 0.0f;
    }
    return std::sqrt (0.5f * square);
}

void HumFilter::Share::take (const TickLanes& c, const TickLanes& s, TickLanes& lanes, float& mean,
                             float rate, float perFrame) noexcept
{
    TickLanes tones, heard;
    const auto threshold = audible * power;
    for (int i = 0; i < TickLanes::size; ++i)
    {
        tones[i] = cosine[i] * c[i] + sine[i] * s[i];
        heard[i] = cosine[i] * cosine[i] + sine[i] * sine[i] > threshold ? tones[i] : 0.0f;
    }
    const auto miss = rate * (mean - tones.sum());
    power += rate * (mean * mean - power);
    const auto hum = heard.sum(), climb = (hum - last) * perFrame;
    last = hum;
    mean -= hum;
    const auto first = hum - 0.5f * climb * (1 / perFrame - 1);
    for (int i = 0; i < TickLanes::size; ++i)
    {
        lanes[i] -= first + climb * static_cast<float> (i);
        cosine[i] += miss * c[i];
        sine[i] += miss * s[i];
    }
}

void HumFilter::process (TickLanes& x, TickLanes& y, float& meanX, float& meanY, bool canLearn) noexcept
{
    if (asleepTicks > 0)
    {
        --asleepTicks;
        return;
    }
    for (int i = 0; i < TickLanes::size; ++i)
    {
        const auto c = cosine[i] * turnCosine[i] - sine[i] * turnSine[i],
                   s = cosine[i] * turnSine[i] + sine[i] * turnCosine[i];
        const auto steady = 1.5f - 0.5f * (c * c + s * s); // Newton's step towards 1
        cosine[i] = c * steady;
        sine[i] = s * steady;
    }
    const auto rate = canLearn ? learning : 0;
    shareX.take (cosine, sine, x, meanX, rate, perFrame);
    shareY.take (cosine, sine, y, meanY, rate, perFrame);
    if (!canLearn || ++awakeTicks < ticksASecond)
        return;
    awakeTicks = 0;
    if (levelX() > 0 || levelY() > 0)
        return;
    shareX = shareY = {};
    asleepTicks = secondsAsleep * ticksASecond;
}
