#pragma once

#include "fx/MFXTapeDelay.h"
#include "fx/effect/EffectMix.h"
#include "fx/effect/FxEffect.h"
#include "support/Relaxed.h"

#include <array>

/** The delay of a slot: a line per channel, in time with the deck. While bypassed it listens on, so that its echoes are
    there when it is switched on. */
class DelayEffect : public FxEffect
{
public:
    DelayEffect();

    void setSampleRate (double rate) noexcept override;
    void setFxParameter (FxParameter, double value) noexcept override;
    std::string parameterText (FxParameter) const override;
    PX_AUDIO_THREAD void process (float* left, float* right, int frames, double bpm) noexcept override;
    void reset() noexcept override;

private:
    void mixIn (const float* echoLeft, const float* echoRight, float* left, float* right,
                int frames) noexcept;

    std::array<fx_dsp::MFXTapeDelay, 2> lines;
    EffectMix mix;
    double beats = 0.5;
    Relaxed<double> dryWet { 0.5 }, centred { 0.5 }, feedback, stepValue; ///< as the knobs stand
};
