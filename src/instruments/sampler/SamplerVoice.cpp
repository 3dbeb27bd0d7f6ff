#include "instruments/sampler/SamplerVoice.h"

#include "support/FadeCurve.h"

#include <algorithm>
#include <cmath>

namespace
{
// The distance from the reference's beats: what nobody hears is taken out by a change of tempo, more by a greater one, and
// by a jump at the next beat; from far away a voice jumps at once.
constexpr double correctionSeconds = 0.5;
constexpr double quietCorrection = 0.0009, greatestCorrection = 0.005;
constexpr double correctFromSeconds = 0.00002, correctToSeconds = 0.000005;
constexpr double hurrySeconds = 0.0004, pullSeconds = 0.003, farSeconds = 0.025;
constexpr double tolerance = 1.0e-9;

/** A press that comes a little before a beat is not begun again on it. */
constexpr double attackSeconds = 0.1;

double smooth (double part) noexcept
{
    return FadeCurve::at (std::clamp (part, 0.0, 1.0));
}

double modulo (double value, double divisor) noexcept
{
    return value - divisor * std::floor (value / divisor);
}

/** Beats in which a sample counts its places: whole ones, unless it is shorter than one. */
double countedBeats (double beats) noexcept
{
    return beats >= 1.0 ? std::floor (beats) : beats;
}

double framesPerBeat (const SamplerVoice::Block& block) noexcept
{
    return block.sample.regionFrames() / countedBeats (block.beats);
}

/** Beats after which a voice is in phase again. Of one that plays to its end, and wherever the reference has no numbers, only
    the beat counts: a vocal begins with its first word, whatever number the master's beat has. */
double beatsOfCycle (const SamplerVoice::Block& block) noexcept
{
    const auto beats = countedBeats (block.beats);
    return block.clock.isNumbered && block.sample.loops ? beats : std::min (2.0, beats);
}

int fadeFramesAt (double rate, int most) noexcept
{
    return std::clamp (static_cast<int> (FadeCurve::seconds * rate), 1, most);
}

double wrapped (const SampleView& view, double frame) noexcept
{
    if (view.loops && frame >= view.end && view.regionFrames() > 0)
        return view.begin + std::fmod (frame - view.begin, view.regionFrames());
    return std::min (frame, static_cast<double> (view.frames));
}
}

void SamplerVoice::changeStretcher (const Block& block, Stretcher& next) noexcept
{
    if (next.unit == nullptr)
        return;
    // A voice that sounds through the old one, whose end fades out, goes on with the new one where it is heard.
    if (sounding && mode == Mode::stretched)
    {
        const auto frame = startPending ? startFrame : heard;
        const auto waits = waiting;
        leave (block);
        startFrom (frame, waits);
    }
    std::swap (stretcher, next);
}

void SamplerVoice::startFrom (double frame, bool waitsForBeat) noexcept
{
    startPending = true;
    startFrame = frame;
    waiting = waitsForBeat;
}

SamplerVoice::Mode SamplerVoice::modeFor (const Block& block) const noexcept
{
    if (!block.synced || !(block.bpm > 0.0))
        return Mode::straight;
    const auto ratio = block.clock.bpm / block.bpm;
    if (!(ratio >= slowestSync - tolerance && ratio <= fastestSync + tolerance))
        return Mode::straight;
    return block.stretched && stretcher.unit != nullptr ? Mode::stretched : Mode::varispeed;
}

bool SamplerVoice::isLocked (const Block& block) const noexcept
{
    return mode != Mode::straight && block.clock.isRunning && block.bend == 1.0 && block.beats > 0.0
           && block.sample.regionFrames() > 0;
}

double SamplerVoice::tempoRatio (const Block& block) const noexcept
{
    if (mode == Mode::straight)
        return 1.0;
    if (!isLocked (block))
        return block.clock.bpm / block.bpm;
    const auto ratio = block.clock.perFrame * framesPerBeat (block) * block.engineRate / block.sampleRate;
    return std::clamp (ratio, 0.9 * slowestSync, 1.1 * fastestSync);
}

