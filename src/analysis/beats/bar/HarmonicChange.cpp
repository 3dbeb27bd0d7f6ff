#include "analysis/beats/bar/HarmonicChange.h"

#include "analysis/beats/onset/FastLog.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace
{
constexpr size_t neighbours = 3;

/** The logarithm brings out quiet notes; what stands no higher than its neighbours, as in a drum's noise, is no note. */
CChroma::Profile notesOf (const CChroma::Profile& in, float scale)
{
    constexpr size_t size = CChroma::numPitches;
    std::array<float, size + 2 * neighbours> level; // beyond each end the last pitch goes on
    for (size_t p = 0; p < size; ++p)
        level[p + neighbours] = std::numbers::ln2_v<float> * FastLog::log2 (1.0f + in[p] * scale);
    std::fill_n (level.begin(), neighbours, level[neighbours]);
    std::fill_n (level.end() - neighbours, neighbours, level[size + neighbours - 1]);
    CChroma::Profile notes;
    for (size_t p = 0; p < size; ++p)
    {
        auto around = 0.0f;
        for (size_t q = 0; q <= 2 * neighbours; ++q)
            around += level[p + q];
        notes[p] = std::max (0.0f, level[p + neighbours] - around / (2 * neighbours + 1));
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
