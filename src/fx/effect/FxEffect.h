#pragma once

#include "support/AudioThread.h"

#include <string>

/** The parameters of effects. Values are 0 to 1; an effect ignores those that it does not know. */
enum class FxParameter
{
    dryWet,          ///< dry 0 to wet 1
    frequency,       ///< 0.5 at rest; depth of flanger and phaser
    feedback,        ///< of the delay; stereo phase of flanger and phaser
    step,            ///< time or rate in steps of a beat; room size of the reverb
    bypass,          ///< from 0.5 on only the dry signal is heard
    feedbackSign = 6 ///< negative below 0.5; flanger and phaser
};

/** One stereo effect of a slot.

    Memory for rates up to `highestRate` is taken at construction; nothing after that allocates. Parameters are set under
    the callback lock, or on the audio thread. */
class FxEffect
{
public:
    static constexpr double highestRate = 192000.0; ///< Hz; at higher rates delays are shorter than named

    virtual ~FxEffect() = default;

    /** Takes a new rate in Hz and resets. */
    PX_AUDIO_THREAD virtual void setSampleRate (double rate) noexcept = 0;

    /** @param value   0 to 1, the caller limits it */
    PX_AUDIO_THREAD virtual void setFxParameter (FxParameter, double value) noexcept = 0;

    /** A parameter as a display shows it; empty for one that the effect does not know. Not on the audio thread. */
    virtual std::string parameterText (FxParameter) const = 0;

    /** Works in place.
        @param bpm   the deck's tempo, above 0 */
    PX_AUDIO_THREAD virtual void process (float* left, float* right, int frames, double bpm) noexcept = 0;

    /** Forgets all sound, and takes every parameter at once to where its ramp was going. */
    PX_AUDIO_THREAD virtual void reset() noexcept = 0;
};