double SamplerVoice::frameFor (const Block& block, double phase) const noexcept
{
    return block.sample.begin + modulo (phase, beatsOfCycle (block)) * framesPerBeat (block);
}

double SamplerVoice::heardNow (const Block&) const noexcept
{
    if (mode != Mode::stretched)
        return place.frame;
    const auto next = stretcher.unit->getIdealInputPositionOfOutput();
    const auto ahead = static_cast<double> (stretchBlock - madeNext) / stretchBlock;
    return origin + (next - ahead * (next - madeBegin)) * inputStep;
}

double SamplerVoice::distance (const Block& block, double offset) const noexcept
{
    const auto cycle = beatsOfCycle (block) * framesPerBeat (block);
    const auto frames = heardNow (block) - frameFor (block, block.clock.phaseAt (offset));
    return (frames - cycle * std::round (frames / cycle)) / block.sampleRate;
}

void SamplerVoice::begin (const Block& block, Mode next, double frame) noexcept
{
    // Between two frames each one read would be interpolated; half a frame is nothing that a correction would begin for.
    // Rounding up to a loop's end means its begin.
    if (block.sampleRate == block.engineRate)
        frame = wrapped (block.sample, std::round (frame));
    mode = next;
    goesRound = block.sample.loops;
    sounding = true;
    jumpPending = false;
    place = { frame, false };
    level = block.level;
    correcting = false;
    fadeDone = 0;
    // An attack comes out whole; in mid-sound the stretcher is led in, and its phases are not the sample's.
    const auto leads = mode == Mode::stretched && !SampleReading::beginsWithAttack (block.sample, frame);
    fadeLength = leads || SampleReading::beginsWithStep (block.sample, frame)
                     ? fadeFramesAt (block.engineRate, longestTail)
                     : 0;
    if (mode != Mode::stretched)
        return;
    origin = frame;
    inputStep = block.sampleRate / block.engineRate;
    madeNext = stretchBlock;
    madeBegin = 0.0;
    stretcher.unit->reset();
    if (leads)
        leadIn (block, frame);
}

void SamplerVoice::leadIn (const Block& block, double frame) noexcept
{
    const auto count = std::min (stretcher.unit->getLeadFrames(), block.work.input.getNumSamples());
    auto* const* in = block.work.input.getArrayOfWritePointers();
    SamplePlace from { frame - count * inputStep, false };
    auto silent = 0;
    if (block.sample.loops && from.frame < block.sample.begin && block.sample.regionFrames() > 0)
        from.frame =
            block.sample.begin + modulo (from.frame - block.sample.begin, block.sample.regionFrames());
    else if (from.frame < 0.0)
        silent = std::min (count, static_cast<int> (std::ceil (-from.frame / inputStep)));
    from.frame += silent * inputStep;
    std::fill_n (in[0], silent, 0.0f);
    std::fill_n (in[1], silent, 0.0f);
    SampleReading::read (block.sample, from, inputStep, edgeFrames (block), in[0] + silent, in[1] + silent,
                         count - silent);
    stretcher.unit->startInside (in);
}

void SamplerVoice::jump (const Block& block, Mode next, double frame) noexcept
{
    if (sounding)
        keepTail (block);
    begin (block, next, frame);
}

SamplerVoice::Block SamplerVoice::asBegun (const Block& block) const noexcept
{
    auto begun = block;
    begun.sample.loops = goesRound;
    return begun;
}

void SamplerVoice::goOn (const Block& block, Mode next) noexcept
{
    const auto begun = asBegun (block);
    const auto frame = wrapped (block.sample, wrapped (begun.sample, heardNow (begun)));
    keepTail (begun);
    begin (block, next, frame);
    // The two courses are one sound: the new one comes in as the old one goes, wherever it is.
    fadeLength = fadeFramesAt (block.engineRate, longestTail);
}

