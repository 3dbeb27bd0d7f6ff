#pragma once

#include "support/AudioThread.h"

#include <optional>

/** The hops and the resampling that a pair of factors asks of the vocoder. */
struct StretchFactors
{
    double stretch = 1.0, pitch = 1.0; ///< as asked for; of reciprocals the stretch decides
    int hopIn = 0;                     ///< from frame to frame in the input
    int hopOut = 0; ///< in the output before it is resampled: the ratio's, truncated to even

    /** The stretch of the vocoder, before its output is resampled by the pitch; exactly 1 where both cancel out. */
    double ratio = 1.0;

    double roundedRatio() const noexcept { return static_cast<double> (hopOut) / hopIn; }

    static constexpr double least = 0.1, greatest = 10.0, greatestPitch = 16.0;

    /** @param highQuality   halves the input hop at ratios up to 1.5
        @returns nothing for factors that are out of range or no numbers */
    PX_AUDIO_THREAD static std::optional<StretchFactors> of (float stretch, float pitch, int frameLength,
                                                             bool highQuality = false) noexcept;

    /** The factors of a sound that is left as it is. */
    PX_AUDIO_THREAD static StretchFactors unity (int frameLength) noexcept;
};

/** Samples of an analysis frame at a sample rate in Hz: 2048 below 32 kHz, doubled with each octave above. */
int stretchFrameLength (double sampleRate) noexcept;
