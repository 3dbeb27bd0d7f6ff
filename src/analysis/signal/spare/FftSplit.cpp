#include "analysis/signal/spare/FftSplit.h"

#include "analysis/AnalysisError.h"
#include "analysis/signal/KaiserSinc.h"
#include "support/CrossFade.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <new>

namespace
{
constexpr double stopBandDb = 80.0;
}

CFFTSplit::CFFTSplit (int transformSize, double rate) : size (transformSize), sampleRate (rate)
{
    const auto frames = static_cast<size_t> (size);
    for (auto* buffer : { &signal, &delayed, &bins, &work, &low, &next, &gains })
        buffer->resize (frames);
    const auto shape = KaiserSinc::shape (stopBandDb);
    for (int i = 0; i <= size / 4; ++i)
        window.push_back (static_cast<float> (KaiserSinc::window (4.0 * i / size, shape)));
}

int CFFTSplit::create (std::unique_ptr<CFFTSplit>& out, int size, double rate, double crossoverHz)
try
{
    if (!(rate > 0.0) || std::isinf (rate))
        return AnalysisError::badSampleRate;
    std::unique_ptr<CzplfFFT_If> transform;
    if (const auto error = size < 16 ? AnalysisError::badArgument : createFFT (transform, size);
        error != AnalysisError::none)
        return error;
    std::unique_ptr<CFFTSplit> made (new CFFTSplit (size, rate));
    made->transform = std::move (transform);
    if (const auto error = made->setCrossover (crossoverHz); error != AnalysisError::none)
        return error;
    made->reset();
    out = std::move (made);
    return AnalysisError::none;
}
catch (const std::bad_alloc&)
{
    return AnalysisError::noMemory;
}

int CFFTSplit::setCrossover (double hz) noexcept
{
    const auto part = hz / (0.5 * sampleRate);
    if (!(part >= 0.0 && part <= 1.0))
        return AnalysisError::badArgument;
    isChanging = isChanging || part != crossover;
    crossover = part;
    return AnalysisError::none;
}

void CFFTSplit::design() noexcept
{
    // Around frame 0, so that the response is real: a gain for each bin.
    std::fill (work.begin(), work.end(), 0.0f);
    for (int i = 0; i <= size / 4; ++i)
    {
        const auto tap =
            static_cast<float> (KaiserSinc::sinc (i, crossover)) * window[static_cast<size_t> (i)];
        work[static_cast<size_t> (i)] = tap;
        work[static_cast<size_t> ((size - i) % size)] = tap;
    }
    transform->forward (gains.data(), work.data());
    for (int k = 0; k <= size / 2; ++k)
        gains[static_cast<size_t> ((size - k) % size)] = gains[static_cast<size_t> (k)] /=
            static_cast<float> (size);
}

void CFFTSplit::filter (std::vector<float>& filtered) noexcept
{
    std::transform (bins.begin(), bins.end(), gains.begin(), work.begin(), std::multiplies<>());
    transform->inverse (filtered.data(), work.data());
}

void CFFTSplit::splitBlock() noexcept
{
    transform->forward (bins.data(), signal.data());
    filter (low);
    if (!isChanging)
        return;
    design();
    isChanging = false;
    filter (next);
    // Only the middle half is sound and used: there the fade runs.
    auto* used = low.data() + size / 4;
    const auto* to = next.data() + size / 4;
    const auto half = size / 2;
    for (int i = 0; i < half; ++i)
        used[i] = CrossFade::mixed (used[i], to[i], static_cast<float> (i) / static_cast<float> (half));
}

void CFFTSplit::process (const float* in, int frames, float* lowOut, float* highOut) noexcept
{
    const auto half = size / 2;
    for (int done = 0; done < frames;)
    {
        const auto count = std::min (frames - done, half - filled);
        const auto* below = low.data() + size / 4 + filled;
        const auto* whole = delayed.data() + filled;
        auto* taken = signal.data() + half + filled;
        for (int i = 0; i < count; ++i)
        {
            // Read first: an output may be the input.
            taken[i] = in[done + i];
            lowOut[done + i] = below[i];
            highOut[done + i] = whole[i] - below[i];
        }
        filled += count;
        done += count;
        if (filled < half)
            continue;
        splitBlock();
        std::copy_n (signal.begin() + size / 4, half, delayed.begin());
        std::copy_n (signal.begin() + half, half, signal.begin());
        filled = 0;
    }
}

void CFFTSplit::reset() noexcept
{
    for (auto* buffer : { &signal, &low, &delayed })
        std::fill (buffer->begin(), buffer->end(), 0.0f);
    filled = 0;
    design();
    isChanging = false;
}
