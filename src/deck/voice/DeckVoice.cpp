#include "deck/voice/DeckVoice.h"

#include "analysis/stretch/StretchFactors.h"
#include "deck/state/DeckNumbers.h"
#include "support/CrossFade.h"

#include <algorithm>
#include <cmath>

namespace
{
/** Frames read with one line in the log: 0.7 ms at 44.1 kHz. */
int pieceAt (double engineRate) noexcept
{
    return engineRate > 96000.0 ? 128 : 32;
}

constexpr double tailFade = 0.984; // of the declick of jumps, for each frame

// What stepwise changes of the tempo leave between the place that is heard and the one that is due is taken out within
// half a second: by tempo alone, and by so little that nobody hears it.
constexpr double correctionSeconds = 0.5, greatestCorrection = 0.005;
constexpr double correctFrom = 0.5, correctTo = 0.05; // frames

double stretchOf (const VoiceBlock& block) noexcept
{
    return 1.0 / std::clamp (block.tempo, DeckVoice::slowestStretch, DeckVoice::fastestStretch);
}
}

void DeckVoice::changeStretcher (std::unique_ptr<CElastiqueProIf>& next, float engineRate) noexcept
{
    ringLeft.clear();
    ringRight.clear();
    stretching = false;
    tail.next = tailLength;
    restartPending = true;
    stretcher.swap (next);
    stretcherRate = engineRate;
}

void DeckVoice::restart (ReadHead& head) noexcept
{
    // The deck goes on elsewhere, but what counts the way it has come counts what was heard.
    const auto lead = readLead (head);
    head.linear -= lead;
    head.roll -= lead;
    restartPending = true;
}

double DeckVoice::heardFrame() const noexcept
{
    const auto next = stretcher->getInputPositionOfOutput();
    return next - ringLeft.available() / map.holding (next).dueStep;
}

double DeckVoice::readLead (const ReadHead& head) const noexcept
{
    if (!hasReadAhead())
        return 0.0;
    const auto frame = heardFrame();
    return head.linear - map.holding (frame).linearAt (frame);
}

void DeckVoice::setBackTo (ReadHead& head, const ReadSource& source, double frame) const noexcept
{
    const auto& piece = map.holding (frame);
    const auto now = head;
    head = piece.head;
    head.position = std::clamp (piece.positionAt (frame), 0.0, static_cast<double> (source.frames));
    head.linear = piece.linearAt (frame);
    head.roll = now.roll - (now.linear - head.linear);
    head.framesSinceBar += static_cast<int32_t> (frame - static_cast<double> (piece.firstFrame));
    // The hand has not gone back.
    head.jog = now.jog;
    head.bend = now.bend;
    head.nudgeAccel = now.nudgeAccel;
    findNextBeat (head, source.grid);
}

void DeckVoice::follow (ReadHead& head, const ReadSource& source, const LoopRegion& next) noexcept
{
    const auto changed = next != region;
    region = next;
    if (!changed || !hasReadAhead())
        return;

    const auto heard = heardFrame();
    const auto* other =
        map.firstFrom (heard, [&next] (const auto& piece)
                       { return piece.led || next.changes (piece.head.position, piece.end()); });
    if (other == nullptr)
        return;

    const auto frame = other->firstFrame;
    if (frame < framesGiven)
    {
        setBackTo (head, source, heard);
        restartPending = true;
        return;
    }
    // The stretcher has not seen it yet: nobody hears that it is read anew.
    setBackTo (head, source, static_cast<double> (frame));
    dueOfNext = other->due;
    const auto count = static_cast<int32_t> (framesRead - frame);
    inputLeft.takeBack (count);
    inputRight.takeBack (count);
    framesRead = frame;
    map.forgetFrom (frame);
}

void DeckVoice::takeUpRegion (ReadHead& head, const ReadSource& source, const LoopRegion& next,
                              bool stretched) noexcept
{
    if (stretched == stretching)
        follow (head, source, next);
}

double DeckVoice::heardPosition (const ReadHead& head, int32_t loadedFrames) const noexcept
{
    if (!hasReadAhead())
        return head.position;
    const auto frame = heardFrame();
    return std::clamp (map.holding (frame).positionAt (frame), 0.0, static_cast<double> (loadedFrames));
}

