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
        s11 = 2.0 * a1 - 1.0;
        s12 = 2.0 * a2;
        s22 = 2.0 * a3;
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
        low = state2 + (a2 * state1 + a3 * v3);
        // The same as 2 band - state1 and 2 low - state2, multiplied out: the next sample waits half as long for it.
        const auto next1 = (s11 * state1 + s12 * in) - s12 * state2;
        const auto next2 = (s12 * state1 + s22 * in) + (1.0 - s22) * state2;
        state1 = next1;
        state2 = next2;
    }

    double a1 = 1.0, a2 = 0.0, a3 = 0.0, damping = 1.4;
    double s11 = 1.0, s12 = 0.0, s22 = 0.0;
    double state1 = 0.0, state2 = 0.0, band = 0.0, low = 0.0;
};
