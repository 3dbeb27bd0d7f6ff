#pragma once

#include "fx/effect/FxEffect.h"
#include "fx/reverb/Reverb.h"
#include "support/Relaxed.h"

/** The Reverb as an effect of a slot: wet level, room size and bypass. */
class ReverbFx final : public FxEffect
{
public:
    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept override;
    PX_AUDIO_THREAD void setFxParameter (FxParameter, double value) noexcept override;
    std::string parameterText (FxParameter) const override;
    PX_AUDIO_THREAD void process (float* left, float* right, int frames, double bpm) noexcept override;
    PX_AUDIO_THREAD void reset() noexcept override;

private:
    Reverb reverb;
    Relaxed<float> wet { Reverb::Settings().wet }, roomSize { Reverb::Settings().roomSize };
};
