#include "mixer/ChannelStrip.h"

#include "mixer/FaderLaws.h"
#include "mixer/Peak.h"
#include "support/OnePole.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double smallestGain = 1e-6;

/** Nearer than this a gain has arrived; it would stay some rounding errors away for ever. */
constexpr double arrived = 1e-12;

void multiply (float* samples, int frames, double gain) noexcept
{
    for (int i = 0; i < frames; ++i)
        samples[i] = static_cast<float> (samples[i] * gain);
}

}

void ChannelStrip::equalise (const DeckPlayer& deck, Equaliser& equaliser, const Pair& pair,
                             double sampleRate) noexcept
{
    const auto killLow = deck.killLow != 0, killMid = deck.killMid != 0, killHigh = deck.killHigh != 0;
    if (killLow && killMid && killHigh)
    {
        std::fill_n (pair.left, pair.frames, 0.0f);
        std::fill_n (pair.right, pair.frames, 0.0f);
        equaliser.reset();
        return;
    }
    equaliser.setGains ({ FaderLaws::bandGainDb (deck.eqLow, killLow),
                          FaderLaws::bandGainDb (deck.eqMid, killMid),
                          FaderLaws::bandGainDb (deck.eqHigh, killHigh) },
                        sampleRate);
    equaliser.process (pair.left, pair.right, pair.frames);
}

void ChannelStrip::tapPfl (const DeckSetup& setup, DeckPlayer& deck, const Pair& pair,
                           const Pair& monitor) noexcept
{
    if (setup.pfl == 0)
        return;
    const auto gain = static_cast<float> (deck.gain * 2.0);
    juce::FloatVectorOperations::addWithMultiply (monitor.left, pair.left, gain, pair.frames);
    juce::FloatVectorOperations::addWithMultiply (monitor.right, pair.right, gain, pair.frames);
    const auto peak = gain * std::max (peakOf (pair.left, pair.frames), peakOf (pair.right, pair.frames));
    deck.peak = std::max (deck.peak.get(), static_cast<double> (peak));
}

double ChannelStrip::targetGain (const EngineSettings& settings, const DeckPlayer& deck) noexcept
{
    if (deck.mute != 0 || deck.mixOverride == cut)
        return 0.0;
    const auto side = settings.deckSetup[static_cast<size_t> (deck.index)].crossfaderSide;
    const FaderLaws::Crossfader fader { settings.crossfader, settings.crossfaderCurve,
                                        settings.crossfaderMode == 0, settings.crossfaderReverse != 0 };
    const auto crossfader = deck.mixOverride == punch ? 1.0 : FaderLaws::crossfaderGain (fader, side);
    return FaderLaws::faderGain (deck.volume) * deck.track.autogain * deck.gain * 2.0 * crossfader;
}

void ChannelStrip::applyFader (DeckPlayer& deck, const Pair& pair, double target, double smoothing) noexcept
{
    if (pair.frames < 1)
        return;
    auto gain = deck.gainRamp.get();
    if (std::abs (gain - target) <= arrived)
    {
        gain = target;
        multiply (pair.left, pair.frames, gain);
        multiply (pair.right, pair.frames, gain);
    }
    else
    {
        for (int i = 0; i < pair.frames; ++i)
        {
            pair.left[i] = static_cast<float> (pair.left[i] * gain);
            pair.right[i] = static_cast<float> (pair.right[i] * gain);
            gain = OnePole::approached (gain, target, smoothing);
            if (!(gain >= smallestGain)) // also what is no number
                gain = 0.0;
        }
    }
    deck.gainRamp = gain;
    deck.lastLeft = pair.left[pair.frames - 1];
    deck.lastRight = pair.right[pair.frames - 1];
}