double SamplerVoice::correction (const Block& block, double offset) noexcept
{
    if (!isLocked (block) || waiting)
        return 0.0;
    const auto ahead = distance (block, offset);
    correcting = std::abs (ahead) > (correcting ? correctToSeconds : correctFromSeconds);
    const auto limit = std::abs (ahead) > hurrySeconds ? greatestCorrection : quietCorrection;
    return correcting ? std::clamp (ahead / correctionSeconds, -limit, limit) : 0.0;
}

void SamplerVoice::stretchOn (const Block& block, double offset) noexcept
{
    const auto away = correction (block, offset);
    lastSpeed = tempoRatio (block) * block.bend;
    auto pitch = 1.0f;
    stretcher.unit->setStretchAndPitch (static_cast<float> ((1.0 + away) / lastSpeed), &pitch, 0);

    auto* const* in = block.work.input.getArrayOfWritePointers();
    const auto count = std::clamp (stretcher.unit->getFramesNeeded(), 0, block.work.input.getNumSamples());
    SampleReading::read (block.sample, place, inputStep, edgeFrames (block), in[0], in[1], count);
    madeBegin = stretcher.unit->getIdealInputPositionOfOutput();

    const float* const inputs[] { in[0], in[1] };
    float* const outputs[] { madeLeft.data(), madeRight.data() };
    if (stretcher.unit->process (inputs, count, outputs) != 0)
    {
        madeLeft.fill (0.0f);
        madeRight.fill (0.0f);
    }
    madeNext = 0;
}

double SamplerVoice::edgeFrames (const Block& block) const noexcept
{
    return FadeCurve::jumpSeconds * block.sampleRate;
}

void SamplerVoice::make (const Block& block, int offset, float* left, float* right, int frames) noexcept
{
    if (mode != Mode::stretched)
    {
        const auto away = mode == Mode::varispeed ? correction (block, offset) : 0.0;
        lastSpeed = tempoRatio (block) * block.bend;
        SampleReading::read (block.sample, place,
                             block.sampleRate / block.engineRate * lastSpeed * (1.0 - away),
                             edgeFrames (block), left, right, frames);
    }
    for (int done = 0; mode == Mode::stretched && done < frames;)
    {
        if (madeNext == stretchBlock)
            stretchOn (block, offset + done);
        const auto piece = std::min (frames - done, stretchBlock - madeNext);
        std::copy_n (madeLeft.data() + madeNext, piece, left + done);
        std::copy_n (madeRight.data() + madeNext, piece, right + done);
        madeNext += piece;
        done += piece;
    }
    shape (left, right, frames);
}

void SamplerVoice::shape (float* left, float* right, int frames) noexcept
{
    const auto fading = std::min (frames, fadeLength - fadeDone);
    for (int i = 0; i < fading; ++i)
    {
        const auto part = static_cast<float> (smooth (static_cast<double> (++fadeDone) / fadeLength));
        left[i] *= part;
        right[i] *= part;
    }
    if (level == 1.0f)
        return;
    juce::FloatVectorOperations::multiply (left, level, frames);
    juce::FloatVectorOperations::multiply (right, level, frames);
}

void SamplerVoice::keepTail (const Block& block) noexcept
{
    const auto length = fadeFramesAt (block.engineRate, longestTail);
    auto* const* out = block.work.output.getArrayOfWritePointers();
    make (block, 0, out[0], out[1], length);
    for (int i = 0; i < length; ++i)
    {
        const auto weight = static_cast<float> (smooth (1.0 - static_cast<double> (i + 1) / length));
        const auto older = tailNext + i;
        const auto at = static_cast<size_t> (i), from = static_cast<size_t> (older);
        tailLeft[at] = out[0][i] * weight + (older < tailEnd ? tailLeft[from] : 0.0f);
        tailRight[at] = out[1][i] * weight + (older < tailEnd ? tailRight[from] : 0.0f);
    }
    tailNext = 0;
    tailEnd = length;
}

