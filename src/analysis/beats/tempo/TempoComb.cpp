#include "analysis/beats/tempo/TempoComb.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

TempoComb::TempoComb (std::span<const float> function, double frameRate, double bpm)
    : rate (frameRate),
      centre (bpm),
      length (function.size())
{
    const auto mean = std::accumulate (function.begin(), function.end(), 0.0)
                      / static_cast<double> (std::max<size_t> (1, length));
    for (size_t h = 0; h < harmonics.size(); ++h)
    {
        const auto angle = -2.0 * std::numbers::pi * bpm / 60.0 * harmonics[h] / rate;
        const auto turn = std::polar (1.0, angle);
        for (size_t start = 0; start < length; start += blockFrames)
        {
            // Each block starts from an exact angle: the recurrence's error stays within the block.
            auto phasor = std::polar (1.0, angle * static_cast<double> (start));
            Complex sum;
            for (auto i = start; i < std::min (length, start + blockFrames); ++i)
            {
                sum += (function[i] - mean) * phasor;
                phasor *= turn;
            }
            blocks[h].push_back (sum);
        }
    }
}

double TempoComb::resolution() const
{
    return 60.0 * rate / (harmonics.back() * static_cast<double> (std::max<size_t> (1, length)));
}

double TempoComb::best() const
{
    auto found = centre;
    auto highest = -1.0;
    for (const auto candidate : { 1.0, 1.0 - apart, 1.0 + apart })
    {
        const auto nearby = centre / candidate;
        const auto step = resolution() / 4.0;
        const auto steps = static_cast<int> (std::ceil (around * centre / step));
        auto top = nearby;
        auto topScore = -1.0;
        for (int i = -steps; i <= steps; ++i)
            if (const auto s = score (nearby + i * step); s > topScore)
            {
                topScore = s;
                top = nearby + i * step;
            }
        const auto exact = bisect (top);
        if (const auto s = score (exact); s > highest)
        {
            highest = s;
            found = exact;
        }
    }
    return found;
}

double TempoComb::bisect (double bpm) const
{
    // In frames of the signal per beat, by the onset function's hop.
    constexpr auto lastStep = 1.0 / 32.0 / 256.0;
    auto length = 60.0 * rate / bpm;
    auto step = length * resolution() / 4.0 / bpm;
    auto here = score (bpm);
    while (step > lastStep)
    {
        const auto shorter = score (60.0 * rate / (length - step));
        const auto longer = score (60.0 * rate / (length + step));
        if (shorter > here || longer > here)
        {
            length += longer > shorter ? step : -step;
            here = std::max (shorter, longer);
        }
        else
        {
            step *= 0.75;
        }
    }
    return 60.0 * rate / length;
}

double TempoComb::score (double bpm) const
{
    auto total = 0.0;
    for (size_t h = 0; h < harmonics.size(); ++h)
    {
        const auto turn = std::polar (1.0, -2.0 * std::numbers::pi * (bpm - centre) / 60.0 * harmonics[h]
                                               * blockFrames / rate);
        auto re = 0.0, im = 0.0, c = 1.0, s = 0.0;
        for (const auto& block : blocks[h])
        {
            re += block.real() * c - block.imag() * s;
            im += block.real() * s + block.imag() * c;
            const auto next = c * turn.real() - s * turn.imag();
            s = c * turn.imag() + s * turn.real();
            c = next;
        }
        total += std::hypot (re, im);
    }
    return total;
}