DeckVoice::ReadPoint DeckVoice::readPoint (const ReadHead& head, int32_t loadedFrames,
                                           bool stretched) const noexcept
{
    if (!isStretching())
        return { head.position, 0.0, stretched };
    if (!stretched)
        return { heardPosition (head, loadedFrames), 0.0, false };
    return { head.position, dueOfNext - static_cast<double> (framesMade - ringLeft.available()), true };
}

void DeckVoice::keepTail (ReadHead& head, const VoiceBlock& block, const ReadDrive& drive) noexcept
{
    if (!stretching)
    {
        const auto before = head;
        readDeck (head, block.source, drive, block.noise, tail.left.data(), tail.right.data(), tailLength);
        head = before;
    }
    else
    {
        while (ringLeft.available() < tailLength)
            stretchBlock (head, block, drive, Input::ended);
        ringLeft.read (tail.left.data(), tailLength);
        ringRight.read (tail.right.data(), tailLength);
    }
    tail.next = 0;
}

void DeckVoice::fadeTail (float* left, float* right, int frames) noexcept
{
    const auto count = std::min (frames, tailLength - tail.next);
    auto weight = static_cast<float> (std::pow (tailFade, tail.next));
    for (int i = 0; i < count; ++i, ++tail.next, weight *= static_cast<float> (tailFade))
    {
        left[i] = CrossFade::mixed (left[i], tail.left[static_cast<size_t> (tail.next)], weight);
        right[i] = CrossFade::mixed (right[i], tail.right[static_cast<size_t> (tail.next)], weight);
    }
}

void DeckVoice::begin (ReadHead& head, const VoiceBlock& block, const ReadDrive& drive) noexcept
{
    const auto jumped = restartPending;
    const auto moves = head.rate != 0.0;
    if (stretching || (moves && !jumped))
    {
        if (stretching && !jumped)
        {
            setBackTo (head, block.source, heardFrame());
            head.rate = head.rate / stretchOf (block);
        }
        keepTail (head, block, drive);
        head.declickGain = 0.0;
    }
    else if (!moves)
    {
        head.declickGain = 0.0;
    }

    restartPending = false;
    stretching = block.isStretched;
    ringLeft.clear();
    ringRight.clear();
    if (!stretching)
        return;
    inputLeft.clear();
    inputRight.clear();
    map.clear();
    framesRead = framesGiven = framesMade = 0;
    dueOfNext = 0.0;
    correcting = false;
    stretcher->reset();
}

void DeckVoice::readAhead (ReadHead& head, const VoiceBlock& block, const ReadDrive& drive, double dueTime,
                           int leastFrames) noexcept
{
    auto* const* in = block.work.input.getArrayOfWritePointers();
    const auto piece = pieceAt (block.engineRate);
    const auto stretch = stretchOf (block);
    while ((dueOfNext < dueTime || inputLeft.available() < leastFrames) && inputLeft.space() >= piece)
    {
        const auto before = head;
        const auto reading = readToJump (head, block.source, drive, block.noise, in[0], in[1], piece);
        const auto count = reading.frames;
        inputLeft.write (in[0], count);
        inputRight.write (in[1], count);

        const auto linearStep = (head.linear - before.linear) / count;
        map.add ({ .firstFrame = framesRead,
                   .frames = count,
                   .head = before,
                   .step = reading.jumped ? linearStep : (head.position - before.position) / count,
                   .due = dueOfNext,
                   .dueStep = stretch,
                   .linearStep = linearStep,
                   .led = reading.led });
        framesRead += count;
        dueOfNext += stretch * count;
    }
}

