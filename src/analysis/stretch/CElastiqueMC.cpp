#include "analysis/stretch/CElastiqueMC.h"

#include "analysis/AnalysisError.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace
{
// Middle and side of the stereo mode 0, and back.
constexpr float leftShare = 0.6f, rightShare = 0.4f;
constexpr float leftBack = 0.8333333333333334f, rightBack = 1.25f;

/** The side's weight in power that makes the pair's sum the one of left and right. */
constexpr float sideWeight = (leftShare / rightShare) * (leftShare / rightShare);

constexpr float leaders[][2] = { { 1.0f, sideWeight }, { 1.0f, 1.0f } };

std::span<const float> leadersOf (int channels, int stereoMode)
{
    // Above two channels it is the sum that leads.
    return { leaders[stereoMode], channels == 2 ? 2u : 1u };
}

/** What the kinds of stages cost in relation to each other, measured: analysis, power, phases, synthesis, overlap. */
constexpr double stageCosts[] = { 8.0, 1.0, 4.0, 7.0, 3.0 };
constexpr double totalCost = 23.0;

constexpr int64_t nothingYet = std::numeric_limits<int64_t>::min() / 2;
constexpr float leastWindowSum = 1.0e-3f;

std::vector<std::vector<float>> buffers (int count, int frames)
{
    return std::vector<std::vector<float>> (static_cast<size_t> (count),
                                            std::vector<float> (static_cast<size_t> (frames)));
}

/** From the pair's difference the sound's: what changes counts, not what swings slowly. */
float energyOfDifferences (const float* samples, int count, float before) noexcept
{
    auto energy = 0.0f;
    for (int i = 0; i < count; ++i)
    {
        const auto difference = samples[i] - before;
        before = samples[i];
        energy += difference * difference;
    }
    return energy;
}
}

