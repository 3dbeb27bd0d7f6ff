#include "analysis/signal/FastResample.h"

#include "analysis/AnalysisError.h"
#include "analysis/signal/KaiserSinc.h"

#include <cstring>
#include <iterator>

/** The arguments of the loop over a call's output frames. */
struct CFastResample::Job
{
    const float* table;
    std::vector<float>* history;
    size_t channels;
    const ResamplePosition& position;
    double ratio;
    float* const* out;
    int frames;
};

namespace
{
constexpr double stopBandDb = 80.0;
constexpr int rows = 256; ///< of the table per input frame

/** Eight sums side by side: in a single float their order would be fixed, and no vector instruction used. A processor
    with four lanes takes two instructions for each, to the same bits; so does none that fuses them. */
using Lanes [[gnu::vector_size (32)]] = float;
constexpr int lanes = 8;

/** From any address. By reference, as how a vector is returned depends on the processor. */
[[gnu::always_inline]] inline void load (Lanes& into, const float* from) noexcept
{
    std::memcpy (&into, from, sizeof into);
}

template <int taps>
[[gnu::always_inline]] inline void renderFrames (const CFastResample::Job& job) noexcept
{
    for (int index = 0; index < job.frames; ++index)
    {
        const auto place = job.position.at (index, job.ratio);
        const auto frame = static_cast<int> (place);
        const auto fineRow = (place - frame) * rows;
        const auto row = static_cast<int> (fineRow);
        const auto between = static_cast<float> (fineRow - row);
        const auto* below = job.table + row * taps;
        const auto* above = below + taps;

        Lanes coefficients[taps / lanes];
#pragma GCC unroll 8
        for (int i = 0; i < taps / lanes; ++i)
        {
            Lanes from, to;
            load (from, below + i * lanes);
            load (to, above + i * lanes);
            coefficients[i] = from + between * (to - from);
        }
        for (size_t channel = 0; channel < job.channels; ++channel)
        {
            const auto* signal = job.history[channel].data() + frame;
            Lanes sum {};
#pragma GCC unroll 8
            for (int i = 0; i < taps / lanes; ++i)
            {
                Lanes some;
                load (some, signal + i * lanes);
                sum += coefficients[i] * some;
            }
            const auto half = __builtin_shufflevector (sum, sum, 0, 1, 2, 3)
                              + __builtin_shufflevector (sum, sum, 4, 5, 6, 7);
            job.out[channel][index] = (half[0] + half[2]) + (half[1] + half[3]);
        }
    }
}

template <int taps>
void renderPlain (const CFastResample::Job& job) noexcept
{
    renderFrames<taps> (job);
}

#ifdef __x86_64__
template <int taps>
[[gnu::target ("avx2")]] void renderWide (const CFastResample::Job& job) noexcept
{
    renderFrames<taps> (job);
}
#else
template <int taps>
constexpr auto renderWide = renderPlain<taps>;
#endif

bool hasWideLanes()
{
#ifdef __x86_64__
    return __builtin_cpu_supports ("avx2") != 0;
#else
    return false;
#endif
}

using Render = void (*) (const CFastResample::Job&) noexcept;

/** By order, from the least. */
constexpr Render plainRenders[] = { renderPlain<16>, renderPlain<24>, renderPlain<32>, renderPlain<40> };
constexpr Render wideRenders[] = { renderWide<16>, renderWide<24>, renderWide<32>, renderWide<40> };
static_assert (std::size (plainRenders) == CFastResample::greatestOrder - CFastResample::leastOrder + 1);
}

CFastResample::CFastResample (int channelCount, int order, int block)
    : taps (8 * (order + 1)),
      largestBlock (block),
      render ((hasWideLanes() ? wideRenders : plainRenders)[order - leastOrder]),
      table (static_cast<size_t> ((rows + 1) * taps)),
      history (static_cast<size_t> (channelCount),
               std::vector<float> (static_cast<size_t> (taps - 1 + block)))
{
    const auto shape = KaiserSinc::shape (stopBandDb);
    const auto half = taps / 2;
    for (int row = 0; row <= rows; ++row)
    {
        double sum = 0.0;
        std::vector<double> kernel;
        for (int tap = 0; tap < taps; ++tap)
        {
            const auto distance = static_cast<double> (row) / rows + half - 1 - tap;
            kernel.push_back (KaiserSinc::sinc (distance, 1.0) * KaiserSinc::window (distance / half, shape));
            sum += kernel.back();
        }
        // Each row passes a constant as it is: what the window leaves of ripple would sound at the rows' pace.
        auto* coefficients = table.data() + row * taps;
        for (const auto each : kernel)
            *coefficients++ = static_cast<float> (each / sum);
    }
}

int CFastResample::create (std::unique_ptr<CFastResample>& out, int channels, int order, int largestBlock)
{
    if (channels < 1)
        return AnalysisError::badChannelCount;
    if (order < leastOrder || order > greatestOrder || largestBlock < 1)
        return AnalysisError::badArgument;
    out.reset (new CFastResample (channels, order, largestBlock));
    return AnalysisError::none;
}

int CFastResample::process (const float* const* in, int frames, float* const* out, double ratio) noexcept
{
    if (frames < 0 || frames > largestBlock)
        return -1;
    ratio = ResamplePosition::limited (ratio);
    const auto kept = static_cast<size_t> (taps - 1), taken = static_cast<size_t> (frames);
    for (size_t channel = 0; channel < history.size(); ++channel)
        std::copy_n (in[channel], taken, history[channel].begin() + taps - 1);

    const auto produced = position.framesProduced (frames, ratio);
    if (ratio == 1.0 && position.isWhole())
        copy (out, produced);
    else
        render ({ table.data(), history.data(), history.size(), position, ratio, out, produced });
    for (auto& buffer : history)
        std::memmove (buffer.data(), buffer.data() + taken, kept * sizeof (float));
    position.advance (frames, produced, ratio);
    return produced;
}

void CFastResample::copy (float* const* out, int frames) const noexcept
{
    const auto first = position.nearest() + taps / 2 - 1;
    for (size_t channel = 0; channel < history.size(); ++channel)
        std::copy_n (history[channel].begin() + first, frames, out[channel]);
}

int CFastResample::framesProduced (int frames, double ratio) const noexcept
{
    return position.framesProduced (frames, ResamplePosition::limited (ratio));
}

int CFastResample::framesNeeded (int outFrames, double ratio) const noexcept
{
    return position.framesNeeded (outFrames, ResamplePosition::limited (ratio));
}

void CFastResample::reset() noexcept
{
    for (auto& buffer : history)
        std::fill (buffer.begin(), buffer.end(), 0.0f);
    position.reset();
}
