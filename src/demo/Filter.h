#pragma once

#include "demo/PortableMath.h"

#include <algorithm>

/** A second-order state variable filter in the trapezoidal (zero-delay) form. Stable under modulation. */
class Filter
{
public:
    /** @param frequency    cut-off over sample rate; held within 0.0002 and 0.45
        @param resonance    quality factor, 0.5 to 20 */
    void tune (double frequency, double resonance) noexcept
    {
        const auto g = PortableMath::tanPi (std::clamp (frequency, 0.0002, 0.45));
        damping = 1.0 / resonance;
        a1 = 1.0 / (1.0 + g * (g + damping));
        a2 = g * a1;
        a3 = g * a2;
    }

    double lowPass (double in) noexcept
    {
        step (in);
        return low;
    }

    double highPass (double in) noexcept
    {
        step (in);
        return in - damping * band - low;
    }

    /** Unity gain at the centre. */
    double bandPass (double in) noexcept
    {
        step (in);
        return damping * band;
    }

private:
    void step (double in) noexcept
    {
        const auto v3 = in - state2;
        band = a1 * state1 + a2 * v3;
        low = state2 + a2 * state1 + a3 * v3;
        state1 = 2.0 * band - state1;
        state2 = 2.0 * low - state2;
    }

    double a1 = 1.0, a2 = 0.0, a3 = 0.0, damping = 1.4;
    double state1 = 0.0, state2 = 0.0, band = 0.0, low = 0.0;
};
