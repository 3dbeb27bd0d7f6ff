#include "analysis/beats/onset/OnsetTracking.h"

#include "analysis/AnalysisError.h"
#include "analysis/beats/onset/FastLog.h"
#include "analysis/beats/onset/FirFilter.h"
#include "support/OnePole.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr std::array<double, COnsetTrackingIntern::numBands + 1> edgesHz { 0, 200, 800, 2200, 4000, 15000 };
constexpr int ringExtra = 32768;

/** The sum of a multiple of four values: four sums at once, as each addition waits for the last one of its sum. */
float sumOf (const float* in, int count)
{
    const auto quarter = count / 4;
    auto a = 0.0f, b = 0.0f, c = 0.0f, d = 0.0f;
    for (int i = 0; i < quarter; ++i)
    {
        a += in[i];
        b += in[i + quarter];
        c += in[i + 2 * quarter];
        d += in[i + 3 * quarter];
    }
    return a + b + c + d;
}
}

int COnsetTrackingIntern::init (int sampleRate, int channels)
{
    if (sampleRate < lowestRate)
        return AnalysisError::badSampleRate;
    if (channels < 1)
        return AnalysisError::badChannelCount;
    rate = sampleRate;
    spanFrames = sampleRate * spanMs / 1000;
    length = sampleRate <= 48000 ? 2048 : 4096;
    const auto floats = static_cast<size_t> (length);
    ring.assign (floats + ringExtra, 0.0f);
    spectrum.assign (floats, 0.0f);
    levels.assign (floats / 2, 0.0f);
    levelsBefore.assign (floats / 2, 0.0f);
    std::vector<float> window (floats);
    for (size_t i = 0; i < floats; ++i)
        window[i] = static_cast<float> (
            0.5 - 0.5 * std::cos (2.0 * std::numbers::pi * static_cast<double> (i) / length));
    if (const auto error = CFFT::create (transform, length, window.data()); error != AnalysisError::none)
        return error;
    const auto binHz = static_cast<double> (sampleRate) / length;
    for (size_t b = 0; b < numBands; ++b)
        bands.emplace_back (edgesHz[b], edgesHz[b + 1], binHz, length / 2);
    return AnalysisError::none;
}

void COnsetTrackingIntern::process (std::span<const float> mono)
{
    while (!mono.empty())
    {
        const auto room = std::min (mono.size(), ring.size() - static_cast<size_t> (ringFilled));
        std::copy_n (mono.begin(), room, ring.begin() + ringFilled);
        ringFilled += static_cast<int> (room);
        mono = mono.subspan (room);
        int start = 0;
        for (; ringFilled - start >= length; start += hop)
            takeFrame (ring.data() + start);
        std::copy (ring.begin() + start, ring.begin() + ringFilled, ring.begin());
        ringFilled -= start;
    }
}

void COnsetTrackingIntern::takeFrame (const float* in)
{
    const auto mean = sumOf (in, length) / static_cast<float> (length);
    for (int i = 0; i < length; ++i)
        spectrum[static_cast<size_t> (i)] = in[i] - mean;
    transform->forward (spectrum.data());
    transform->magnitude (spectrum.data());

    std::swap (levels, levelsBefore);
    const auto used = bands.back().endBin();
    const auto* const magnitudes = spectrum.data();
    auto* const out = levels.data();
    for (int k = 0; k < used; ++k)
        out[k] = FastLog::decibels (magnitudes[k] + 0.01f);

    const auto isFirst = bandFlux[0].empty();
    for (size_t b = 0; b < numBands; ++b)
        bandFlux[b].push_back (isFirst ? 0.0f : bands[b].flux (levels, levelsBefore));
}

void COnsetTrackingIntern::flush()
{
    const std::vector<float> silence (static_cast<size_t> (length), 0.0f);
    process (silence);
    findOnsets();
}

void COnsetTrackingIntern::findOnsets()
{
    // The least rise of the sum over the bands above its recent mean, in decibels; the memory of that mean; how long on each
    // side an onset must tower over; and what it is smoothed over.
    constexpr auto leastRise = 0.5f;
    constexpr auto memorySeconds = 0.026, neighbourSeconds = 0.023, smoothSeconds = 0.0058;
    const auto memory = static_cast<float> (OnePole::coefficient (memorySeconds, frameRate()));
    const auto neighbours = framesIn (neighbourSeconds, frameRate());
    const auto size = numFrames();
    std::vector<float> sum (static_cast<size_t> (size), 0.0f);
    for (const auto& band : bandFlux)
        for (size_t i = 0; i < sum.size(); ++i)
            sum[i] += band[i];
    const auto smooth =
        zplOnsetTracking::CFIRFilter::smoother (2 * framesIn (smoothSeconds, frameRate()) + 1).process (sum);
    auto mean = 0.0f;
    auto last = -spanFrames;
    for (int i = 0; i < size; ++i)
    {
        const auto here = smooth[static_cast<size_t> (i)];
        const auto left = smooth.begin() + std::max (0, i - neighbours);
        const auto right = smooth.begin() + std::min (size, i + neighbours + 1);
        const auto position = i * hop + length * 5 / 8;
        if (here > mean + leastRise && here >= *std::max_element (left, right)
            && position - last >= spanFrames)
        {
            onsets.add ({ position, 0, 0.0f, here });
            last = position;
        }
        mean = memory * mean + (1.0f - memory) * here;
    }
}

int COnsetTracking::init (int sampleRate, int channels)
{
    if (const auto error = stage.init (sampleRate, channels); error != AnalysisError::none)
        return error;
    curve.prepare (sampleRate <= 48000 ? 64 : 128);
    return AnalysisError::none;
}

void COnsetTracking::process (std::span<const float> mono)
{
    stage.process (mono);
    curve.process (mono);
}
