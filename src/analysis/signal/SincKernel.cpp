#include "analysis/signal/SincKernel.h"

#include "analysis/signal/KaiserSinc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr double stopBandDb = 100.0, zeroCrossings = 32.0;
}

SincKernel::SincKernel()
{
    const auto shape = KaiserSinc::shape (stopBandDb);
    for (size_t i = 0; i < window.size(); ++i)
        window[i] = KaiserSinc::window (static_cast<double> (i) / windowSteps, shape);
    setRatio (1.0);
}

void SincKernel::setRatio (double ratio) noexcept
{
    if (ratio == ratioSet)
        return;
    ratioSet = ratio;
    cutoff = 1.0 / std::max (1.0, ratio);
    halfWidth = std::min (zeroCrossings / cutoff, static_cast<double> (widestHalf));
    reach = static_cast<int> (std::ceil (halfWidth));
    for (int i = 0; i <= 2 * reach; ++i)
    {
        // A whole number of half turns is taken off, so that the zeros of an unmoved cut-off are exact.
        const auto turns = cutoff * (reach - i);
        const auto nearest = std::round (turns);
        const auto sign = std::fmod (nearest, 2.0) == 0.0 ? 1.0 : -1.0;
        sines[static_cast<size_t> (i)] = sign * std::sin (std::numbers::pi * (turns - nearest));
        cosines[static_cast<size_t> (i)] = sign * std::cos (std::numbers::pi * (turns - nearest));
    }
}

std::span<const float> SincKernel::at (double fraction) noexcept
{
    constexpr auto pi = std::numbers::pi;
    const auto sine = std::sin (pi * cutoff * fraction), cosine = std::cos (pi * cutoff * fraction);
    const auto count = 2 * reach + 1;
    const auto stepsPerFrame = windowSteps / halfWidth;
    for (int i = 0; i < count; ++i)
    {
        const auto distance = fraction + (reach - i);
        // The sine of a sum: the two of the frames' own turns serve every fraction.
        const auto sinc = (sine * cosines[static_cast<size_t> (i)] + cosine * sines[static_cast<size_t> (i)])
                          / (pi * distance);
        const auto place = std::min (std::abs (distance) * stepsPerFrame, windowSteps + 1.0);
        const auto step = static_cast<int> (place);
        const auto* below = window.data() + step;
        row[static_cast<size_t> (i)] =
            static_cast<float> (sinc * (below[0] + (place - step) * (below[1] - below[0])));
    }
    for (int i = reach; i <= reach + 1; ++i)
        if (std::abs (fraction + (reach - i)) < 1e-9)
            row[static_cast<size_t> (i)] = static_cast<float> (cutoff);
    return { row.data(), static_cast<size_t> (count) };
}
