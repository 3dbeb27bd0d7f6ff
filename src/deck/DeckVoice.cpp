#include "deck/DeckVoice.h"

#include "analysis/stretch/StretchFactors.h"
#include "deck/DeckReader.h"
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

double stretchOf (const DeckPlayer& deck) noexcept
{
    return 1.0 / std::clamp (deck.tempo.factor.get(), DeckVoice::slowestStretch, DeckVoice::fastestStretch);
}
}

bool DeckVoice::shouldStretch (const DeckWorld& world, const DeckPlayer& deck) const noexcept
{
    return deck.stretcher != nullptr && world.settings.bypassStretcher == 0 && deck.play.on != 0
           && deck.jog.scratchOn == 0 && deck.jog.scratchEnded == 0;
}

void DeckVoice::silence (DeckPlayer& deck) noexcept
{
    deck.ringLeft.clear();
    deck.ringRight.clear();
    stretching = false;
    tail.next = tailLength;
    restartPending = true;
}

void DeckVoice::restart (DeckPlayer& deck) noexcept
{
    // The deck goes on elsewhere, but what counts the way it has come counts what was heard.
    const auto lead = readLead (deck);
    deck.head.linear -= lead;
    deck.head.roll -= lead;
    restartPending = true;
}

double DeckVoice::heardFrame (const DeckPlayer& deck) const noexcept
{
    const auto next = deck.stretcher->getInputPositionOfOutput();
    return next - deck.ringLeft.available() / places.holding (next).dueStep;
}

double DeckVoice::readLead (const DeckPlayer& deck) const noexcept
{
    if (!hasReadAhead())
        return 0.0;
    const auto frame = heardFrame (deck);
    return deck.head.linear - places.holding (frame).linearAt (frame);
}

void DeckVoice::setBackTo (DeckPlayer& deck, double frame) const noexcept
{
    const auto& piece = places.holding (frame);
    const auto now = deck.head;
    auto& head = deck.head = piece.head;
    head.position = std::clamp (piece.positionAt (frame), 0.0, static_cast<double> (deck.track.loadedFrames));
    head.linear = piece.linearAt (frame);
    head.roll = now.roll - (now.linear - head.linear);
    head.framesSinceBar += static_cast<int32_t> (frame - static_cast<double> (piece.firstFrame));
    // The hand has not gone back.
    head.jog = now.jog;
    head.bend = now.bend;
    head.nudgeAccel = now.nudgeAccel;
    findNextBeat (deck);
}

void DeckVoice::follow (DeckPlayer& deck, const Course& next) noexcept
{
    const auto changed = next != course;
    course = next;
    if (!changed || !hasReadAhead())
        return;

    const auto heard = heardFrame (deck);
    const auto* other =
        places.firstFrom (heard, [&next] (const auto& piece)
                          { return piece.led || next.changes (piece.head.position, piece.end()); });
    if (other == nullptr)
        return;

    const auto frame = other->firstFrame;
    if (frame < framesGiven)
    {
        setBackTo (deck, heard);
        restartPending = true;
        return;
    }
    // The stretcher has not seen it yet: nobody hears that it is read anew.
    setBackTo (deck, static_cast<double> (frame));
    dueOfNext = other->due;
    const auto count = static_cast<int32_t> (framesRead - frame);
    inputLeft.takeBack (count);
    inputRight.takeBack (count);
    framesRead = frame;
    places.forgetFrom (frame);
}

void DeckVoice::takeUpCourse (const DeckWorld& world, DeckPlayer& deck) noexcept
{
    if (shouldStretch (world, deck) == stretching)
        follow (deck, Course (deck));
}

double DeckVoice::heardPosition (const DeckPlayer& deck) const noexcept
{
    if (!hasReadAhead())
        return deck.head.position;
    const auto frame = heardFrame (deck);
    return juce::jlimit (0.0, static_cast<double> (deck.track.loadedFrames),
                         places.holding (frame).positionAt (frame));
}

