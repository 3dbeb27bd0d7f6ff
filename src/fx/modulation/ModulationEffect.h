#pragma once

#include "fx/effect/EffectMix.h"
#include "fx/modulation/ChorusBase.h"
#include "fx/modulation/RandGenerator.h"

#include <array>

namespace fx_dsp
{
/** The common part of Flanger and Phaser: the feedback, the mix of dry and wet, and the bypass, each through its ramp.
    One channel. Constructed off the audio thread; everything else may run there. */
class modulation_effect : public chorus_base
{
public:
    /** Frames that are computed at a time. */
    static constexpr int pieceFrames = 128;

    /** The share of the line's end that goes back to its start, 0.2 to 0.8, and +1 or -1 for its sign. */
    PX_AUDIO_THREAD void setFeedback (double depth, double sign) noexcept;

    /** 0 dry only to 1 wet only. */
    PX_AUDIO_THREAD void setDryWet (double wetPart) noexcept { gains.setDryWet (wetPart); }

    /** A line that was empty takes the sound in as it is faded in, so that its front is no step. */
    PX_AUDIO_THREAD void setBypass (bool isOn) noexcept
    {
        gains.setBypass (isOn);
        intake.setTarget (isOn ? 0.0 : 1.0);
    }

    /** True once only the input is heard; process() need not be called then. */
    PX_AUDIO_THREAD bool isBypassed() const noexcept { return gains.isBypassed(); }

    /** Ends every ramp at its target. */
    PX_AUDIO_THREAD void settle() noexcept
    {
        feedback.settle();
        intake.settle();
        gains.settle();
    }

protected:
    using Piece = std::array<float, pieceFrames>;

    modulation_effect();

    /** In Hz, limited to the range. */
    PX_AUDIO_THREAD void takeSampleRate (double hertz) noexcept;
    ~modulation_effect() = default;

    /** Copies the samples to `in`, with NaN, infinity and values beyond 36 dB over full scale replaced by silence, and a little noise that keeps a decaying line out of the subnormal numbers. */
    PX_AUDIO_THREAD void takeIn (const float* samples, int count, Piece& in) noexcept;

    /** The feedback of the next `count` samples. */
    PX_AUDIO_THREAD void takeFeedback (int count, Piece& factors) noexcept;

    /** Mixes the wet samples into the dry ones, in place. */
    PX_AUDIO_THREAD void mix (float* samples, const Piece& wetSamples, int count) noexcept;

private:
    static constexpr float loudest = 64.0f;

    Piece noise;
    GainRamp feedback { 0.0 }, intake { 0.0 };
    EffectMix gains;
};
}
