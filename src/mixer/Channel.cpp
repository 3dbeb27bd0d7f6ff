#include "mixer/Channel.h"

#include "mixer/FaderLaws.h"
#include "mixer/Peak.h"
#include "support/OnePole.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double smallestGain = 1e-6;

/** 2 s bring a gain to within 2 % of its way. */
constexpr double autogainSeconds = 0.5, autogainArrived = 1e-4;

/** Nearer than this a gain has arrived; it would stay some rounding errors away for ever. */
constexpr double arrived = 1e-12;

void multiply (float* samples, int frames, double gain) noexcept
{
    for (int i = 0; i < frames; ++i)
        samples[i] = static_cast<float> (samples[i] * gain);
}

double nextGain (double gain, double target, double smoothing) noexcept
{
    gain = OnePole::approached (gain, target, smoothing);
    return gain >= smallestGain ? gain : 0.0; // 0 also for what is no number
}

/** Applies a gain on its way to its target. @returns the gain after the samples */
double multiplyTowards (float* samples, int frames, double gain, double target, double smoothing) noexcept
{
    if (std::abs (gain - target) <= arrived)
    {
        if (target != 1.0)
            multiply (samples, frames, target);
        return target;
    }
    for (int i = 0; i < frames; ++i)
    {
        samples[i] = static_cast<float> (samples[i] * gain);
        gain = nextGain (gain, target, smoothing);
    }
    return gain;
}
}

void Channel::applyBalance (const ChannelPair& pair, double smoothing) noexcept
{
    const double balance = knobs.balance;
    const auto left = std::clamp (2.0 * (1.0 - balance), 0.0, 1.0),
               right = std::clamp (2.0 * balance, 0.0, 1.0);
    sides = { multiplyTowards (pair.left, pair.frames, sides[0], left, smoothing),
              multiplyTowards (pair.right, pair.frames, sides[1], right, smoothing) };
}

void Channel::equalise (const ChannelPair& pair, double sampleRate) noexcept
{
    const auto killLow = knobs.killLow != 0, killMid = knobs.killMid != 0, killHigh = knobs.killHigh != 0;
    equaliser.setGains ({ FaderLaws::bandGainDb (knobs.eqLow, killLow),
                          FaderLaws::bandGainDb (knobs.eqMid, killMid),
                          FaderLaws::bandGainDb (knobs.eqHigh, killHigh) },
                        sampleRate);
    if (killLow && killMid && killHigh)
        equaliser.setSilent();
    equaliser.process (pair.left, pair.right, pair.frames);
}

void Channel::runEffects (const ChannelPair& pair, double bpm) noexcept
{
    effects.process (pair.left, pair.right, pair.frames, bpm);
}

void Channel::tapCue (const ChannelPair& pair, const ChannelPair& monitor, bool isOn) noexcept
{
    cueTap.setTarget (isOn ? knobs.gain * 2.0 : 0.0);
    if (cueTap.isAt (0.0))
        return;
    const auto isMoving = cueTap.isMoving();
    for (int i = 0; i < pair.frames && isMoving; ++i)
    {
        const auto next = static_cast<float> (cueTap.next());
        monitor.left[i] += pair.left[i] * next;
        monitor.right[i] += pair.right[i] * next;
    }
    const auto gain = static_cast<float> (cueTap.value());
    if (!isMoving)
    {
        juce::FloatVectorOperations::addWithMultiply (monitor.left, pair.left, gain, pair.frames);
        juce::FloatVectorOperations::addWithMultiply (monitor.right, pair.right, gain, pair.frames);
    }
}

void Channel::setSampleRate (double rate) noexcept
{
    effects.setSampleRate (rate);
    meters.setRate (rate);
    cueTap.setSampleRate (rate);
}

double Channel::cappedAutogain (double factor, double peak) noexcept
{
    return std::min (factor, peak > 0.0 ? std::max (1.0, 1.0 / peak) : 1.0);
}

void Channel::followAutogain (double factor, bool isPlaying, double blockSeconds) noexcept
{
    const auto near = std::abs (autogain - factor) <= autogainArrived * factor;
    autogain = isPlaying && wasPlaying && !near ? OnePole::approached (
                   autogain, factor, OnePole::coefficient (autogainSeconds, 1.0 / blockSeconds))
                                                : factor;
    wasPlaying = isPlaying;
}

double Channel::targetGain (const EngineSettings& settings, int side) const noexcept
{
    if (knobs.mute != 0 || knobs.mixOverride == MixOverride::cut)
        return 0.0;
    const FaderLaws::Crossfader fader { settings.crossfader, settings.crossfaderCurve,
                                        settings.crossfaderMode == 0, settings.crossfaderReverse != 0 };
    const auto crossfader =
        knobs.mixOverride == MixOverride::punch ? 1.0 : FaderLaws::crossfaderGain (fader, side);
    return FaderLaws::faderGain (knobs.volume * knobs.volumeFactor) * autogain * knobs.gain * 2.0
           * crossfader;
}

void Channel::applyFader (const ChannelPair& pair, double target, double smoothing) noexcept
{
    if (pair.frames < 1)
        return;
    meters.update (pair.left, pair.right, pair.frames, static_cast<float> (autogain * knobs.gain * 2.0));
    const auto before = fader;
    fader = multiplyTowards (pair.left, pair.frames, before, target, smoothing);
    multiplyTowards (pair.right, pair.frames, before, target, smoothing);
    lastLeft = pair.left[pair.frames - 1];
    lastRight = pair.right[pair.frames - 1];
}

double Channel::level() const noexcept
{
    return std::min (1.0, std::max (std::abs (lastLeft.get()), std::abs (lastRight.get())));
}