CElastiqueMC::CElastiqueMC (int blockSize, int channelCount, float rate)
    : channels (channelCount),
      workChannels (channelCount > 2 ? channelCount + 1 : channelCount),
      sampleRate (rate),
      frameLength (stretchFrameLength (rate)),
      outputBlock (blockSize),
      factors (*StretchFactors::of (1.0f, 1.0f, frameLength)),
      analysisWindow (static_cast<size_t> (frameLength)),
      synthesisWindow (static_cast<size_t> (frameLength)),
      product (static_cast<size_t> (frameLength)),
      time (static_cast<size_t> (frameLength)),
      frequency (static_cast<size_t> (frameLength)),
      synthesised (buffers (workChannels, frameLength)),
      spectraRing { StretchSpectra (workChannels, frameLength), StretchSpectra (workChannels, frameLength),
                    StretchSpectra (workChannels, frameLength) },
      turners { PhaseTurner (frameLength, leadersOf (channels, 0)),
                PhaseTurner (frameLength, leadersOf (channels, 1)) },
      input (workChannels, std::max (16 * frameLength, 65'536)),
      vocoded (workChannels + 1, 4 * frameLength),
      detector (frameLength / OnsetDetector::blocksPerFrame),
      timeline (frameLength),
      fetched (buffers (channels, history + 16 * piece + 64)),
      resampled (buffers (channels, piece + 64 + history))
{
    for (int n = 0; n < frameLength; ++n)
    {
        const auto i = static_cast<size_t> (n);
        const auto turn = std::cos (2.0 * std::numbers::pi * n / frameLength);
        const auto hamming = 0.53836 - 0.46164 * turn, hann = 0.5 - 0.5 * turn;
        analysisWindow[i] = static_cast<float> (hamming);
        synthesisWindow[i] = static_cast<float> (hann / frameLength); // the transform back does not scale
        product[i] = static_cast<float> (hamming * hann);
    }
}

int CElastiqueMC::create (std::unique_ptr<CElastiqueMC>& out, int blockSize, int channels, float sampleRate)
{
    std::unique_ptr<CElastiqueMC> made (new CElastiqueMC (blockSize, channels, sampleRate));
    if (const auto error = createFFT (made->transform, made->frameLength))
        return error;
    if (const auto error = CFastResample::create (made->resampler, channels, resampleOrder, 16 * piece + 64))
        return error;
    made->reset();
    out = std::move (made);
    return AnalysisError::none;
}

void CElastiqueMC::reset() noexcept
{
    // Only what has been written since the last reset: the whole rings would take longer than a block may.
    if (!timeline.isEmpty())
    {
        const auto from = fetchedEnd == 0 ? timeline.frame (0).out : fetchedEnd;
        const auto to = timeline.frame (timeline.newestFrame()).out + frameLength;
        vocoded.clear (from, static_cast<int> (to - from));
    }
    input.clear (-frameLength, frameLength);
    for (auto& buffer : fetched)
        std::fill (buffer.begin(), buffer.end(), 0.0f);
    stereoMode = nextStereoMode;
    for (auto& turner : turners)
        turner.reset();
    timeline.reset();
    detector.reset();
    resampler->reset();
    factors = *StretchFactors::of (1.0f, 1.0f, frameLength);
    inputEnd = signalEnd = detectedEnd = 0;
    stage = stages();
    fetchedEnd = 0;
    lastFetch = 0;
    ready = 0;
    readyStep = 1.0;
    readPosition = 0.0;
    resampling = false;
}

int CElastiqueMC::setOutputBlockSize (int frames) noexcept
{
    outputBlock = std::clamp (frames, 1, 1024);
    return getFramesNeeded();
}

int CElastiqueMC::setStretchPitch (float* stretch, float pitch, int) noexcept
{
    const auto wanted = StretchFactors::of (*stretch, pitch, frameLength);
    if (!wanted)
        return AnalysisError::badArgument;
    factors = *wanted;
    *stretch = static_cast<float> (factors.roundedRatio() / factors.pitch);
    return AnalysisError::none;
}

int CElastiqueMC::setStretchAndPitch (float stretch, float* pitch, int) noexcept
{
    const auto wanted = StretchFactors::of (stretch, *pitch, frameLength);
    if (!wanted)
        return AnalysisError::badArgument;
    factors = *wanted;
    *pitch = static_cast<float> (factors.roundedRatio() / factors.stretch);
    return AnalysisError::none;
}

int CElastiqueMC::setStereoMode (int mode) noexcept
{
    if (channels != 2)
        return AnalysisError::wrongState;
    if (mode != 0 && mode != 1)
        return AnalysisError::badArgument;
    nextStereoMode = mode;
    if (timeline.isEmpty())
        stereoMode = mode;
    return AnalysisError::none;
}

//==============================================================================
// What a block takes

int64_t CElastiqueMC::vocoderEnd() const noexcept
{
    const auto newest = timeline.newestFrame();
    // Frame n is laid down while frame n + 1 is analysed; all before its successor's place is then complete.
    const auto complete = stage == stages() ? newest : newest - 1;
    return complete < 0 ? nothingYet : timeline.frame (complete).out;
}

double CElastiqueMC::readingPitch (const StretchFactors& wanted) const noexcept
{
    if (timeline.isEmpty())
        return wanted.pitch;
    // Sound that was stretched for other factors is still played with those, so that neither the tempo nor the key
    // strays while it lasts.
    const auto& maker = timeline.makerOf (readPosition);
    return std::abs (maker.ratio - wanted.ratio) < 1.0e-6 * wanted.ratio ? wanted.pitch : maker.pitch;
}

int64_t CElastiqueMC::vocoderEndFor (int frames, double pitch) const noexcept
{
    const auto missing = frames - ready;
    if (missing <= 0)
        return fetchedEnd;
    const auto delay = fetchedEnd == 0 ? resampler->latency() : 0;
    return fetchedEnd + delay + resampler->framesNeeded (missing, pitch);
}

int CElastiqueMC::framesNeeded (const StretchFactors& wanted) const noexcept
{
    const auto end = vocoderEndFor (outputBlock, readingPitch (wanted));
    auto complete = vocoderEnd();
    auto done = stage == stages();
    auto in = timeline.nextIn (wanted) - wanted.hopIn;
    auto out = timeline.isEmpty() ? nothingYet : timeline.frame (timeline.newestFrame()).out;

    // The steps of process(), with the shortest hops that may come.
    for (;;)
    {
        if (done)
        {
            complete = out;
            in += wanted.hopIn;
            out = out == nothingYet ? in : out + timeline.leastHop (wanted, in);
        }
        if (complete >= end)
            break;
        done = true;
    }
    return static_cast<int> (std::max<int64_t> (0, in + frameLength - inputEnd));
}

int CElastiqueMC::getFramesNeeded() const noexcept
{
    return framesNeeded (factors);
}

int CElastiqueMC::getFramesNeededFor (float stretch, float pitch) const noexcept
{
    const auto wanted = StretchFactors::of (stretch, pitch, frameLength);
    return wanted ? framesNeeded (*wanted) : 0;
}

int CElastiqueMC::getPreFramesNeeded() const noexcept
{
    // As framesNeeded() of an empty stretcher: frames begin where the first of them ends with its hop.
    const auto end = resampler->latency() + static_cast<int> (outputBlock * factors.pitch) + 1;
    auto in = static_cast<int64_t> (factors.hopIn - frameLength), out = in, complete = nothingYet;
    while (complete < end)
    {
        in += factors.hopIn;
        complete = out;
        out += timeline.leastHop (factors, in);
    }
    return static_cast<int> (in + frameLength);
}

//==============================================================================
// A block

int CElastiqueMC::process (const float* const* in, int frames, float* const* out) noexcept
{
    Input given { in, std::max (0, frames), 0 };
    const auto isEnough = given.frames >= getFramesNeeded();
    if (isEnough)
    {
        const auto pitch = readingPitch (factors);
        const auto end = vocoderEndFor (outputBlock, pitch);
        const auto taken = static_cast<double> (end - fetchedEnd);
        for (;;)
        {
            if (stage == stages())
                beginFrame (given);
            if (vocoderEnd() >= end)
                break;
            runStages (stages());
        }

        // The newest frame's work is done when the sound that was complete before it has been read, in even parts.
        const auto newest = timeline.newestFrame();
        const auto from = timeline.frame (std::max<int64_t> (0, newest - 2)).out;
        const auto span = static_cast<double> (vocoderEnd() - from) - taken;
        runStages (stagesFor (span > 0.0 ? static_cast<double> (end - from) / span : 1.0));

        for (int done = 0; done < outputBlock; done += piece)
            produce (out, done, std::min (piece, outputBlock - done), pitch);
    }
    take (given, given.frames - given.taken);
    return isEnough ? 0 : -1;
}

int CElastiqueMC::flush (float* const* out) noexcept
{
    const auto left = static_cast<double> (signalEnd) - getInputPositionOfOutput();
    if (left <= 0.0)
        return -1;
    process (nullptr, getFramesNeeded(), out);
    return static_cast<int> (std::min<double> (outputBlock, std::ceil (left * factors.stretch)));
}

double CElastiqueMC::getInputPositionOfOutput() const noexcept
{
    return timeline.inputAt (readPosition - ready * readyStep);
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
        onset = steepestAfter (*onset * (frameLength / OnsetDetector::blocksPerFrame));
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
    const auto weights = leadersOf (channels, stereoMode);
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

//==============================================================================
// The stages of a frame: the newest one is analysed, the one before it turned and laid down

int CElastiqueMC::stagesFor (double share) const noexcept
{
    auto kind = 0;
    for (auto wanted = share * totalCost; kind < 5 && wanted > 0.0; ++kind)
    {
        if (wanted < stageCosts[kind])
            return kind * workChannels
                   + static_cast<int> (std::ceil (wanted / stageCosts[kind] * workChannels));
        wanted -= stageCosts[kind];
    }
    return kind * workChannels;
}

void CElastiqueMC::runStages (int upTo) noexcept
{
    for (; stage < upTo; ++stage)
    {
        const auto channel = stage % workChannels;
        const auto isLast = channel == workChannels - 1;
        switch (stage / workChannels)
        {
        case 0:
            analyse (channel);
            break;
        case 1:
            turners[static_cast<size_t> (stereoMode)].addPower (spectra (timeline.newestFrame()), channel);
            break;
        case 2:
            if (channel == 0)
                findPeaks();
            if (isLast)
                turnPhases();
            break;
        case 3:
            synthesise (channel);
            break;
        default:
            overlapAdd (channel);
            break;
        }
    }
}

void CElastiqueMC::analyse (int channel) noexcept
{
    const auto newest = timeline.newestFrame();
    input.forPieces (channel, timeline.frame (newest).in, frameLength,
                     [&] (const float* x, int offset, int count)
                     {
                         for (int i = 0; i < count; ++i)
                             time[static_cast<size_t> (offset + i)] =
                                 x[i] * analysisWindow[static_cast<size_t> (offset + i)];
                     });
    transform->forward (spectra (newest).bins[static_cast<size_t> (channel)].data(), time.data());
}

bool CElastiqueMC::isTurning (int64_t frame) const noexcept
{
    const auto &now = timeline.frame (frame), &before = timeline.frame (frame - 1);
    return frame > 0 && now.out - before.out != now.in - before.in;
}

void CElastiqueMC::findPeaks() noexcept
{
    if (const auto frame = timeline.newestFrame() - 1; isTurning (frame))
        turners[static_cast<size_t> (stereoMode)].findPeaks (spectra (frame));
}

void CElastiqueMC::turnPhases() noexcept
{
    const auto frame = timeline.newestFrame() - 1;
    if (frame < 1)
        return;
    auto& turner = turners[static_cast<size_t> (stereoMode)];
    const auto &now = timeline.frame (frame), &before = timeline.frame (frame - 1);
    if (isTurning (frame))
        turner.propagate (spectra (frame), spectra (frame - 1), static_cast<int> (now.in - before.in),
                          static_cast<int> (now.out - before.out));
    else if (now.ratio == 1.0)
        turner.relax();
    if (now.onset)
        turner.resetRisen (spectra (frame - 1), spectra (frame + 1));
}

void CElastiqueMC::synthesise (int channel) noexcept
{
    const auto frame = timeline.newestFrame() - 1;
    if (frame < 0 || channel < workChannels - channels)
        return;
    // What the resampler would fold over is not made.
    const auto half = 0.5 * sampleRate;
    const auto cutoff = std::min (half, half / timeline.frame (frame).pitch);
    const auto cutoffBin = static_cast<int> (std::ceil (cutoff / sampleRate * frameLength));
    const auto c = static_cast<size_t> (channel);
    turners[static_cast<size_t> (stereoMode)].turn (frequency.data(), spectra (frame).bins[c].data(),
                                                    std::clamp (cutoffBin, 0, frameLength / 2));
    transform->inverse (synthesised[c].data(), frequency.data());
}

void CElastiqueMC::overlapAdd (int channel) noexcept
{
    const auto frame = timeline.newestFrame() - 1;
    if (frame < 0 || channel < workChannels - channels)
        return;
    auto add = [&] (int to, const float* x, const float* window)
    {
        vocoded.forPieces (to, timeline.frame (frame).out, frameLength,
                           [&] (float* sum, int offset, int count)
                           {
                               for (int i = 0; i < count; ++i)
                                   sum[i] += x[offset + i] * window[offset + i];
                           });
    };
    add (channel, synthesised[static_cast<size_t> (channel)].data(), synthesisWindow.data());
    if (channel == workChannels - 1)
        vocoded.forPieces (workChannels, timeline.frame (frame).out, frameLength,
                           [&] (float* sum, int offset, int count)
                           {
                               for (int i = 0; i < count; ++i)
                                   sum[i] += product[static_cast<size_t> (offset + i)];
                           });
}

//==============================================================================
// From the vocoder's output to the caller's

void CElastiqueMC::fetch (int frames) noexcept
{
    if (fetchedEnd == 0)
    {
        // What the first frames laid down before the signal's beginning.
        const auto first = timeline.frame (0).out;
        vocoded.clear (first, static_cast<int> (-first));
    }
    auto* const inverse = time.data();
    vocoded.forPieces (workChannels, fetchedEnd, frames,
                       [&] (const float* sum, int offset, int count)
                       {
                           for (int i = 0; i < count; ++i)
                               inverse[offset + i] = 1.0f / std::max (leastWindowSum, sum[i]);
                       });
    for (int c = 0; c < channels; ++c)
    {
        auto& to = fetched[static_cast<size_t> (c)];
        std::copy (to.begin() + lastFetch, to.begin() + lastFetch + history, to.begin());
        vocoded.forPieces (workChannels - channels + c, fetchedEnd, frames,
                           [&] (const float* x, int offset, int count)
                           {
                               for (int i = 0; i < count; ++i)
                                   to[static_cast<size_t> (history + offset + i)] =
                                       x[i] * inverse[offset + i];
                           });
    }
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
