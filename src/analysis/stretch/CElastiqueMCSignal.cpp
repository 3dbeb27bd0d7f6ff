#include "analysis/stretch/CElastiqueMC.h"

#include <algorithm>
#include <cmath>

// The signal's way into the vocoder, and out of it.

namespace
{
// Middle and side of the stereo mode 0, and back.
constexpr float leftShare = 0.6f, rightShare = 0.4f;
constexpr float leftBack = 0.8333333333333334f, rightBack = 1.25f;

constexpr float leastWindowSum = 1.0e-3f;

using Lanes [[gnu::vector_size (16)]] = float;
using LanesAnywhere [[gnu::vector_size (16), gnu::aligned (4), gnu::may_alias]] = float;

float energyOf (const float* samples, int count) noexcept
{
    Lanes energy {};
    int i = 0;
    for (; i + 4 <= count; i += 4)
    {
        const Lanes some = *reinterpret_cast<const LanesAnywhere*> (samples + i);
        energy += some * some;
    }
    auto sum = (energy[0] + energy[1]) + (energy[2] + energy[3]);
    for (; i < count; ++i)
        sum += samples[i] * samples[i];
    return sum;
}

/** Of a count of samples that four divides: what changes counts, not what swings slowly. */
float energyOfDifferences (const float* samples, int count, float before) noexcept
{
    auto at = [samples] (int i) -> Lanes { return *reinterpret_cast<const LanesAnywhere*> (samples + i); };
    const auto first = at (0) - Lanes { before, samples[0], samples[1], samples[2] };
    auto energy = first * first;
    for (int i = 4; i < count; i += 4)
    {
        const auto difference = at (i) - at (i - 1);
        energy += difference * difference;
    }
    return (energy[0] + energy[1]) + (energy[2] + energy[3]);
}
}

void CElastiqueMC::take (Input& given, int frames) noexcept
{
    const auto oldest = timeline.nextIn (factors);
    const auto room = static_cast<int64_t> (input.capacity()) - (inputEnd - oldest);
    frames = static_cast<int> (std::min<int64_t> ({ frames, given.frames - given.taken, room }));
    if (frames <= 0)
        return;

    const auto* const* samples = given.samples;
    const auto from = given.taken;
    auto channel = [&] (int index) { return samples[index] + from; };
    auto fill = [&] (int work, auto&& sampleAt)
    {
        input.forPieces (work, inputEnd, frames,
                         [&] (float* to, int offset, int count)
                         {
                             for (int i = 0; i < count; ++i)
                                 to[i] = sampleAt (offset + i);
                         });
    };

    if (samples == nullptr)
    {
        input.clear (inputEnd, frames);
    }
    else if (channels == 2 && stereoMode == 0)
    {
        const auto *left = channel (0), *right = channel (1);
        fill (0, [=] (int i) { return leftShare * left[i] + rightShare * right[i]; });
        fill (1, [=] (int i) { return leftShare * left[i] - rightShare * right[i]; });
    }
    else
    {
        const auto first = workChannels - channels;
        for (int c = 0; c < channels; ++c)
            fill (first + c, [x = channel (c)] (int i) { return x[i]; });
        if (first > 0)
        {
            const auto weight = 1.0f / static_cast<float> (workChannels - 1);
            fill (0,
                  [&] (int i)
                  {
                      auto sum = 0.0f;
                      for (int c = 0; c < channels; ++c)
                          sum += samples[c][from + i];
                      return weight * sum;
                  });
        }
    }
    given.taken += frames;
    inputEnd += frames;
    if (samples != nullptr)
        signalEnd = inputEnd;
}

void CElastiqueMC::beginFrame (Input& given) noexcept
{
    const auto end = timeline.nextIn (factors) + frameLength;
    take (given, static_cast<int> (std::max<int64_t> (0, end - inputEnd)));
    detectUpTo (end);
    auto onset = detector.find();
    if (onset)
        onset = steepestAfter (detectedBegin + *onset * (frameLength / OnsetDetector::blocksPerFrame));
    timeline.add (factors, onset);
    stage = 0;
}

int64_t CElastiqueMC::steepestAfter (int64_t position) noexcept
{
    auto steepest = 0.0f, before = 0.0f;
    auto found = position;
    for (auto at = position - 1; at < position + frameLength / OnsetDetector::blocksPerFrame; ++at)
    {
        auto sample = 0.0f;
        input.forPieces (0, at, 1, [&] (const float* x, int, int) { sample = *x; });
        const auto step = std::abs (sample - before);
        if (at >= position && step > steepest)
        {
            steepest = step;
            found = at;
        }
        before = sample;
    }
    return found;
}

