#include "analysis/stretch/CElastiqueMC.h"

#include "analysis/AnalysisError.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace
{
constexpr float leftShare = 0.6f, rightShare = 0.4f; // of the middle and the side

/** The side's weight in power that makes the pair's sum the one of left and right. */
constexpr float sideWeight = (leftShare / rightShare) * (leftShare / rightShare);

constexpr float leaders[][2] = { { 1.0f, sideWeight }, { 1.0f, 1.0f } };

std::span<const float> leadersOf (int channels, int stereoMode)
{
    // Above two channels it is the sum that leads.
    return { leaders[stereoMode], channels == 2 ? 2u : 1u };
}

/** A step of the tempo up to this much is left to the frames to come. */
constexpr double leastAudibleStep = 0.001;

/** Frames off a whole one that count as none, and the change of the key that leads back to it: 0.9 cents. */
constexpr double wholeFrame = 1.0e-9, leadBack = 0.0005;

/** A step of the speed at which the output is read that is heard as a click where it is not spread over a block, and the
    frames in which it then stays the same. */
constexpr double leastGlide = 0.001;
constexpr double widestGlide = 2.0; // an octave at once is a new sound; input for a glide to it would pile up
constexpr int glidePiece = 8;

/** The speed at which a block of the output is read. */
struct Glide
{
    double from, to;

    bool isMoving() const noexcept { return from != to; }
    double greatest() const noexcept { return std::max (from, to); }

    /** @param part   of the block, 0 to 1 */
    double at (double part) const noexcept { return part < 1.0 ? from + (to - from) * part : to; }
};

constexpr int64_t nothingYet = std::numeric_limits<int64_t>::min() / 2;

std::vector<std::vector<float>> buffers (int count, int frames)
{
    return std::vector<std::vector<float>> (static_cast<size_t> (count),
                                            std::vector<float> (static_cast<size_t> (frames)));
}

}

CElastiqueMC::CElastiqueMC (int blockSize, int channelCount, float rate)
    : channels (channelCount),
      workChannels (channelCount > 2 ? channelCount + 1 : channelCount),
      sampleRate (rate),
      frameLength (stretchFrameLength (rate)),
      outputBlock (blockSize),
      factors (StretchFactors::unity (frameLength)),
      analysisWindow (static_cast<size_t> (frameLength)),
      synthesisWindow (static_cast<size_t> (frameLength)),
      product (static_cast<size_t> (frameLength)),
      time (static_cast<size_t> (frameLength)),
      frequency (static_cast<size_t> (frameLength)),
      past (static_cast<size_t> (getLeadFrames())),
      synthesised (buffers (workChannels, frameLength)),
      spectraRing { StretchSpectra (workChannels, frameLength), StretchSpectra (workChannels, frameLength),
                    StretchSpectra (workChannels, frameLength), StretchSpectra (workChannels, frameLength) },
      turners { PhaseTurner (frameLength, leadersOf (channels, 0)),
                PhaseTurner (frameLength, leadersOf (channels, 1)) },
      keptTurners { turners },
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
        windowEnergy += hamming * hamming;
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
    if (hasKeptTurns)
        keepPast();
    else
        input.clear (-frameLength, frameLength);
    for (auto& buffer : fetched)
        std::fill (buffer.begin(), buffer.end(), 0.0f);
    stereoMode = nextStereoMode;
    for (auto& turner : turners)
        turner.reset();
    const auto goesOn = std::exchange (hasKeptTurns, false);
    if (goesOn)
        turners[static_cast<size_t> (stereoMode)].takeTurns (keptTurners[static_cast<size_t> (stereoMode)]);
    else
        levelKeeper.reset();
    timeline.reset();
    detector.reset();
    resampler->reset();
    factors = StretchFactors::unity (frameLength);
    inputEnd = signalEnd = detectedBegin = detectedEnd = 0;
    stage = stages();
    fetchedEnd = 0;
    lastFetch = 0;
    ready = 0;
    readyStep = 1.0;
    readPosition = 0.0;
    resampling = false;
    if (goesOn)
    {
        detectedBegin = detectedEnd = -getLeadFrames();
        beginInside (keptMoment);
    }
}

void CElastiqueMC::beginInside (const StretchTimeline::Moment& from) noexcept
{
    // The lead's own beginning is no onset.
    detectUpTo (timeline.nextIn (factors));
    detector.skip();
    timeline.startInside (from);
}

