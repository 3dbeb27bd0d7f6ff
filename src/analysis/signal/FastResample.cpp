#include "analysis/signal/FastResample.h"

#include "analysis/AnalysisError.h"
#include "analysis/signal/KaiserSinc.h"

#include <cstring>

namespace
{
constexpr double stopBandDb = 80.0;

/** Four lanes that add up apart: in one float the order of the sum would be fixed, and no vector instruction used. */
using Lanes [[gnu::vector_size (16)]] = float;
constexpr int lanes = 4;

PX_AUDIO_THREAD inline Lanes load (const float* from) noexcept
{
    Lanes loaded;
    std::memcpy (&loaded, from, sizeof loaded);
    return loaded;
}
}

CFastResample::CFastResample (int channelCount, int order, int block)
    : taps (8 * (order + 1)),
      largestBlock (block),
      table (static_cast<size_t> ((rows + 1) * taps)),
      history (static_cast<size_t> (channelCount), std::vector<float> (static_cast<size_t> (taps - 1 + block)))
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
        for (int tap = 0; tap < taps; ++tap)
            table[static_cast<size_t> (row * taps + tap)] =
                static_cast<float> (kernel[static_cast<size_t> (tap)] / sum);
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
    for (int i = 0; i < produced; ++i)
        interpolate (position.at (i, ratio), out, i);

    for (auto& buffer : history)
        std::memmove (buffer.data(), buffer.data() + taken, kept * sizeof (float));
    position.advance (frames, produced, ratio);
    return produced;
}

void CFastResample::interpolate (double place, float* const* out, int index) const noexcept
{
    const auto frame = static_cast<int> (place);
    const auto fineRow = (place - frame) * rows;
    const auto row = static_cast<int> (fineRow);
    const auto between = static_cast<float> (fineRow - row);
    const auto* below = table.data() + row * taps;
    const auto* above = below + taps;

    Lanes coefficients[8 * (greatestOrder + 1) / lanes];
    for (int i = 0; i < taps / lanes; ++i)
    {
        const auto from = load (below + i * lanes);
        coefficients[i] = from + between * (load (above + i * lanes) - from);
    }
    for (size_t channel = 0; channel < history.size(); ++channel)
    {
        const auto* signal = history[channel].data() + frame;
        Lanes even {}, odd {};
        for (int i = 0; i < taps / lanes; i += 2)
        {
            even += coefficients[i] * load (signal + i * lanes);
            odd += coefficients[i + 1] * load (signal + (i + 1) * lanes);
        }
        const auto sum = even + odd;
        out[channel][index] = (sum[0] + sum[2]) + (sum[1] + sum[3]);
    }
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
