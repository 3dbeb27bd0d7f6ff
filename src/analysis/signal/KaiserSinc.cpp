#include "analysis/signal/KaiserSinc.h"

#include <cmath>
#include <numbers>

double KaiserSinc::shape (double attenuationDb)
{
    return 0.1102 * (attenuationDb - 8.7);
}

double KaiserSinc::window (double place, double shape)
{
    const auto inside = 1.0 - place * place;
    return inside < 0.0
               ? 0.0
               : std::cyl_bessel_i (0.0, shape * std::sqrt (inside)) / std::cyl_bessel_i (0.0, shape);
}

double KaiserSinc::sinc (double x, double cutoff)
{
    const auto turns = cutoff * x;
    if (turns == 0.0)
        return cutoff;
    // The sine of what is left of a whole number, so that a whole number is a zero.
    const auto nearest = std::round (turns);
    const auto sine = std::sin (std::numbers::pi * (turns - nearest));
    return (std::fmod (nearest, 2.0) == 0.0 ? sine : -sine) / (std::numbers::pi * x);
}
