#pragma once

#include "analysis/signal/RealFft.h"
#include "support/AudioThread.h"

#include <memory>
#include <vector>

/** Parts a stream into what lies below a crossover frequency and what lies above. The two add up to the input, delayed.

    A low-pass of linear phase, done by transform (overlap and save); the high band is the rest. The crossover is 6 dB
    down in both; 80 dB lie between the bands from 5.1 / size of the rate to either side of it on (at 44.1 kHz and a size of
    4096: 55 Hz). One channel; one object serves one thread; only its making allocates. */
class CFFTSplit
{
public:
    /** Any thread but the audio thread.
        @param size   of the transform, a power of two from 16
        @returns AnalysisError::none, badSampleRate, badArgument, or noMemory; `out` is left alone then */
    static int create (std::unique_ptr<CFFTSplit>& out, int size, double sampleRate, double crossoverHz);

    /** Holds from the next whole block of size / 2 frames on, over which the bands fade from the old one to it.
        @returns AnalysisError::badArgument, with nothing changed, unless it lies from 0 to half the rate */
    PX_AUDIO_THREAD int setCrossover (double hz) noexcept;

    /** Any number of frames; `low` and `high` may be `in`, but not each other. */
    PX_AUDIO_THREAD void process (const float* in, int frames, float* low, float* high) noexcept;

    /** Forgets all signal. */
    PX_AUDIO_THREAD void reset() noexcept;

    /** In frames. */
    PX_AUDIO_THREAD int latency() const noexcept { return 3 * size / 4; }

private:
    CFFTSplit (int transformSize, double sampleRate);

    PX_AUDIO_THREAD void design() noexcept;
    PX_AUDIO_THREAD void splitBlock() noexcept;
    PX_AUDIO_THREAD void filter (std::vector<float>& filtered) noexcept;

    const int size;
    const double sampleRate;
    std::unique_ptr<CzplfFFT_If> transform;
    std::vector<float> window;                ///< half of the kernel's, from its middle
    std::vector<float> signal;                ///< the last `size` frames
    std::vector<float> delayed;               ///< what the block in `low` came from
    std::vector<float> bins, work, low, next; ///< next: with the crossover to come
    std::vector<float> gains;                 ///< of the bins, scaled for the inverse
    double crossover = 0.0;                   ///< in parts of half the rate
    bool isChanging = false;
    int filled = 0; ///< frames of the block to come
};