void CElastiqueMC::startInside (const float* const* lead) noexcept
{
    Input given { lead, getLeadFrames(), 0 };
    inputEnd = detectedBegin = detectedEnd = -getLeadFrames();
    take (given, given.frames);
    beginInside ({});
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
// The demand of a block

int64_t CElastiqueMC::vocoderEnd() const noexcept
{
    const auto newest = timeline.newestFrame();
    // Frame n is laid down while frame n + 1 is analysed; all before its successor's place is then complete.
    const auto complete = stage == stages() ? newest : newest - 1;
    return complete < 0 ? nothingYet : timeline.frame (complete).out;
}

double CElastiqueMC::pitchInForce (const StretchFactors& wanted) const noexcept
{
    if (timeline.isEmpty())
        return wanted.pitch;
    const auto& maker = timeline.makerOf (readPosition);
    if (std::abs (maker.ratio - wanted.ratio) < 1.0e-6 * wanted.ratio)
        return wanted.pitch;
    // Sound that was stretched for another tempo is played at the new one at once: its key strays while it lasts, the
    // beat never does. Smaller steps wait for the frames to come, as do those of the key.
    const auto pitch = maker.ratio / wanted.stretch;
    const auto isAudible = std::abs (pitch / maker.pitch - 1.0) > leastAudibleStep;
    return isAudible && pitch > 1.0 / StretchFactors::greatestPitch && pitch < StretchFactors::greatestPitch
               ? pitch
               : maker.pitch;
}

double CElastiqueMC::readingPitch (const StretchFactors& wanted) const noexcept
{
    const auto pitch = pitchInForce (wanted);
    if (pitch != 1.0 || !resampling)
        return pitch;
    // The resampler is led back to whole frames, where it gives its input as it is.
    const auto stray = std::round (readPosition) - readPosition;
    return std::abs (stray) < wholeFrame ? 1.0 : 1.0 + std::clamp (stray / outputBlock, -leadBack, leadBack);
}

double CElastiqueMC::glideFrom (const StretchFactors& wanted) const noexcept
{
    const auto pitch = readingPitch (wanted);
    const auto step = pitch / readyStep;
    const auto isHeard = std::abs (step - 1.0) > leastGlide;
    return fetchedEnd > 0 && isHeard && step > 1.0 / widestGlide && step < widestGlide ? readyStep : pitch;
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
    const auto end = vocoderEndFor (outputBlock, std::max (glideFrom (wanted), readingPitch (wanted)));
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
            out = out == nothingYet ? timeline.leastFirstOut (wanted, in)
                                    : out + timeline.leastHop (wanted, in);
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
    auto in = static_cast<int64_t> (factors.hopIn - frameLength), out = timeline.leastFirstOut (factors, in),
         complete = nothingYet;
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
        const Glide glide { glideFrom (factors), readingPitch (factors) };
        const auto end = vocoderEndFor (outputBlock, glide.greatest());
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

        const auto step = glide.isMoving() ? glidePiece : piece;
        for (int done = 0; done < outputBlock; done += step)
        {
            const auto frames = std::min (step, outputBlock - done);
            produce (out, done, frames, glide.at (static_cast<double> (done + frames) / outputBlock));
        }
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

void CElastiqueMC::keepTurns (int framesBack) noexcept
{
    const auto newest = timeline.newestFrame();
    hasKeptTurns = stereoMode == nextStereoMode && newest > 2;
    if (!hasKeptTurns)
        return;

    // The turns are those of the frame that was turned last, some hops ahead of what is heard.
    const auto& turned = timeline.frame (stage < 3 * workChannels ? newest - 2 : newest - 1);
    const auto &frame = timeline.frame (newest - 1), &before = timeline.frame (newest - 2);
    const auto place = readPosition - (ready + framesBack) * readyStep;
    const auto heard = timeline.inputAt (place);
    const auto behind = (place - heard) - static_cast<double> (turned.out - turned.in);
    keptPlace = static_cast<int64_t> (std::floor (heard));
    keptMoment = timeline.momentAt (place, keptPlace);
    auto& kept = keptTurners[static_cast<size_t> (stereoMode)];
    kept.takeTurns (turners[static_cast<size_t> (stereoMode)]);
    kept.findPeaks (spectra (newest - 1));
    kept.turnOn (spectra (newest - 1), spectra (newest - 2), static_cast<int> (frame.in - before.in), behind);
}

void CElastiqueMC::keepPast() noexcept
{
    for (int c = 0; c < workChannels; ++c)
    {
        auto* const lead = past.data();
        input.forPieces (c, keptPlace - getLeadFrames(), getLeadFrames(),
                         [lead] (const float* x, int offset, int count)
                         { std::copy_n (x, count, lead + offset); });
        input.forPieces (c, -getLeadFrames(), getLeadFrames(),
                         [lead] (float* x, int offset, int count) { std::copy_n (lead + offset, count, x); });
    }
}

double CElastiqueMC::getStretchOfOutput() const noexcept
{
    if (timeline.isEmpty())
        return factors.stretch;
    const auto& maker = timeline.makerOf (readPosition);
    return maker.ratio / maker.pitch;
}

double CElastiqueMC::getInputPositionOfOutput() const noexcept
{
    return timeline.inputAt (readPosition - ready * readyStep);
}

double CElastiqueMC::getIdealInputPositionOfOutput() const noexcept
{
    return timeline.idealInputAt (readPosition - ready * readyStep);
}
