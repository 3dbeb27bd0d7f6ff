#pragma once

#include "fx/effect/FxEffect.h"
#include "support/CrossFade.h"

#include <vector>

namespace fx_dsp
{
/** One channel of the delay: a line with two read heads. Every 512 samples their roles swap: the former head reads on at
    its time and hands over to the other, which takes up the time that is wanted then. So the time can be set anew for
    each block without a click. */
class MFXTapeDelay
{
public:
    static constexpr int memorySize = 262'144; ///< samples

    MFXTapeDelay() : memory (memorySize) {}

    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept;

    /** A delay of 0 or less, or beyond the memory, passes nothing. It is rounded to whole samples. */
    PX_AUDIO_THREAD void setMilliseconds (double time) noexcept;

    /** @param gain   0 to 0.9 */
    PX_AUDIO_THREAD void setFeedback (double gain) noexcept { feedback.setTarget (gain); }

    /** Feeds the line and gives what the heads read, without the input. */
    PX_AUDIO_THREAD void process (const float* in, float* delayed, int frames) noexcept;

    PX_AUDIO_THREAD void reset() noexcept;

private:
    static constexpr int turn = 512; ///< samples from one swap of the heads to the next

    float readAt (int delay) const noexcept;
    void runSteady (const float* in, float* delayed, int frames) noexcept;
    int steadyFrames() const noexcept;
    void moveOn (int frames) noexcept;

    std::vector<float> memory;
    GainRamp feedback { 0.75 };
    double rate = 44100.0, milliseconds = 375.0;
    int writeIndex = 0;
    int filled = 0; ///< samples written since the reset: what lies further back is silence
    int count = 0;  ///< samples into the turn
    int formerDelay = 0, presentDelay = 0, wantedDelay = 0; ///< samples; 0 passes nothing
};
}
