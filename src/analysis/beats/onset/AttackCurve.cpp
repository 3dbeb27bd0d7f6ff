#include "analysis/beats/onset/AttackCurve.h"

#include "analysis/beats/onset/FastLog.h"
#include "analysis/beats/onset/Pulse.h"

#include <algorithm>
#include <cmath>

void AttackCurve::prepare (int step)
{
    *this = {};
    stepFrames = step;
}

void AttackCurve::process (std::span<const float> mono)
{
    // Edges below a ten-thousandth of full scale are noise of the medium, not attacks.
    constexpr auto floorPower = 1e-8f, memory = 0.95f;
    for (size_t at = 0; at < mono.size();)
    {
        const auto count = std::min (mono.size() - at, static_cast<size_t> (stepFrames - filled));
        const auto* x = mono.data() + at;
        const auto first = x[0] - memory * last;
        auto power = first * first;
        for (size_t i = 1; i < count; ++i)
        {
            const auto edge = x[i] - memory * x[i - 1];
            power += edge * edge;
        }
        sum += power;
        last = x[count - 1];
        at += count;
        filled += static_cast<int> (count);
        if (filled == stepFrames)
        {
            curve.push_back (0.5f * FastLog::decibels (sum / static_cast<float> (stepFrames) + floorPower));
            filled = 0;
            sum = 0.0f;
        }
    }
}

double attackDelay (const AttackCurve& curve, const Pulse& pulse, double reach)
{
    // The least rise of an attack's step above the ones before it, in decibels: noise rises by less.
    constexpr auto leastRise = 3.0f;
    constexpr int before = 4, finer = 4;
    const auto levels = curve.levels();
    const auto size = static_cast<int> (levels.size());
    const auto step = static_cast<double> (curve.step());
    const auto half = static_cast<int> (std::ceil (reach * finer / step));
    std::vector<double> sum (static_cast<size_t> (2 * half + 1), 0.0);
    for (int i = before; i < size; ++i)
    {
        const auto highest = *std::max_element (levels.begin() + i - before, levels.begin() + i);
        const auto rise = levels[static_cast<size_t> (i)] - highest - leastRise;
        if (rise <= 0.0f)
            continue;
        const auto position = (i + 0.5) * step;
        const auto delay = position - pulse.at (std::round (pulse.beatAt (position)));
        const auto bin = static_cast<int> (std::lround (delay * finer / step));
        if (std::abs (bin) <= half)
            sum[static_cast<size_t> (bin + half)] += std::min (rise, 12.0f);
    }
    // A step's width on each side, and a preference for what is near.
    auto best = 0.0, at = 0.0;
    for (int b = -half; b <= half; ++b)
    {
        auto around = 0.0, moment = 0.0;
        for (int c = std::max (-half, b - 2 * finer); c <= std::min (half, b + 2 * finer); ++c)
        {
            const auto weight =
                (1.0 - std::abs (c - b) / (2.0 * finer + 1)) * sum[static_cast<size_t> (c + half)];
            around += weight;
            moment += weight * c;
        }
        const auto score = around * (1.0 - 0.5 * std::abs (b) / half);
        if (score > best)
        {
            best = score;
            at = moment / around * step / finer;
        }
    }
    return at;
}
