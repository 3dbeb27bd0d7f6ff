#pragma once

#include "analysis/signal/ResamplePosition.h"
#include "support/AudioThread.h"

#include <memory>
#include <vector>

/** The stretcher's resampler: a windowed sinc of fixed width, its coefficients taken from a fine table between two rows.

    Order n reaches over 8 (n + 1) input frames. Measured for order 3 (32 frames), as parts of the input's rate: flat
    within 0.01 dB up to 0.42 (18.5 kHz of 44.1), and the images of a sine below that at least 80 dB under it; at 0.45 the
    level is down by 0.4 dB and the image by 27. The low-pass does not move with the ratio: at a ratio r above 1 the input must hold
    nothing above 0.5 / r of its rate, or it folds. At a ratio of 1 the output is the input, delayed, bit for bit.

    One object serves one thread; only construction allocates. */
class CFastResample
{
public:
    static constexpr int leastOrder = 1, greatestOrder = 4;
    struct Job;

    /** Any thread but the audio thread.
        @param order          1 to 4
        @param largestBlock   the most input frames of one call
        @returns AnalysisError::none, badChannelCount below one channel, or badArgument; `out` is left alone then */
    static int create (std::unique_ptr<CFastResample>& out, int channels, int order, int largestBlock);

    /** Takes all of `in` and gives the output frames that fall within it.
        @param ratio   input frames per output frame, 1/16 to 16 (beyond, the limit); above 1 the pitch rises. It holds
                       from the next output frame on and may be another at each call: the signal goes on without a step.
        @param out     an array per channel, with room for framesProduced (frames, ratio); none of them in `in`
        @returns the frames given; -1 with nothing done for more than the largest block or a negative count */
    PX_AUDIO_THREAD int process (const float* const* in, int frames, float* const* out,
                                 double ratio) noexcept;

    /** The exact result that process() will have for these arguments. */
    PX_AUDIO_THREAD int framesProduced (int frames, double ratio) const noexcept;

    /** The least input frames for which process() will give at least `outFrames`. */
    PX_AUDIO_THREAD int framesNeeded (int outFrames, double ratio) const noexcept;

    /** Forgets all signal; the next output frame lies on the next input frame. */
    PX_AUDIO_THREAD void reset() noexcept;

    /** The delay of the signal in input frames. */
    PX_AUDIO_THREAD int latency() const noexcept { return taps / 2; }

private:
    CFastResample (int channels, int order, int largestBlock);

    /** Gives the frames of the call as they are: what the kernel makes of them at whole places. */
    PX_AUDIO_THREAD void copy (float* const* out, int frames) const noexcept;

    const int taps, largestBlock;
    void (*const render) (const Job&) noexcept; ///< for this number of taps on this processor
    std::vector<float> table;                   ///< rows of `taps` coefficients each
    std::vector<std::vector<float>> history;    ///< per channel: the last taps - 1 frames, then the call's
    ResamplePosition position;
};
