#include "analysis/beats/onset/Onset.h"

#include <algorithm>
#include <cmath>

COnset::COnset (double lowHz, double highHz, double binHz, int bins)
    : first (std::min (bins, static_cast<int> (std::ceil (lowHz / binHz)))),
      end (std::clamp (static_cast<int> (std::ceil (highHz / binHz)), first, bins))
{
}

float COnset::flux (std::span<const float> levels, std::span<const float> before) const
{
    if (first == end)
        return 0.0f;
    const auto* now = levels.data();
    const auto* then = before.data();
    auto sum = 0.0f;
    for (int k = first; k < end; ++k)
        sum += std::max (0.0f, now[k] - then[k]);
    return sum / static_cast<float> (end - first);
}
