#pragma once

#include "fx/LadderFilter.h"
#include "fx/SweepEffect.h"

/** The deck's one-knob filter: low-pass to the left of the centre, high-pass to its right, nothing in the middle. */
class DeckFilter
{
public:
    DeckFilter() noexcept;

    /** Under the callback lock, or on the audio thread. @param value   0 to 1, 0.5 neutral */
    PX_AUDIO_THREAD void set (double value) noexcept;
    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept;
    PX_AUDIO_THREAD void process (float* left, float* right, int frames, double bpm) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;

private:
    LadderFilter lowPass;
    SweepEffect highPass { SweepEffect::Mode::highPass };
};
