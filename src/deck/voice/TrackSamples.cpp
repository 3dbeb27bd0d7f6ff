#include "deck/voice/TrackSamples.h"

#include "analysis/signal/KaiserSinc.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace
{
constexpr float sampleScale = 3.0517578125e-05f; // 1 / 32768
constexpr int rows = 128;                        ///< of a table per frame; between two of them it is linear
constexpr double stopBandDb = 96.0;
constexpr int tapsOfPlay = 24, tapsOfFast = 48;

/** Eight sums side by side. A processor with four lanes takes two instructions for each, to the same bits. */
using Lanes [[gnu::vector_size (32)]] = float;
using Shorts [[gnu::vector_size (16)]] = int16_t;
constexpr int lanes = 8;

template <int taps>
using Table = std::array<float, static_cast<size_t> ((rows + 1) * taps)>;

/** The distance in frames of a tap from the place between two frames that a row stands for. */
template <int taps>
constexpr double distanceOf (int row, int tap) noexcept
{
    return static_cast<double> (row) / rows + taps / 2 - 1 - tap;
}

template <int taps>
Table<taps> makeWindow()
{
    Table<taps> window;
    const auto shape = KaiserSinc::shape (stopBandDb);
    auto* next = window.data();
    for (int row = 0; row <= rows; ++row)
        for (int tap = 0; tap < taps; ++tap)
            *next++ =
                static_cast<float> (KaiserSinc::window (distanceOf<taps> (row, tap) / (taps / 2), shape));
    return window;
}

/** @param cutoff   in units of half the track's rate */
template <int taps>
Table<taps> tableFor (const Table<taps>& window, double cutoff)
{
    auto table = window;
    for (int row = 0; row <= rows; ++row)
    {
        auto* const kernel = table.data() + row * taps;
        double sum = 0.0;
        for (int tap = 0; tap < taps; ++tap)
        {
            kernel[tap] *= static_cast<float> (KaiserSinc::sinc (distanceOf<taps> (row, tap), cutoff));
            sum += kernel[tap];
        }
        // Each row passes a constant as it is: what the window leaves of ripple would sound at the rows' pace.
        for (int tap = 0; tap < taps; ++tap)
            kernel[tap] = static_cast<float> (kernel[tap] / sum) * sampleScale;
    }
    return table;
}

/** Low-passes for readings that are faster than the track. */
struct FastTable
{
    double upToRate;
    Table<tapsOfFast> table;
};

struct Tables
{
    Table<tapsOfPlay> play = tableFor<tapsOfPlay> (makeWindow<tapsOfPlay>(), 1.0);
    const Table<tapsOfFast> fastWindow = makeWindow<tapsOfFast>();

    // Files of 88.2 and 96, and of 176.4 and 192 kHz, at 44.1 and 48, stay within one table each with the pitch 8 % off.
    std::array<FastTable, 4> fast { { { 1.8, tableFor<tapsOfFast> (fastWindow, 1.0 / 1.6) },
                                      { 2.6, tableFor<tapsOfFast> (fastWindow, 1.0 / 2.2) },
                                      { 3.6, tableFor<tapsOfFast> (fastWindow, 1.0 / 3.2) },
                                      { std::numeric_limits<double>::infinity(),
                                        tableFor<tapsOfFast> (fastWindow, 1.0 / 4.5) } } };
    static constexpr double playUpToRate = 1.2;
};

const Tables tables;

/** By reference, as how a vector is returned depends on the processor. */
[[gnu::always_inline]] inline void load (Lanes& into, const float* from) noexcept
{
    std::memcpy (&into, from, sizeof into);
}

[[gnu::always_inline]] inline void load (Lanes& into, const int16_t* from) noexcept
{
    Shorts whole;
    std::memcpy (&whole, from, sizeof whole);
    into = __builtin_convertvector(whole, Lanes);
}

[[gnu::always_inline]] inline float sumOf (const Lanes& sum) noexcept
{
    const auto half =
        __builtin_shufflevector (sum, sum, 0, 1, 2, 3) + __builtin_shufflevector (sum, sum, 4, 5, 6, 7);
    return (half[0] + half[2]) + (half[1] + half[3]);
}

struct Job
{
    const float* table;
    const int16_t *left, *right;
    int32_t frames;
    const double* places;
    float *leftOut, *rightOut;
    int count;
};

/** The track around a place near its ends, with silence beyond them. */
template <int taps>
void fillAround (const int16_t* samples, int32_t first, int32_t frames, int16_t* into) noexcept
{
    const auto from = std::clamp (-first, 0, taps), to = std::clamp (frames - first, from, taps);
    std::fill_n (into, taps, int16_t {});
    std::copy (samples + first + from, samples + first + to, into + from);
}

template <int taps>
[[gnu::always_inline]] inline void renderFrames (const Job& job) noexcept
{
    for (int i = 0; i < job.count; ++i)
    {
        const auto place = job.places[i];
        const auto frame = static_cast<int32_t> (place);
        if (frame < 1 || frame >= job.frames - 2)
        {
            job.leftOut[i] = job.rightOut[i] = 0.0f;
            continue;
        }
        const auto fineRow = (place - frame) * rows;
        if (taps == tapsOfPlay && fineRow == 0.0)
        {
            job.leftOut[i] = static_cast<float> (job.left[frame]) * sampleScale;
            job.rightOut[i] = static_cast<float> (job.right[frame]) * sampleScale;
            continue;
        }

        const auto first = frame - (taps / 2 - 1);
        const int16_t *left = job.left + first, *right = job.right + first;
        int16_t paddedLeft[taps], paddedRight[taps];
        if (first < 0 || first + taps > job.frames)
        {
            fillAround<taps> (job.left, first, job.frames, paddedLeft);
            fillAround<taps> (job.right, first, job.frames, paddedRight);
            left = paddedLeft;
            right = paddedRight;
        }

        const auto row = static_cast<int> (fineRow);
        const auto between = static_cast<float> (fineRow - row);
        const auto* below = job.table + row * taps;
        Lanes leftSum {}, rightSum {};
#pragma GCC unroll 6
        for (int tap = 0; tap < taps; tap += lanes)
        {
            Lanes from, to, some;
            load (from, below + tap);
            load (to, below + taps + tap);
            const auto coefficients = from + between * (to - from);
            load (some, left + tap);
            leftSum += coefficients * some;
            load (some, right + tap);
            rightSum += coefficients * some;
        }
        job.leftOut[i] = sumOf (leftSum);
        job.rightOut[i] = sumOf (rightSum);
    }
}

template <int taps>
void renderPlain (const Job& job) noexcept
{
    renderFrames<taps> (job);
}

#ifdef __x86_64__
template <int taps>
[[gnu::target ("avx2")]] void renderWide (const Job& job) noexcept
{
    renderFrames<taps> (job);
}
const bool hasWideLanes = __builtin_cpu_supports ("avx2") != 0;
#else
template <int taps>
constexpr auto renderWide = renderPlain<taps>;
constexpr bool hasWideLanes = false;
#endif

template <int taps>
void render (const Job& job) noexcept
{
    if (hasWideLanes)
        renderWide<taps> (job);
    else
        renderPlain<taps> (job);
}
}

void TrackSamples::readWhole (double place, bool isOnward, float* leftOut, float* rightOut,
                              int count) const noexcept
{
    const auto first = static_cast<int32_t> (place);
    const auto convert = [=] (const int16_t* samples, float* out)
    {
        samples += first;
        if (isOnward)
            for (int i = 0; i < count; ++i)
                out[i] = static_cast<float> (samples[i]) * sampleScale;
        else
            for (int i = 0; i < count; ++i)
                out[i] = static_cast<float> (samples[-i]) * sampleScale;
    };
    convert (left, leftOut);
    convert (right, rightOut);
}

void TrackSamples::read (const double* places, double rate, float* leftOut, float* rightOut,
                         int count) const noexcept
{
    Job job { tables.play.data(), left, right, frames, places, leftOut, rightOut, count };
    const auto size = std::abs (rate);
    if (size <= Tables::playUpToRate)
        return render<tapsOfPlay> (job);
    const auto found = std::find_if (tables.fast.begin(), tables.fast.end() - 1,
                                     [size] (const FastTable& each) { return size <= each.upToRate; });
    job.table = found->table.data();
    render<tapsOfFast> (job);
}
