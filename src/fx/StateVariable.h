#pragma once

#include "fx/Stereo.h"

/** A second-order section for a stereo pair as a state-variable filter of two trapezoidal integrators. Whatever its
    corner does from one sample to the next, what rings in it loses energy: it can be moved at will without bursts. */
class StateVariable
{
public:
    struct Coefficients
    {
        double damping = 2.0, a1 = 1.0, a2 = 0.0, a3 = 0.0;
    };

    struct Outputs
    {
        Stereo low, band;
    };

    /** @param g         tan (pi * corner / rate)
        @param damping   1 / Q */
    PX_AUDIO_THREAD static Coefficients coefficients (double g, double damping) noexcept
    {
        const auto a1 = 1.0 / (1.0 + g * (g + damping));
        return { damping, a1, g * a1, g * g * a1 };
    }

    /** The high-pass output is in - damping * band - low, the all-pass in - 2 * damping * band. */
    PX_AUDIO_THREAD Outputs next (const Coefficients& c, Stereo in) noexcept
    {
        const auto rest = in - second;
        const auto band = c.a1 * first + c.a2 * rest;
        const auto low = second + c.a2 * first + c.a3 * rest;
        first = 2.0 * band - first;
        second = 2.0 * low - second;
        return { low, band };
    }

    /** Takes a state below the threshold as silence. */
    PX_AUDIO_THREAD void flush (double threshold) noexcept
    {
        first = StereoMath::flushed (first, threshold);
        second = StereoMath::flushed (second, threshold);
    }

    PX_AUDIO_THREAD bool isAtRest() const noexcept
    {
        return first[0] == 0.0 && first[1] == 0.0 && second[0] == 0.0 && second[1] == 0.0;
    }

    PX_AUDIO_THREAD void reset() noexcept { first = second = Stereo {}; }

private:
    Stereo first {}, second {};
};
