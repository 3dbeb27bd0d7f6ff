#pragma once

#include "fx/Stereo.h"

/** The second-order section of the sweep effects for a stereo pair: direct form, with its own gain of (1 + s/Q) over
    (1 + s/2Q) in the pass band, s the sine of the corner's angle. */
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
        double b0 = 1.0, a1 = 0.0, a2 = 0.0;
    };

    /** The corner is limited to what the rate can carry. Not for every sample. @param q   1 to 3; peaks like half of it */
    PX_AUDIO_THREAD static Coefficients coefficients (Side, double hz, double q, double rate) noexcept;

    /** @tparam side   the one that the coefficients were made for */
    template <Side side>
    PX_AUDIO_THREAD Stereo next (const Coefficients& c, Stereo in) noexcept
    {
        const auto x = StereoMath::flushed (in, silence);
        const auto middle = side == Side::lowPass ? x1 + x1 : -(x1 + x1);
        const auto y = StereoMath::flushed ((x + middle + x2) * c.b0 - c.a1 * y1 - c.a2 * y2, silence);
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }

    PX_AUDIO_THREAD void reset() noexcept { x1 = x2 = y1 = y2 = Stereo {}; }

private:
    static constexpr double silence = 1e-9;
    Stereo x1 {}, x2 {}, y1 {}, y2 {};
};