DeckVoice::Front DeckVoice::front (const DeckWorld& world, const DeckPlayer& deck) const noexcept
{
    const auto stretched = shouldStretch (world, deck);
    if (!isStretching())
        return { deck.head.position, 0.0, stretched };
    if (!stretched)
        return { heardPosition (deck), 0.0, false };
    return { deck.head.position, dueOfNext - static_cast<double> (framesMade - deck.ringLeft.available()),
             true };
}

void DeckVoice::keepTail (DeckWorld& world, DeckPlayer& deck, const ReaderBlock& block) noexcept
{
    if (!stretching)
    {
        const auto before = deck.head;
        readDeck (deck, block, world.noise, tail.left.data(), tail.right.data(), tailLength);
        deck.head = before;
    }
    else
    {
        while (deck.ringLeft.available() < tailLength)
            stretchBlock (world, deck, block, Input::ended);
        deck.ringLeft.read (tail.left.data(), tailLength);
        deck.ringRight.read (tail.right.data(), tailLength);
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

void DeckVoice::begin (DeckWorld& world, DeckPlayer& deck, const ReaderBlock& block, bool stretched) noexcept
{
    const auto jumped = restartPending;
    const auto moves = deck.head.rate != 0.0;
    if (stretching || (moves && !jumped))
    {
        if (stretching && !jumped)
        {
            setBackTo (deck, heardFrame (deck));
            deck.head.rate = deck.head.rate / stretchOf (deck);
        }
        keepTail (world, deck, block);
        deck.head.declickGain = 0.0;
    }
    else if (!moves)
    {
        deck.head.declickGain = 0.0;
    }

    restartPending = false;
    stretching = stretched;
    deck.ringLeft.clear();
    deck.ringRight.clear();
    if (!stretched)
        return;
    inputLeft.clear();
    inputRight.clear();
    places.clear();
    framesRead = framesGiven = framesMade = 0;
    dueOfNext = 0.0;
    correcting = false;
    deck.stretcher->reset();
}

void DeckVoice::readAhead (DeckWorld& world, DeckPlayer& deck, const ReaderBlock& block, double dueTime,
                           int leastFrames) noexcept
{
    auto* const* in = world.stretcherInput.getArrayOfWritePointers();
    const auto piece = pieceAt (world.engineRate);
    const auto stretch = stretchOf (deck);
    while ((dueOfNext < dueTime || inputLeft.available() < leastFrames) && inputLeft.space() >= piece)
    {
        const auto before = deck.head;
        const auto reading = readToJump (deck, block, world.noise, in[0], in[1], piece);
        const auto count = reading.frames;
        inputLeft.write (in[0], count);
        inputRight.write (in[1], count);

        const auto linearStep = (deck.head.linear - before.linear) / count;
        places.add ({ .firstFrame = framesRead,
                      .frames = count,
                      .head = before,
                      .step = reading.jumped ? linearStep : (deck.head.position - before.position) / count,
                      .due = dueOfNext,
                      .dueStep = stretch,
                      .linearStep = linearStep,
                      .led = reading.led });
        framesRead += count;
        dueOfNext += stretch * count;
    }
}

void DeckVoice::setFactors (DeckPlayer& deck, double engineRate) noexcept
{
    const auto frameLength = stretchFrameLength (engineRate);
    const auto locked = deck.tempo.keyLock != 0;
    const auto key = std::exp2 (deck.tempo.keyTuning / 12.0);
    const auto pitchFor = [&] (double stretch) { return static_cast<float> (locked ? key : 1.0 / stretch); };
    const auto heard = deck.stretcher->getIdealInputPositionOfOutput();

    // With key lock the next analysis frame is to come where its middle is due, seen from the newest one's. Without, it
    // is the resampler at the output that makes the tempo.
    const auto from = locked ? static_cast<double> (framesGiven - frameLength / 2) : heard;
    const auto& piece = places.holding (from);
    auto stretch = piece.dueStep;
    auto span = stretcherBlock / stretch;
    if (const auto factors =
            StretchFactors::of (static_cast<float> (stretch), pitchFor (stretch), frameLength);
        locked && factors)
        span = factors->hopIn;
    if (from > 0.0)
    {
        const auto due = places.holding (from + span).dueAt (from + span) - piece.dueAt (from);
        if (std::abs (due - span * stretch) > 1.0e-6) // else the tempo holds, to the last bit
            stretch = due / span;
    }

    const auto made = static_cast<double> (framesMade);
    const auto ahead = heard - places.dueAt (made).frameDueAt (made);
    correcting = std::abs (ahead) > (correcting ? correctTo : correctFrom);
    if (correcting)
        stretch *=
            1.0
            + std::clamp (ahead / (correctionSeconds * engineRate), -greatestCorrection, greatestCorrection);

    auto pitch = pitchFor (stretch);
    deck.stretcher->setStretchAndPitch (static_cast<float> (stretch), &pitch, 0);
}

void DeckVoice::stretchBlock (DeckWorld& world, DeckPlayer& deck, const ReaderBlock& block,
                              Input input) noexcept
{
    auto* const* in = world.stretcherInput.getArrayOfWritePointers();
    auto* const* out = world.stretcherOutput.getArrayOfWritePointers();

    const auto ahead = readAheadSeconds * world.engineRate;
    if (input == Input::goesOn)
        readAhead (world, deck, block, static_cast<double> (framesMade + stretcherBlock) + ahead, 0);
    setFactors (deck, world.engineRate);

    const auto count =
        std::clamp (deck.stretcher->getFramesNeeded(), 0, world.stretcherInput.getNumSamples());
    if (input == Input::goesOn)
        readAhead (world, deck, block, 0.0, count);

    // Only the end of a sound that is being left can find too little here.
    const auto given = inputLeft.read (in[0], count);
    inputRight.read (in[1], count);
    std::fill (in[0] + given, in[0] + count, 0.0f);
    std::fill (in[1] + given, in[1] + count, 0.0f);
    framesGiven += count;

    const float* const inputs[] { in[0], in[1] };
    float* const outputs[] { out[0], out[1] };
    if (deck.stretcher->process (inputs, count, outputs) != 0)
    {
        std::fill_n (out[0], stretcherBlock, 0.0f);
        std::fill_n (out[1], stretcherBlock, 0.0f);
    }
    framesMade += stretcherBlock;
    deck.ringLeft.write (out[0], stretcherBlock);
    deck.ringRight.write (out[1], stretcherBlock);
}

void DeckVoice::fillRings (DeckWorld& world, DeckPlayer& deck, const ReaderBlock& block, int frames) noexcept
{
    if (stretching)
    {
        while (deck.ringLeft.available() < frames)
            stretchBlock (world, deck, block, Input::goesOn);
        return;
    }
    auto* const* in = world.stretcherInput.getArrayOfWritePointers();
    const auto count = frames - deck.ringLeft.available();
    if (count <= 0)
        return;
    readDeck (deck, block, world.noise, in[0], in[1], count);
    deck.ringLeft.write (in[0], count);
    deck.ringRight.write (in[1], count);
}

void DeckVoice::render (DeckWorld& world, DeckPlayer& deck, const ReaderBlock& constants, float* left,
                        float* right, int frames) noexcept
{
    auto block = constants;
    const auto tempo = deck.tempo.factor.get();
    const auto stretched = shouldStretch (world, deck);
    if (stretched == stretching)
        follow (deck, block.course);
    else
        course = block.course;
    if (restartPending || stretched != stretching)
    {
        block.playFactor = stretching ? 1.0 : tempo;
        begin (world, deck, block, stretched);
    }
    block.playFactor = stretching ? 1.0 : tempo;

    for (int done = 0; done < frames;)
    {
        const auto piece = std::min (frames - done, 4096);
        fillRings (world, deck, block, piece);
        deck.ringLeft.read (left + done, piece);
        deck.ringRight.read (right + done, piece);
        done += piece;
    }
    fadeTail (left, right, frames);
}