void CElastiqueMC::detectUpTo (int64_t end) noexcept
{
    const auto block = frameLength / OnsetDetector::blocksPerFrame;
    const auto weights = turners[static_cast<size_t> (stereoMode)].leaders();
    for (; detectedEnd + block <= end; detectedEnd += block)
    {
        auto energy = 0.0f;
        for (int c = 0; c < static_cast<int> (weights.size()); ++c)
        {
            auto before = 0.0f;
            input.forPieces (c, detectedEnd - 1, 1, [&] (const float* x, int, int) { before = *x; });
            input.forPieces (
                c, detectedEnd, block,
                [&] (const float* x, int, int count)
                { energy += weights[static_cast<size_t> (c)] * energyOfDifferences (x, count, before); });
        }
        detector.add (energy);
    }
}

void CElastiqueMC::fetch (int frames) noexcept
{
    if (fetchedEnd == 0)
    {
        // Drops the part of the first frames that lies before the signal's beginning.
        const auto first = timeline.frame (0).out;
        vocoded.clear (first, static_cast<int> (-first));
    }
    auto* const inverse = time.data();
    const auto gain = levelKeeper.gain();
    vocoded.forPieces (workChannels, fetchedEnd, frames,
                       [&] (const float* sum, int offset, int count)
                       {
                           for (int i = 0; i < count; ++i)
                               inverse[offset + i] = gain / std::max (leastWindowSum, sum[i]);
                       });
    for (int c = 0; c < channels; ++c)
    {
        auto& to = fetched[static_cast<size_t> (c)];
        std::copy (to.begin() + lastFetch, to.begin() + lastFetch + history, to.begin());
        vocoded.forPieces (workChannels - channels + c, fetchedEnd, frames,
                           [fresh = to.data() + history, inverse] (const float* x, int offset, int count)
                           {
                               for (int i = 0; i < count; ++i)
                                   fresh[offset + i] = x[i] * inverse[offset + i];
                           });
    }
    keepLevel (frames);
    if (channels == 2 && stereoMode == 0)
    {
        auto *const a = fetched[0].data() + history, *const b = fetched[1].data() + history;
        for (int i = 0; i < frames; ++i)
        {
            const auto sum = a[i] + b[i], difference = a[i] - b[i];
            a[i] = sum * leftBack;
            b[i] = difference * rightBack;
        }
    }
    vocoded.clear (fetchedEnd, frames);
    fetchedEnd += frames;
    lastFetch = frames;
}

void CElastiqueMC::keepLevel (int frames) noexcept
{
    const auto weights = turners[static_cast<size_t> (stereoMode)].leaders();
    if (workChannels != channels || frames <= 0)
        return; // there the leading sum does not come out
    const auto seconds = frames / static_cast<double> (sampleRate);
    if (factors.ratio == 1.0)
        return levelKeeper.rest (seconds);
    double made = 0.0;
    for (size_t c = 0; c < weights.size(); ++c)
        made += static_cast<double> (weights[c] * energyOf (fetched[c].data() + history, frames));
    const auto gain = static_cast<double> (levelKeeper.gain());
    const auto given = timeline.powerAt (static_cast<double> (fetchedEnd) + 0.5 * frames);
    levelKeeper.add (given * frames, made / (gain * gain), seconds);
}

void CElastiqueMC::produce (float* const* out, int offset, int frames, double pitch) noexcept
{
    const auto delay = resampler->latency();
    std::array<const float*, 48> from {};
    std::array<float*, 48> to {};
    auto point = [&] (int fetchedFrom)
    {
        for (size_t c = 0; c < fetched.size(); ++c)
        {
            from[c] = fetched[c].data() + fetchedFrom;
            to[c] = resampled[c].data() + ready;
        }
    };

    if (fetchedEnd == 0)
        fetch (delay);
    if (pitch != 1.0 && !resampling)
    {
        // The resampler's history becomes what was played without it, so that it goes on from there.
        for (size_t c = 0; c < fetched.size(); ++c)
            std::copy_n (fetched[c].begin() + lastFetch, history, resampled[c].begin());
        for (size_t c = 0; c < fetched.size(); ++c)
        {
            from[c] = resampled[c].data();
            to[c] = resampled[c].data() + history;
        }
        resampler->process (from.data(), history, to.data(), 1.0);
        readPosition = static_cast<double> (fetchedEnd - delay);
        resampling = true;
    }

    if (const auto missing = frames - ready; missing > 0)
    {
        const auto taken = resampler->framesNeeded (missing, pitch);
        fetch (taken);
        if (resampling)
        {
            point (history);
            const auto given = resampler->process (from.data(), taken, to.data(), pitch);
            ready += given;
            readyStep = pitch;
            readPosition += given * pitch;
        }
        else
        {
            point (history - delay);
            for (size_t c = 0; c < fetched.size(); ++c)
                std::copy_n (from[c], taken, to[c]);
            ready += taken;
            readPosition = static_cast<double> (fetchedEnd - delay);
        }
    }
    for (size_t c = 0; c < fetched.size(); ++c)
    {
        auto& buffer = resampled[c];
        std::copy_n (buffer.begin(), frames, out[c] + offset);
        std::copy (buffer.begin() + frames, buffer.begin() + ready, buffer.begin());
    }
    ready -= frames;
}
