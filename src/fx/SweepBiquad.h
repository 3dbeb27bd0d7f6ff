#pragma once

#include "fx/StateVariable.h"

/** The second-order section of the sweep effects for a stereo pair: with s and c the sine and cosine of the corner's angle,
    the biquad of b0 = (1 -+ c) / (s/Q + 2) times (1 +- z)^2, a1 = -2 Q c / (s + Q), a2 = (Q - s) / (s + Q).

    It is worked as a state-variable filter, for which these say: tan (angle / 2), damping 2 / Q, and a gain. In a direct
    form a corner that jumps from block to block would turn a steep wave into a burst of many times its height. */
class SweepBiquad
{
public:
    enum class Side
    {
        lowPass,
        highPass
    };

    struct Coefficients
    {
        StateVariable::Coefficients section;
        double gain = 1.0; ///< in the pass band
    };

    /** The corner is limited to what the rate can carry. Not for every sample. @param q   1 to 3; peaks like half of it */
    PX_AUDIO_THREAD static Coefficients coefficients (double hz, double q, double rate) noexcept;

    template <Side side>
    PX_AUDIO_THREAD Stereo next (const Coefficients& c, Stereo in) noexcept
    {
        const auto x = StereoMath::flushed (in, silence);
        const auto [low, band] = state.next (c.section, x);
        const auto out = side == Side::lowPass ? low : x - c.section.damping * band - low;
        return StereoMath::flushed (out * c.gain, silence);
    }

    /** After each block: what rings on below hearing ends. */
    PX_AUDIO_THREAD void flush() noexcept { state.flush (silence); }

    PX_AUDIO_THREAD void reset() noexcept { state.reset(); }

private:
    static constexpr double silence = 1e-9;
    StateVariable state;
};
