#include "tracks/SampleConversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{
template <typename Sample>
std::vector<int16_t> converted (const std::vector<Sample>& samples, int format, int channels,
                                bool rightSide = false)
{
    std::vector<int16_t> left (samples.size()), right (samples.size());
    const auto frames =
        convertTo16Bit (std::as_bytes (std::span (samples)), format, channels, left.data(), right.data());
    auto& side = rightSide ? right : left;
    side.resize (static_cast<size_t> (frames));
    return side;
}

constexpr auto notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<float>::infinity();
}

TEST (SampleConversion, EveryFormatHasItsScaleItsLimitsAndItsRounding)
{
    using Out = std::vector<int16_t>;
    EXPECT_EQ (converted<uint8_t> ({ 0, 128, 255 }, 0, 1), (Out { -32768, 0, 32512 }));
    EXPECT_EQ (converted<int16_t> ({ -32768, 5, 32767 }, 1, 1), (Out { -32768, 5, 32767 }));
    EXPECT_EQ (converted<int32_t> ({ INT32_MIN, 65'536, 65'535, -1, INT32_MAX }, 2, 1),
               (Out { -32768, 1, 0, -1, 32767 }));
    EXPECT_EQ (converted<float> ({ -1.0f, -2.0f, 0.0f, 1.0f, 1.5f, notANumber, infinity, -infinity,
                                   1.4f / 32767, 1.6f / 32767, -1.4f / 32767, -1.6f / 32767 },
                                 3, 1),
               (Out { -32767, -32767, 0, 32767, 32767, 0, 32767, -32767, 1, 2, -1, -2 }));
    EXPECT_EQ (converted<double> ({ -1.0, 0.5, 9.0, static_cast<double> (notANumber) }, 4, 1),
               (Out { -32767, 16384, 32767, 0 }));
}

TEST (SampleConversion, MonoGoesToBothSidesAndStereoIsTakenApart)
{
    using Out = std::vector<int16_t>;
    EXPECT_EQ (converted<int16_t> ({ 1, 2, 3 }, 1, 1, true), (Out { 1, 2, 3 }));
    EXPECT_EQ (converted<int16_t> ({ 1, 2, 3, 4 }, 1, 2), (Out { 1, 3 }));
    EXPECT_EQ (converted<int16_t> ({ 1, 2, 3, 4 }, 1, 2, true), (Out { 2, 4 }));
    EXPECT_EQ (converted<int16_t> ({ 1, 2, 3 }, 1, 2).size(), 1u); // half a frame is none
    for (const int channels : { 0, 3, 6, -1 })
        EXPECT_TRUE (converted<int16_t> ({ 1, 2, 3, 4, 5, 6 }, 1, channels).empty());
    for (const int format : { -1, 5, 99 })
        EXPECT_TRUE (converted<int16_t> ({ 1, 2 }, format, 1).empty());
}
