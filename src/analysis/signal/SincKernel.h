#pragma once

#include "support/AudioThread.h"

#include <array>
#include <span>

/** The coefficients of a resampler between two input frames, for any ratio: a sinc under Kaiser's window whose cut-off
    is half the slower of the two rates. It reaches over 65 input frames at ratios up to 1, and over 127 at the widest. */
class SincKernel
{
public:
    static constexpr int widestHalf = 63, widest = 2 * widestHalf + 1;

    SincKernel();

    /** @param ratio   input frames per output frame, above 0; costs some hundred sines when it is another one */
    PX_AUDIO_THREAD void setRatio (double ratio) noexcept;

    /** Input frames to either side of the middle. */
    PX_AUDIO_THREAD int half() const noexcept { return reach; }

    /** @param fraction   how far the output frame lies after the middle input frame, 0 to 1
        @returns 2 half() + 1 coefficients for the input frames in order of time; they stand until the next call */
    PX_AUDIO_THREAD std::span<const float> at (double fraction) noexcept;

private:
    static constexpr int windowSteps = 1280;

    double ratioSet = 0.0, cutoff = 1.0, halfWidth = 0.0;
    int reach = 0;
    std::array<double, widest> sines, cosines; ///< of the turn that each input frame lies from the middle
    std::array<float, widest> row;
    std::array<double, windowSteps + 3> window; ///< from the middle to the edge, then nothing
};