void DeckVoice::setFactors (const VoiceBlock& block) noexcept
{
    const auto frameLength = stretchFrameLength (block.engineRate);
    const auto locked = block.isKeyLocked;
    const auto key = std::exp2 (block.keyTuning / 12.0);
    const auto pitchFor = [&] (double stretch) { return static_cast<float> (locked ? key : 1.0 / stretch); };
    const auto heard = stretcher->getIdealInputPositionOfOutput();

    // With key lock the next analysis frame is to come where its middle is due, seen from the newest one's. Without, it
    // is the resampler at the output that makes the tempo.
    const auto from = locked ? static_cast<double> (framesGiven - frameLength / 2) : heard;
    const auto& piece = map.holding (from);
    auto stretch = piece.dueStep;
    auto span = stretcherBlock / stretch;
    if (const auto factors =
            StretchFactors::of (static_cast<float> (stretch), pitchFor (stretch), frameLength);
        locked && factors)
        span = factors->hopIn;
    if (from > 0.0)
    {
        const auto due = map.holding (from + span).dueAt (from + span) - piece.dueAt (from);
        if (std::abs (due - span * stretch) > 1.0e-6) // else the tempo holds, to the last bit
            stretch = due / span;
    }

    const auto made = static_cast<double> (framesMade);
    const auto ahead = heard - map.dueAt (made).frameDueAt (made);
    correcting = std::abs (ahead) > (correcting ? correctTo : correctFrom);
    if (correcting)
        stretch *= 1.0
                   + std::clamp (ahead / (correctionSeconds * block.engineRate), -greatestCorrection,
                                 greatestCorrection);

    auto pitch = pitchFor (stretch);
    stretcher->setStretchAndPitch (static_cast<float> (stretch), &pitch, 0);
}

void DeckVoice::stretchBlock (ReadHead& head, const VoiceBlock& block, const ReadDrive& drive,
                              Input input) noexcept
{
    auto* const* in = block.work.input.getArrayOfWritePointers();
    auto* const* out = block.work.output.getArrayOfWritePointers();

    const auto ahead = readAheadSeconds * block.engineRate;
    if (input == Input::goesOn)
        readAhead (head, block, drive, static_cast<double> (framesMade + stretcherBlock) + ahead, 0);
    setFactors (block);

    const auto count = std::clamp (stretcher->getFramesNeeded(), 0, block.work.input.getNumSamples());
    if (input == Input::goesOn)
        readAhead (head, block, drive, 0.0, count);

    // Only the end of a sound that is being left can find too little here.
    const auto given = inputLeft.read (in[0], count);
    inputRight.read (in[1], count);
    std::fill (in[0] + given, in[0] + count, 0.0f);
    std::fill (in[1] + given, in[1] + count, 0.0f);
    framesGiven += count;

    const float* const inputs[] { in[0], in[1] };
    float* const outputs[] { out[0], out[1] };
    if (stretcher->process (inputs, count, outputs) != 0)
    {
        std::fill_n (out[0], stretcherBlock, 0.0f);
        std::fill_n (out[1], stretcherBlock, 0.0f);
    }
    framesMade += stretcherBlock;
    ringLeft.write (out[0], stretcherBlock);
    ringRight.write (out[1], stretcherBlock);
}

void DeckVoice::fillRings (ReadHead& head, const VoiceBlock& block, const ReadDrive& drive,
                           int frames) noexcept
{
    if (stretching)
    {
        while (ringLeft.available() < frames)
            stretchBlock (head, block, drive, Input::goesOn);
        return;
    }
    auto* const* in = block.work.input.getArrayOfWritePointers();
    const auto count = frames - ringLeft.available();
    if (count <= 0)
        return;
    readDeck (head, block.source, drive, block.noise, in[0], in[1], count);
    ringLeft.write (in[0], count);
    ringRight.write (in[1], count);
}

void DeckVoice::render (ReadHead& head, const VoiceBlock& block, float* left, float* right,
                        int frames) noexcept
{
    if (block.isStretched == stretching)
        follow (head, block.source, block.drive.region);
    else
        region = block.drive.region;

    auto drive = block.drive;
    if (restartPending || block.isStretched != stretching)
    {
        drive.playFactor = stretching ? 1.0 : block.tempo;
        begin (head, block, drive);
    }
    drive.playFactor = stretching ? 1.0 : block.tempo;

    for (int done = 0; done < frames;)
    {
        const auto piece = std::min (frames - done, 4096);
        fillRings (head, block, drive, piece);
        ringLeft.read (left + done, piece);
        ringRight.read (right + done, piece);
        done += piece;
    }
    fadeTail (left, right, frames);
}
