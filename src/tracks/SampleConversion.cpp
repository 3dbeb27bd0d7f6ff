#include "tracks/SampleConversion.h"

#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>

namespace
{
int16_t to16Bit (uint8_t value) noexcept
{
    return static_cast<int16_t> ((value - 128) * 256);
}

int16_t to16Bit (int16_t value) noexcept
{
    return value;
}

int16_t to16Bit (int32_t value) noexcept
{
    return static_cast<int16_t> (value >> 16);
}

/** A float's bits as an integer, and the sum that leaves its nearest whole number in their lower end. */
template <typename Float>
struct Bits;

template <>
struct Bits<float>
{
    using Integer = int32_t;
    static constexpr float roundingSum = 12582912.0f; // 1.5 * 2^23
};

template <>
struct Bits<double>
{
    using Integer = int64_t;
    static constexpr double roundingSum = 6755399441055744.0; // 1.5 * 2^52
};

template <typename Float>
requires std::is_floating_point_v<Float> int16_t to16Bit (Float value)
noexcept
{
    // Limited by the bits of its magnitude, which order as it does and lie above infinity's for NaN: comparisons of
    // floats may trap, so the compiler would keep them as branches, sample by sample.
    using Integer = typename Bits<Float>::Integer;
    constexpr auto sign = std::numeric_limits<Integer>::min();
    constexpr auto infinity = std::bit_cast<Integer> (std::numeric_limits<Float>::infinity());
    constexpr auto limit = std::bit_cast<Integer> (Float { 32767 });
    const auto bits = std::bit_cast<Integer> (value * 32767);
    auto magnitude = bits & ~sign;
    magnitude = magnitude > infinity ? 0 : magnitude;
    magnitude = magnitude < limit ? magnitude : limit;
    const auto limited = std::bit_cast<Float> (magnitude | (bits & sign));
    return static_cast<int16_t> (std::bit_cast<Integer> (limited + Bits<Float>::roundingSum));
}

struct To16Bit
{
    template <typename Sample>
    int16_t operator() (Sample value) const noexcept
    {
        return to16Bit (value);
    }
};

struct ToFloat
{
    float operator() (uint8_t value) const noexcept { return static_cast<float> (value - 128) * 0x1p-7f; }
    float operator() (int16_t value) const noexcept { return static_cast<float> (value) * 0x1p-15f; }
    float operator() (int32_t value) const noexcept { return static_cast<float> (value) * 0x1p-31f; }
    float operator() (float value) const noexcept { return value; }
    float operator() (double value) const noexcept { return static_cast<float> (value); }
};

template <typename Sample, typename Convert, typename Out>
int convert (std::span<const std::byte> data, int channels, Convert one, Out* left, Out* right) noexcept
{
    const auto frames = static_cast<int> (data.size() / (sizeof (Sample) * static_cast<size_t> (channels)));
    // The decoder aligns its buffer for vectors, so this cast meets every format's alignment.
    const auto* samples = reinterpret_cast<const Sample*> (data.data());
    if (channels == 1)
    {
        for (int i = 0; i < frames; ++i)
            left[i] = one (samples[i]);
        std::memcpy (right, left, static_cast<size_t> (frames) * sizeof (Out));
        return frames;
    }
    for (int i = 0; i < frames; ++i)
    {
        left[i] = one (samples[2 * i]);
        right[i] = one (samples[2 * i + 1]);
    }
    return frames;
}

template <typename Convert, typename Out>
int convertFormat (std::span<const std::byte> data, int format, int channels, Convert one, Out* left,
                   Out* right) noexcept
{
    if (channels != 1 && channels != 2)
        return 0;
    switch (static_cast<SampleFormat> (format))
    {
    case SampleFormat::unsigned8:
        return convert<uint8_t> (data, channels, one, left, right);
    case SampleFormat::signed16:
        return convert<int16_t> (data, channels, one, left, right);
    case SampleFormat::signed32:
        return convert<int32_t> (data, channels, one, left, right);
    case SampleFormat::float32:
        return convert<float> (data, channels, one, left, right);
    case SampleFormat::float64:
        return convert<double> (data, channels, one, left, right);
    }
    return 0;
}
}

int bytesPerSample (int format) noexcept
{
    switch (static_cast<SampleFormat> (format))
    {
    case SampleFormat::unsigned8:
        return 1;
    case SampleFormat::signed16:
        return 2;
    case SampleFormat::signed32:
    case SampleFormat::float32:
        return 4;
    case SampleFormat::float64:
        return 8;
    }
    return 0;
}

int convertTo16Bit (std::span<const std::byte> data, int format, int channels, int16_t* left,
                    int16_t* right) noexcept
{
    return convertFormat (data, format, channels, To16Bit {}, left, right);
}

int convertToFloat (std::span<const std::byte> data, int format, int channels, float* left,
                    float* right) noexcept
{
    return convertFormat (data, format, channels, ToFloat {}, left, right);
}
