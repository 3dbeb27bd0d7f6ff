#pragma once

#include <bit>
#include <cstdint>

/** Elementary functions made of additions and multiplications only.

    The C library's differ in the last bit from one machine to the next; with these (and no fused multiply-add, see
    the build file) a demo track has the same samples everywhere. Errors are below 1e-8, which 16 bits never show. */
namespace PortableMath
{
inline constexpr double pi = 3.14159265358979323846;

/** sin (2 pi phase). @param phase   in turns, 0 to 1 */
constexpr double sine (double phase) noexcept
{
    // sin (2 pi p) = -sin (2 pi (p - 1/2)), folded onto a quarter turn, then Taylor's series.
    const auto x = phase - 0.5;
    const auto half = x < 0.0 ? -x : x;
    const auto folded = half > 0.25 ? 0.5 - half : half;
    const auto a = folded * 2.0 * pi;
    const auto s = a * a;
    const auto series =
        a
        * (1.0
           - s / 6.0
                 * (1.0
                    - s / 20.0
                          * (1.0 - s / 42.0 * (1.0 - s / 72.0 * (1.0 - s / 110.0 * (1.0 - s / 156.0))))));
    return x < 0.0 ? series : -series;
}

/** 2 to the power of x. @param x   -1000 to 1000 */
constexpr double exp2 (double x) noexcept
{
    const auto whole = static_cast<int64_t> (x < 0.0 ? x - 0.5 : x + 0.5);
    const auto t = (x - static_cast<double> (whole)) * 0.69314718055994530942;
    double series = 1.0;
    for (int n = 11; n > 0; --n)
        series = 1.0 + series * t / n;
    return series * std::bit_cast<double> (static_cast<uint64_t> (1023 + whole) << 52);
}

/** tan (pi f), the warping of a bilinear filter. @param f   frequency over sample rate, 0 to below 0.5 */
constexpr double tanPi (double f) noexcept
{
    return sine (0.5 * f) / sine (0.5 * f + 0.25);
}

constexpr double fromDecibels (double db) noexcept
{
    return exp2 (db * 0.16609640474436813);
}

/** Hz of a MIDI note in equal temperament, A4 = 69 = 440 Hz. */
constexpr double noteHz (double note) noexcept
{
    return 440.0 * exp2 ((note - 69.0) / 12.0);
}

/** The factor by which something decays in a sample if it falls to 1/e in `seconds`. */
constexpr double decayPerSample (double seconds, double sampleRate) noexcept
{
    return exp2 (-1.4426950408889634 / (seconds * sampleRate));
}

/** A saturating curve: slope 1 at 0, exactly -1 and 1 from -3 and 3 on (the Padé approximant of tanh). */
constexpr double softClip (double x) noexcept
{
    const auto limited = x > 3.0 ? 3.0 : x < -3.0 ? -3.0 : x;
    const auto square = limited * limited;
    return limited * (27.0 + square) / (27.0 + 9.0 * square);
}
}
