#include "shared/Signals.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace
{
constexpr double twoPi = 2.0 * std::numbers::pi;

struct Quadrature
{
    double inPhase = 0.0, quadrature = 0.0;
};

/** Amplitudes of cosine and sine by the normal equations. */
Quadrature project (std::span<const float> signal, double step, size_t offset)
{
    double cc = 0.0, ss = 0.0, cs = 0.0, xc = 0.0, xs = 0.0;
    for (size_t i = 0; i < signal.size(); ++i)
    {
        const auto angle = step * static_cast<double> (i + offset);
        const auto c = std::cos (angle), s = std::sin (angle);
        cc += c * c;
        ss += s * s;
        cs += c * s;
        xc += signal[i] * c;
        xs += signal[i] * s;
    }
    const auto determinant = cc * ss - cs * cs;
    return { (xc * ss - xs * cs) / determinant, (xs * cc - xc * cs) / determinant };
}
}

std::vector<float> Signals::sine (double frequency, double rate, int frames, double amplitude)
{
    std::vector<float> out (static_cast<size_t> (frames));
    for (size_t i = 0; i < out.size(); ++i)
        out[i] =
            static_cast<float> (amplitude * std::sin (twoPi * frequency * static_cast<double> (i) / rate));
    return out;
}

std::vector<float> Signals::noise (int frames, unsigned seed, double amplitude)
{
    std::mt19937 random (seed);
    std::vector<float> out (static_cast<size_t> (frames));
    for (auto& sample : out)
        sample = static_cast<float> (amplitude * (random() * (2.0 / 4294967295.0) - 1.0));
    return out;
}

double Signals::rms (std::span<const float> signal)
{
    double sum = 0.0;
    for (const double sample : signal)
        sum += sample * sample;
    return signal.empty() ? 0.0 : std::sqrt (sum / static_cast<double> (signal.size()));
}

double Signals::peak (std::span<const float> signal)
{
    double most = 0.0;
    for (const double sample : signal)
        most = std::max (most, std::abs (sample));
    return most;
}

double Signals::largestStep (std::span<const float> signal)
{
    double most = 0.0;
    for (size_t i = 1; i < signal.size(); ++i)
        most =
            std::max (most, std::abs (static_cast<double> (signal[i]) - static_cast<double> (signal[i - 1])));
    return most;
}

Signals::SineFit Signals::fitSine (std::span<const float> signal, double rate, double nearFrequency)
{
    auto step = twoPi * nearFrequency / rate;
    const auto half = signal.size() / 2;
    for (int round = 0; round < 8; ++round)
    {
        const auto first = project (signal.first (half), step, 0);
        const auto second = project (signal.subspan (half), step, half);
        auto turn =
            std::atan2 (first.quadrature, first.inPhase) - std::atan2 (second.quadrature, second.inPhase);
        turn = std::remainder (turn, twoPi);
        step += turn / static_cast<double> (half);
    }

    const auto fit = project (signal, step, 0);
    double residual = 0.0;
    for (size_t i = 0; i < signal.size(); ++i)
    {
        const auto angle = step * static_cast<double> (i);
        const auto rest = signal[i] - fit.inPhase * std::cos (angle) - fit.quadrature * std::sin (angle);
        residual += rest * rest;
    }
    return { step * rate / twoPi, std::hypot (fit.inPhase, fit.quadrature),
             std::sqrt (residual / static_cast<double> (signal.size())) };
}

double Signals::correlation (std::span<const float> a, std::span<const float> b)
{
    double ab = 0.0, aa = 0.0, bb = 0.0;
    for (size_t i = 0; i < std::min (a.size(), b.size()); ++i)
    {
        ab += static_cast<double> (a[i]) * b[i];
        aa += static_cast<double> (a[i]) * a[i];
        bb += static_cast<double> (b[i]) * b[i];
    }
    return aa > 0.0 && bb > 0.0 ? ab / std::sqrt (aa * bb) : 0.0;
}