void SamplerVoice::addTail (float* left, float* right, int frames) noexcept
{
    const auto count = std::min (frames, tailEnd - tailNext);
    if (count <= 0)
        return;
    juce::FloatVectorOperations::add (left, tailLeft.data() + tailNext, count);
    juce::FloatVectorOperations::add (right, tailRight.data() + tailNext, count);
    tailNext += count;
}

void SamplerVoice::leave (const Block& block) noexcept
{
    if (sounding)
        keepTail (asBegun (block));
    sounding = startPending = waiting = false;
    heard = 0.0;
}

int SamplerVoice::followReference (const Block& block, int offset, int frames) noexcept
{
    const auto phase = block.clock.phaseAt (offset), perFrame = block.clock.perFrame;
    const auto isAtBeat = std::abs (phase - std::round (phase)) < 0.5 * perFrame;
    const auto next = isAtBeat ? std::round (phase) + 1.0 : std::ceil (phase);
    const auto toBeat = std::max (1, static_cast<int> (std::min ((next - phase) / perFrame + 0.5, 1.0e6)));

    const auto away = std::abs (distance (block, offset));
    waiting = waiting && !(isAtBeat && heardNow (block) > attackSeconds * block.sampleRate);
    const auto isPulled = !waiting && (isAtBeat ? away > pullSeconds : away > farSeconds && toBeat >= frames);
    jumpPending = away > pullSeconds && (jumpPending || isPulled);
    if (jumpPending && block.jumpsLeft > 0)
    {
        --block.jumpsLeft;
        jumpPending = false;
        auto frame = frameFor (block, phase);
        if (!block.sample.loops) // It goes on where it is, moved by less than a beat.
        {
            frame = heardNow (block) - distance (block, offset) * block.sampleRate;
            frame += frame < 0.0 ? beatsOfCycle (block) * framesPerBeat (block) : 0.0;
        }
        jump (block, mode, frame);
    }
    return std::min ({ frames, toBeat, stretchBlock });
}

bool SamplerVoice::render (const Block& block, bool isOn, float* left, float* right, int frames) noexcept
{
    std::fill_n (left, frames, 0.0f);
    std::fill_n (right, frames, 0.0f);
    if (frames < 1)
        return isOn;

    const auto wanted = modeFor (block);
    if (!isOn && sounding)
        leave (block);
    if (isOn && (startPending || !sounding))
    {
        if (sounding)
            keepTail (asBegun (block));
        mode = wanted;
        const auto joins = isLocked (block) && !waiting && block.sample.loops;
        begin (block, wanted, joins ? frameFor (block, block.clock.phaseAt (0)) : startFrame);
        startPending = false;
    }
    else if (sounding && (wanted != mode || block.sample.loops != goesRound) && block.jumpsLeft > 0)
    {
        --block.jumpsLeft; // All pads are synced, or are not, by one switch.
        goOn (block, wanted);
    }

    const auto begun = asBegun (block);
    auto isEnded = false;
    auto done = 0;
    while (sounding && done < frames)
    {
        const auto rest = frames - done;
        const auto piece = isLocked (begun) ? followReference (begun, done, rest) : rest;
        make (begun, done, left + done, right + done, piece);
        addTail (left + done, right + done, piece); // of a jump, from there on
        done += piece;
        isEnded = !goesRound && heardNow (begun) >= begun.sample.frames;
        if (isEnded && mode == Mode::stretched)
            keepTail (begun); // a vocoder's end is not as sharp as the sample's
        if (isEnded)
            sounding = false;
    }
    if (sounding)
        heard = wrapped (begun.sample, heardNow (begun));
    addTail (left + done, right + done, frames - done);
    return isOn && !isEnded;
}
