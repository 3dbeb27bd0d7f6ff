#include "instruments/sampler/sample/SampleOutline.h"

#include <algorithm>

void SampleOutline::take (const float* left, const float* right, int32_t frames) noexcept
{
    const auto toPercent = [] (float value)
    { return static_cast<int8_t> (100.0f * std::clamp (value, -1.0f, 1.0f)); };
    for (int64_t column = 0; column < columns; ++column)
    {
        auto high = 0.0f, low = 0.0f;
        for (auto i = column * frames / columns; i < (column + 1) * frames / columns; ++i)
        {
            high = std::max ({ high, left[i], right[i] });
            low = std::min ({ low, left[i], right[i] });
        }
        highest[static_cast<size_t> (column)] = toPercent (high);
        lowest[static_cast<size_t> (column)] = toPercent (low);
    }
    version += 1;
}
