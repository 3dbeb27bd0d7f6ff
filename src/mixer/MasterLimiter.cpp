#include "mixer/MasterLimiter.h"

#include "mixer/Peak.h"
#include "support/OnePole.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr int longestPiece = 64;
constexpr double releaseSeconds = 0.099;

/** The envelope that counts as come to rest: it would stay some rounding errors above 1 for ever. */
constexpr double arrived = 1.0 + 1e-7;

/** 80 dB above full scale: what lies beyond, as NaN does, is taken as silence, or it would hold the limiter for long. */
constexpr float nonsense = 1e4f;

void silenceNonsense (float* samples, int frames) noexcept
{
    for (int i = 0; i < frames; ++i)
        samples[i] = samples[i] <= nonsense && samples[i] >= -nonsense ? samples[i] : 0.0f;
}
}

void MasterLimiter::SlidingMaximum::reset (int values) noexcept
{
    length = values;
    now = first = last = 0;
}

double MasterLimiter::SlidingMaximum::next (double value) noexcept
{
    const auto at = [this] (int64_t index) -> Entry& { return queue[static_cast<size_t> (index) % size]; };
    while (last > first && at (last - 1).value <= value)
        --last;
    at (last++) = { value, now };
    if (at (first).index <= now - length)
        ++first;
    ++now;
    return at (first).value;
}

void MasterLimiter::setRate (double sampleRate) noexcept
{
    if (sampleRate == rate)
        return;
    rate = sampleRate;
    release = OnePole::coefficient (releaseSeconds, sampleRate);
    volumeRamp.setSampleRate (sampleRate);
    delay.setFrames (std::min (PairDelay::mostFrames, static_cast<int> (lookAheadSeconds * sampleRate)));
    window = delay.frames() + 1;
    limiterEnvelope = 1.0;
    calmDown();
}

void MasterLimiter::calmDown() noexcept
{
    loudest.reset (window);
    std::fill_n (gains.begin(), window, 1.0);
    gainSum = window;
    gainIndex = 0;
    calmFrames = 2 * window;
}

void MasterLimiter::applyVolume (float* left, float* right, int frames, double volume) noexcept
{
    volumeRamp.setTarget (volume);
    if (isNew)
        volumeRamp.settle();
    isNew = false;
    for (int i = 0; i < frames && !volumeRamp.isAt (1.0); ++i)
    {
        const auto gain = volumeRamp.next();
        left[i] = static_cast<float> (left[i] * gain);
        right[i] = static_cast<float> (right[i] * gain);
    }
    silenceNonsense (left, frames);
    silenceNonsense (right, frames);
}

double MasterLimiter::nextGain (double level) noexcept
{
    const auto held = loudest.next (std::max (level, 1.0));
    if (held >= limiterEnvelope)
        limiterEnvelope = held;
    else
        limiterEnvelope = OnePole::approached (limiterEnvelope, held, release);
    if (limiterEnvelope < arrived)
        limiterEnvelope = 1.0;
    calmFrames = limiterEnvelope > 1.0 ? 0 : calmFrames + 1;

    auto& oldest = gains[static_cast<size_t> (gainIndex)];
    gainIndex = gainIndex + 1 < window ? gainIndex + 1 : 0;
    gainSum -= oldest;
    oldest = 1.0 / limiterEnvelope;
    gainSum += oldest;
    return gainSum / window;
}

void MasterLimiter::process (float* left, float* right, int frames, double volume) noexcept
{
    if (frames < 1)
        return;
    applyVolume (left, right, frames, volume);
    if (calmFrames >= 2 * window && std::max (peakOf (left, frames), peakOf (right, frames)) <= 1.0f)
    {
        calmDown(); // what the sums have lost by rounding
        delay.process (left, right, frames);
        return;
    }
    for (int done = 0; done < frames; done += longestPiece)
        limit (left + done, right + done, std::min (longestPiece, frames - done));
}

void MasterLimiter::limit (float* left, float* right, int frames) noexcept
{
    std::array<double, longestPiece> piece;
    for (int i = 0; i < frames; ++i)
        piece[static_cast<size_t> (i)] = nextGain (std::max (std::abs (left[i]), std::abs (right[i])));
    delay.process (left, right, frames);
    for (int i = 0; i < frames; ++i)
    {
        const auto gain = piece[static_cast<size_t> (i)];
        left[i] = std::clamp (static_cast<float> (left[i] * gain), -1.0f, 1.0f);
        right[i] = std::clamp (static_cast<float> (right[i] * gain), -1.0f, 1.0f);
    }
}
