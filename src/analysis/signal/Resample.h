#pragma once

#include "analysis/signal/ResamplePosition.h"
#include "analysis/signal/SincKernel.h"
#include "support/AudioThread.h"

#include <cstdint>
#include <memory>
#include <vector>

/** The common part of the windowed-sinc resamplers: history, position, kernel.

    Measured, as parts of the input's rate, for a ratio of r input frames per output frame. Up to r = 1: flat within 0.01 dB
    to 0.45 (19.8 kHz of 44.1), images and all else 95 dB down. Above 1 the cut-off moves to 0.5 / r: flat to 0.5 / r
    less t, and what lies above 0.5 / r plus t is 95 dB down before it folds, where t is 0.05 / r up to r = 1.97, and
    0.026 beyond, as the kernel grows no wider. At r = 1 the output is the input, delayed, bit for bit.

    One object serves one thread; only construction allocates. Ratios are held to 1/16 to 16. */
class CResampleBase
{
public:
    /** The exact result that process() will have for these arguments. */
    PX_AUDIO_THREAD int framesProduced (int frames, double ratio) const noexcept;

    /** The least input frames for which process() will give at least `outFrames`. */
    PX_AUDIO_THREAD int framesNeeded (int outFrames, double ratio) const noexcept;

    /** Forgets all signal; the next output frame lies on the next input frame. */
    PX_AUDIO_THREAD void reset() noexcept;

    /** The delay of the signal in input frames, at any ratio. */
    PX_AUDIO_THREAD static constexpr int latency() noexcept { return SincKernel::widestHalf; }

protected:
    CResampleBase (int channels, int largestBlock);
    ~CResampleBase() = default;

    /** @returns 0, or the error that `create` gives for these sizes */
    static int check (int channels, int largestBlock) noexcept;

    template <class Sample, class Write>
    int run (const Sample* const* in, int frames, double ratio, Write write) noexcept;

private:
    const int largestBlock;
    std::vector<std::vector<float>>
        history; ///< per channel: the frames that a kernel reaches back, then the call's
    ResamplePosition position;
    SincKernel kernel;
};

/** In floats. */
class CResampleFloat : public CResampleBase
{
public:
    /** Any thread but the audio thread.
        @param largestBlock   the most input frames of one call
        @returns AnalysisError::none, badChannelCount below one channel, or badArgument; `out` is left alone then */
    static int create (std::unique_ptr<CResampleFloat>& out, int channels, int largestBlock);

    /** Takes all of `in` and gives the output frames that fall within it.
        @param out     an array per channel, with room for framesProduced (frames, ratio); none of them in `in`
        @param ratio   input frames per output frame; may be another at each call, the signal goes on without a step
        @returns the frames given; -1 with nothing done for more than the largest block or a negative count */
    PX_AUDIO_THREAD int process (const float* const* in, float* const* out, int frames,
                                 double ratio) noexcept;

private:
    using CResampleBase::CResampleBase;
};

/** In 16-bit samples; rounded to the nearest and limited, not dithered. */
class CResampleInt : public CResampleBase
{
public:
    /** As CResampleFloat::create. */
    static int create (std::unique_ptr<CResampleInt>& out, int channels, int largestBlock);

    /** As CResampleFloat::process. */
    PX_AUDIO_THREAD int process (const int16_t* const* in, int16_t* const* out, int frames,
                                 double ratio) noexcept;

private:
    using CResampleBase::CResampleBase;
};
