#include "analysis/beats/HarmonicChange.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{
constexpr int neighbours = 3;

/** The logarithm brings out quiet notes; what stands no higher than its neighbours, as in a drum's noise, is no note. */
CChroma::Profile notesOf (const CChroma::Profile& in, float scale)
{
    constexpr auto size = CChroma::numPitches;
    CChroma::Profile level {}, notes {};
    for (size_t p = 0; p < size; ++p)
        level[p] = std::log1p (in[p] * scale);
    for (int p = 0; p < size; ++p)
    {
        auto around = 0.0f;
        for (int q = p - neighbours; q <= p + neighbours; ++q)
            around += level[static_cast<size_t> (std::clamp (q, 0, size - 1))];
        notes[static_cast<size_t> (p)] =
            std::max (0.0f, level[static_cast<size_t> (p)] - around / (2 * neighbours + 1));
    }
    return notes;
}
}

HarmonicChange::HarmonicChange (std::span<const CChroma::Profile> profiles, double origin, double profileStep)
    : first (origin),
      step (profileStep)
{
    auto total = 0.0;
    for (const auto& profile : profiles)
        for (const auto x : profile)
            total += x;
    const auto mean =
        total / static_cast<double> (std::max<size_t> (1, profiles.size() * CChroma::numPitches));
    const auto scale = static_cast<float> (3.0 / (mean + 1e-9));
    sums.resize (profiles.size() + 1);
    sums[0] = {};
    for (size_t i = 0; i < profiles.size(); ++i)
    {
        const auto notes = notesOf (profiles[i], scale);
        for (size_t p = 0; p < notes.size(); ++p)
            sums[i + 1][p] = sums[i][p] + notes[p];
    }
}

void HarmonicChange::sumUpTo (double position, CChroma::Profile& out) const
{
    const auto place =
        std::clamp ((position - first) / step + 0.5, 0.0, static_cast<double> (sums.size() - 1));
    const auto i = std::min (static_cast<size_t> (place), sums.size() - 1);
    const auto next = std::min (i + 1, sums.size() - 1);
    const auto part = static_cast<float> (place - static_cast<double> (i));
    for (size_t p = 0; p < out.size(); ++p)
        out[p] = (1.0f - part) * sums[i][p] + part * sums[next][p];
}

double HarmonicChange::at (double position, double span) const
{
    CChroma::Profile before, here, after;
    sumUpTo (position - span, before);
    sumUpTo (position, here);
    sumUpTo (position + span, after);
    auto sum = 0.0f;
    for (size_t p = 0; p < here.size(); ++p)
        sum += std::abs (after[p] - 2.0f * here[p] + before[p]);
    return sum * step / span;
}
