#include "analysis/signal/spare/VectorTable.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#ifdef __x86_64__
    #include <cpuid.h>
#endif

namespace
{
constexpr size_t alignment = 64;

/** Partial results side by side, as a single one would fix the order and keep the compiler from vector code. */
constexpr int lanes = 8;

int askProcessor() noexcept
{
#ifdef __x86_64__
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (__get_cpuid (1, &eax, &ebx, &ecx, &edx) == 0)
        return 0;
    if ((ecx & 1u) != 0)
        return 4;
    if ((edx & 1u << 26) != 0)
        return 2;
    return (edx & 1u << 25) != 0 ? 1 : 0;
#else
    return 0;
#endif
}

float* allocate (int n)
{
    const auto bytes = static_cast<size_t> (std::max (n, 1)) * sizeof (float);
    return static_cast<float*> (
        std::aligned_alloc (alignment, (bytes + alignment - 1) / alignment * alignment));
}

size_t bytesOf (int n) noexcept
{
    return static_cast<size_t> (std::max (n, 0)) * sizeof (float);
}

PX_AUDIO_THREAD void copy (float* out, const float* in, int n)
{
    if (n > 0)
        std::memmove (out, in, bytesOf (n));
}

template <auto ofOne>
PX_AUDIO_THREAD void each (float* out, const float* in, int n)
{
    for (int i = 0; i < n; ++i)
        out[i] = ofOne (in[i]);
}

template <auto ofTwo>
PX_AUDIO_THREAD void eachPair (float* out, const float* a, const float* b, int n)
{
    for (int i = 0; i < n; ++i)
        out[i] = ofTwo (a[i], b[i]);
}

PX_AUDIO_THREAD void multiplyByConstant (float* out, const float* in, float factor, int n)
{
    for (int i = 0; i < n; ++i)
        out[i] = in[i] * factor;
}

PX_AUDIO_THREAD void multiplyAndAdd (float* inAndOut, const float* a, const float* b, int n)
{
    for (int i = 0; i < n; ++i)
        inAndOut[i] += a[i] * b[i];
}

PX_AUDIO_THREAD void fromMagnitudeAndPhase (float* real, float* imaginary, const float* magnitude,
                                            const float* phase, int n)
{
    for (int i = 0; i < n; ++i)
    {
        // Both are read before either is written: an output may be an input.
        const auto length = magnitude[i], angle = phase[i];
        real[i] = length * std::cos (angle);
        imaginary[i] = length * std::sin (angle);
    }
}

template <auto join>
PX_AUDIO_THREAD float joined (const float* in, int n, float start)
{
    float parts[lanes];
    std::fill_n (parts, lanes, start);
    int i = 0;
    for (; i + lanes <= n; i += lanes)
        for (int lane = 0; lane < lanes; ++lane)
            parts[lane] = join (parts[lane], in[i + lane]);
    for (; i < n; ++i)
        parts[i % lanes] = join (parts[i % lanes], in[i]);
    for (int width = lanes / 2; width > 0; width /= 2)
        for (int lane = 0; lane < width; ++lane)
            parts[lane] = join (parts[lane], parts[lane + width]);
    return parts[0];
}

constexpr auto plus = [] (float a, float b) { return a + b; };
constexpr auto greater = [] (float a, float b) { return b > a ? b : a; };

VectorTable fill() noexcept
{
    VectorTable table {};
    table.allocate = allocate;
    table.free = [] (float* block) { std::free (block); };
    table.clear = [] (float* out, int n) { std::fill_n (out, std::max (n, 0), 0.0f); };
    table.copy = copy;
    table.add = eachPair<plus>;
    table.subtract = eachPair<[] (float a, float b) { return a - b; }>;
    table.multiply = eachPair<[] (float a, float b) { return a * b; }>;
    table.multiplyByConstant = multiplyByConstant;
    table.multiplyAndAdd = multiplyAndAdd;
    table.square = each<[] (float value) { return value * value; }>;
    table.squareRoot = each<[] (float value) { return std::sqrt (value); }>;
    table.magnitude = eachPair<[] (float real, float imaginary)
                               { return std::sqrt (real * real + imaginary * imaginary); }>;
    table.phase = eachPair<[] (float real, float imaginary) { return std::atan2 (imaginary, real); }>;
    table.fromMagnitudeAndPhase = fromMagnitudeAndPhase;
    table.maximum = [] (const float* in, int n)
    { return joined<greater> (in, n, -std::numeric_limits<float>::infinity()); };
    table.sum = [] (const float* in, int n) { return joined<plus> (in, n, 0.0f); };
    table.createTransform = createFFT;
    return table;
}
}

int getProcessorLevel() noexcept
{
    static const auto level = askProcessor();
    return level;
}

const VectorTable& initVectorTable() noexcept
{
    static const auto table = fill();
    return table;
}
