#include "analysis/signal/Resample.h"

#include "analysis/AnalysisError.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr size_t reachBack = SincKernel::widest - 1;

/** Summed in four parts, so that they need not wait for each other. */
PX_AUDIO_THREAD float dot (std::span<const float> a, const float* b) noexcept
{
    float sums[4] = {};
    size_t i = 0;
    for (; i + 4 <= a.size(); i += 4)
        for (size_t lane = 0; lane < 4; ++lane)
            sums[lane] += a[i + lane] * b[i + lane];
    for (; i < a.size(); ++i)
        sums[0] += a[i] * b[i];
    return (sums[0] + sums[2]) + (sums[1] + sums[3]);
}
}

CResampleBase::CResampleBase (int channels, int block)
    : largestBlock (block),
      history (static_cast<size_t> (channels), std::vector<float> (reachBack + static_cast<size_t> (block)))
{
}

int CResampleBase::check (int channels, int block) noexcept
{
    if (channels < 1)
        return AnalysisError::badChannelCount;
    return block < 1 ? AnalysisError::badArgument : AnalysisError::none;
}

template <class Sample, class Write>
int CResampleBase::run (const Sample* const* in, int frames, double ratio, Write write) noexcept
{
    if (frames < 0 || frames > largestBlock)
        return -1;
    ratio = ResamplePosition::limited (ratio);
    kernel.setRatio (ratio);
    for (size_t channel = 0; channel < history.size(); ++channel)
        std::transform (in[channel], in[channel] + frames, history[channel].begin() + reachBack,
                        [] (Sample sample) { return static_cast<float> (sample); });

    const auto produced = position.framesProduced (frames, ratio);
    for (int i = 0; i < produced; ++i)
    {
        const auto place = position.at (i, ratio);
        const auto frame = static_cast<int> (place);
        const auto coefficients = kernel.at (place - frame);
        const auto first = frame + SincKernel::widestHalf - kernel.half();
        for (size_t channel = 0; channel < history.size(); ++channel)
            write (channel, i, dot (coefficients, history[channel].data() + first));
    }
    for (auto& buffer : history)
        std::copy_n (buffer.begin() + frames, reachBack, buffer.begin());
    position.advance (frames, produced, ratio);
    return produced;
}

int CResampleBase::framesProduced (int frames, double ratio) const noexcept
{
    return position.framesProduced (frames, ResamplePosition::limited (ratio));
}

int CResampleBase::framesNeeded (int outFrames, double ratio) const noexcept
{
    return position.framesNeeded (outFrames, ResamplePosition::limited (ratio));
}

void CResampleBase::reset() noexcept
{
    for (auto& buffer : history)
        std::fill (buffer.begin(), buffer.end(), 0.0f);
    position.reset();
}

int CResampleFloat::create (std::unique_ptr<CResampleFloat>& out, int channels, int block)
{
    const auto error = check (channels, block);
    if (error == AnalysisError::none)
        out.reset (new CResampleFloat (channels, block));
    return error;
}

int CResampleFloat::process (const float* const* in, float* const* out, int frames, double ratio) noexcept
{
    return run (in, frames, ratio,
                [out] (size_t channel, int index, float value) { out[channel][index] = value; });
}

int CResampleInt::create (std::unique_ptr<CResampleInt>& out, int channels, int block)
{
    const auto error = check (channels, block);
    if (error == AnalysisError::none)
        out.reset (new CResampleInt (channels, block));
    return error;
}

int CResampleInt::process (const int16_t* const* in, int16_t* const* out, int frames, double ratio) noexcept
{
    return run (in, frames, ratio,
                [out] (size_t channel, int index, float value) {
                    out[channel][index] =
                        static_cast<int16_t> (std::lrint (std::clamp (value, -32768.0f, 32767.0f)));
                });
}
