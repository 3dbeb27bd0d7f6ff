#include "analysis/beats/bar/Decimator.h"

#include <cmath>
#include <numbers>

void Decimator::prepare (int sampleRate)
{
    every = std::max (1, sampleRate / 11025);
    half = every > 1 ? 8 * every : 0;
    taps.clear();
    auto sum = 0.0;
    std::vector<double> exact;
    for (int i = -half; i <= half; ++i)
    {
        const auto x = std::numbers::pi * i / (1.1 * every);
        const auto hamming = half > 0 ? 0.54 + 0.46 * std::cos (std::numbers::pi * i / half) : 1.0;
        exact.push_back (hamming * (i == 0 ? 1.0 : std::sin (x) / x));
        sum += exact.back();
    }
    for (const auto tap : exact)
        taps.push_back (static_cast<float> (tap / sum));
    pending.assign (static_cast<size_t> (half), 0.0f);
}

std::span<const float> Decimator::process (std::span<const float> in)
{
    pending.insert (pending.end(), in.begin(), in.end());
    out.clear();
    size_t start = 0;
    for (; start + taps.size() <= pending.size(); start += static_cast<size_t> (every))
    {
        const auto* from = pending.data() + start;
        auto sum = 0.0f;
#pragma GCC unroll 4
        for (size_t t = 0; t < taps.size(); ++t)
            sum += taps[t] * from[t];
        out.push_back (sum);
    }
    pending.erase (pending.begin(), pending.begin() + static_cast<std::ptrdiff_t> (start));
    return out;
}
