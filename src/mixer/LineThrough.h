#pragma once

#include "mixer/Channel.h"
#include "support/GainRamp.h"

#include <juce_audio_basics/juce_audio_basics.h>

/** Adds a deck's own input to its channel, faded in and out over 5 ms. Audio thread. */
class LineThrough
{
public:
    /** @param rate   of the engine, in Hz */
    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept { ramp.setSampleRate (rate); }

    /** @param input    the deck's input of this block
        @param frames   of it that are valid
        @param gain     linear, 0 for off; the first block begins with it at once */
    PX_AUDIO_THREAD void add (ChannelPair target, const juce::AudioBuffer<float>& input, int frames,
                              double gain) noexcept
    {
        if (frames < 1)
            return;
        if (!std::exchange (hasBegun, true))
            ramp.reset (gain);
        ramp.setTarget (gain);
        if (ramp.isAt (0.0))
            return;
        const auto* left = input.getReadPointer (0);
        const auto* right = input.getReadPointer (1);
        for (int i = 0; i < frames; ++i)
        {
            const auto now = static_cast<float> (ramp.next());
            target.left[i] += now * left[i];
            target.right[i] += now * right[i];
        }
    }

private:
    GainRamp ramp { 0.0 };
    bool hasBegun = false;
};
