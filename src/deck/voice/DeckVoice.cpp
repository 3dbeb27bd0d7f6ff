#include "deck/voice/DeckVoice.h"

#include "deck/state/DeckNumbers.h"
#include "support/CrossFade.h"
#include "support/FadeCurve.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
/** Seconds between two restarts for a key or a tempo that is being turned. The stretcher follows by itself in about as
    long: a key arrives, and a key that strays since the tempo has changed comes back. */
constexpr double tuneRestartSeconds = 0.1;

/** A step of the tempo from which on it does not wait for that: 7 cents. */
constexpr double greatestStray = 0.004;

/** Seconds over which the same place goes over into another key or tempo. */
constexpr double tuneFadeSeconds = 0.008;

/** Frames read with one line in the map: 0.7 ms at 44.1 kHz. */
int pieceAt (double engineRate) noexcept
{
    return engineRate > 96000.0 ? 128 : 32;
}

// Changes of the tempo leave a little between the place that is heard and the one that is due. It is taken out by the
// stretcher's next frames, by so little that nobody hears it.
constexpr double correctionSeconds = 0.5, greatestCorrection = 0.0009;
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
    patternVoice.end();
    tail.next = tail.length;
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
    return next - (next - blockBegin) * ringLeft.available() / stretcherBlock;
}

double DeckVoice::dueHeardFrame() const noexcept
{
    return dueFrame - (dueFrame - dueBegin) * ringLeft.available() / stretcherBlock;
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
    // The hand has not gone back.
    head.jog = now.jog;
    head.bend = now.bend;
    head.nudgeAccel = now.nudgeAccel;
}

bool DeckVoice::isHeardOutOfTune (const VoiceBlock& block) const noexcept
{
    if (static_cast<double> (framesMade) <= tuneRestartSeconds * block.engineRate)
        return false;
    return block.keyTuning != keyTuning
           || std::abs (stretcher->getStretchOfOutput() / stretchOf (block) - 1.0) > greatestStray;
}

bool DeckVoice::isHeardElsewhere (const VoiceBlock& block) const noexcept
{
    const auto& next = block.drive.region;
    if (next.isReverse != region.isReverse)
        return true;
    return next != region
           && map.hasFrom (heardFrame(), [&next] (const auto& piece)
                           { return piece.led || next.changes (piece.head.position, piece.end()); });
}

bool DeckVoice::follow (ReadHead& head, const VoiceBlock& block) noexcept
{
    const auto isFollowed = hasReadAhead() && block.isStretched;
    const auto isElsewhere = isFollowed && isHeardElsewhere (block);
    const auto isRetuned = isFollowed && !isElsewhere && isHeardOutOfTune (block);
    if (isRetuned) // goes on at the whole frame that is heard, as the stretcher takes it
        stretcher->keepTurns (ringLeft.available());
    if (isElsewhere || isRetuned)
    {
        setBackTo (head, block.source, isRetuned ? std::floor (heardFrame()) : dueHeardFrame());
        restartPending = true;
    }
    region = block.drive.region;
    keyTuning = block.keyTuning;
    return isRetuned;
}

double DeckVoice::heardPosition (const ReadHead& head, int32_t loadedFrames) const noexcept
{
    if (!hasReadAhead())
        return head.position;
    const auto frame = heardFrame();
    return std::clamp (map.holding (frame).positionAt (frame), 0.0, static_cast<double> (loadedFrames));
}

double DeckVoice::heardRate (const ReadHead& head) const noexcept
{
    return hasReadAhead() ? map.holding (heardFrame()).head.rate : head.rate;
}

void DeckVoice::keepTail (ReadHead& head, const VoiceBlock& block, const ReadDrive& drive) noexcept
{
    // Takes back the reading for the tail.
    auto record = block.drive.record != nullptr ? *block.drive.record : RecordMotion {};
    // The end of an older tail lies under the new one.
    auto older = tail;
    tail.length = std::min (drive.fadeFrames, longestTail);
    if (patternVoice.isSounding())
    {
        for (int done = 0; done < tail.length; done += PatternVoice::longestPiece)
            patternVoice.readOn (block.source, patternSetting (block), head.rate, block.noise,
                                 tail.left.data() + done, tail.right.data() + done,
                                 std::min (PatternVoice::longestPiece, tail.length - done));
    }
    else if (!stretching)
    {
        const auto before = head;
        auto ahead = drive;
        ahead.record = drive.record != nullptr ? &record : nullptr;
        readDeck (head, block.source, ahead, block.noise, tail.left.data(), tail.right.data(), tail.length);
        head = before;
    }
    else
    {
        while (ringLeft.available() < tail.length)
            stretchBlock (head, block, drive, Input::ended);
        ringLeft.read (tail.left.data(), tail.length);
        ringRight.read (tail.right.data(), tail.length);
    }
    std::swap (tail, older);
    fadeTail (older.left.data(), older.right.data(), older.length);
    tail = older;
    tail.next = 0;
}

void DeckVoice::leaveTrack (ReadHead& head, const VoiceBlock& block) noexcept
{
    if (stretching || head.rate != 0.0)
    {
        auto drive = block.drive;
        drive.playFactor = stretching ? 1.0 : block.tempo;
        keepTail (head, block, drive);
    }
    ringLeft.clear();
    ringRight.clear();
    stretching = false;
    patternVoice.end();
}

void DeckVoice::fadeTail (float* left, float* right, int frames) noexcept
{
    const auto count = std::min (frames, tail.length - tail.next);
    for (int i = 0; i < count; ++i, ++tail.next)
    {
        const auto weight =
            static_cast<float> (FadeCurve::at (1.0 - static_cast<double> (tail.next) / tail.length));
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
            setBackTo (head, block.source, dueHeardFrame());
        keepTail (head, block, drive);
        head.declickLeft = 0;
    }
    else if (!moves)
    {
        head.declickLeft = 0;
    }

    // The speed that is heard goes on: through a stretcher the tempo is no part of the rate.
    if (block.isStretched != stretching)
        head.rate *= block.isStretched ? stretchOf (block) : 1.0 / stretchOf (block);

    restartPending = false;
    stretching = block.isStretched;
    ringLeft.clear();
    ringRight.clear();
    if (!stretching)
        return;
    map.clear();
    framesGiven = framesMade = 0;
    blockBegin = dueBegin = dueFrame = 0.0;
    correcting = false;
    stretcher->reset();
}

void DeckVoice::readAhead (ReadHead& head, const VoiceBlock& block, const ReadDrive& drive,
                           int frames) noexcept
{
    auto* const* in = block.work.input.getArrayOfWritePointers();
    for (int done = 0; done < frames;)
    {
        const auto before = head;
        const auto reading = readToJump (head, block.source, drive, block.noise, in[0] + done, in[1] + done,
                                         std::min (frames - done, pieceAt (block.engineRate)));
        const auto linearStep = (head.linear - before.linear) / reading.frames;
        map.add ({ .firstFrame = framesGiven + done,
                   .frames = reading.frames,
                   .head = before,
                   .step = reading.jumped ? linearStep : (head.position - before.position) / reading.frames,
                   .linearStep = linearStep,
                   .led = reading.led });
        done += reading.frames;
    }
}

void DeckVoice::setFactors (const VoiceBlock& block) noexcept
{
    const auto ahead = stretcher->getIdealInputPositionOfOutput() - dueFrame;
    correcting = std::abs (ahead) > (correcting ? correctTo : correctFrom);
    auto stretch = stretchOf (block);
    dueBegin = std::exchange (dueFrame, dueFrame + stretcherBlock / stretch);
    if (correcting)
        stretch *= 1.0
                   + std::clamp (ahead / (correctionSeconds * block.engineRate), -greatestCorrection,
                                 greatestCorrection);

    auto pitch = static_cast<float> (std::exp2 (block.keyTuning / 12.0));
    stretcher->setStretchAndPitch (static_cast<float> (stretch), &pitch, 0);
}

void DeckVoice::stretchBlock (ReadHead& head, const VoiceBlock& block, const ReadDrive& drive,
                              Input input) noexcept
{
    auto* const* in = block.work.input.getArrayOfWritePointers();
    auto* const* out = block.work.output.getArrayOfWritePointers();

    setFactors (block);
    const auto count = std::clamp (stretcher->getFramesNeeded(), 0, block.work.input.getNumSamples());
    if (input == Input::goesOn)
        readAhead (head, block, drive, count);
    else
        for (auto* side : { in[0], in[1] })
            std::fill_n (side, count, 0.0f);
    framesGiven += count;
    blockBegin = stretcher->getInputPositionOfOutput();

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

void DeckVoice::renderPlain (ReadHead& head, const VoiceBlock& block, float* left, float* right,
                             int frames) noexcept
{
    const auto isRetuned = follow (head, block);
    auto drive = block.drive;
    if (restartPending || block.isStretched != stretching)
    {
        drive.playFactor = stretching ? 1.0 : block.tempo;
        // Keeps what the stretcher has left of the place that is due, to be made up.
        const auto due = isRetuned ? dueHeardFrame() - std::floor (heardFrame()) : 0.0;
        if (isRetuned)
            drive.fadeFrames = static_cast<int> (tuneFadeSeconds * block.engineRate);
        begin (head, block, drive);
        dueBegin = dueFrame = due;
        drive.fadeFrames = block.drive.fadeFrames;
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

void DeckVoice::render (ReadHead& head, const VoiceBlock& block, float* left, float* right,
                        int frames) noexcept
{
    auto* const pattern = block.pattern;
    if (pattern != nullptr)
    {
        pattern->beginBlock();
        makeMove (head, block, pattern->takeMove());
        if (!pattern->awaitsBeat())
            beatWait.end();
    }
    for (int done = 0; done < frames;)
    {
        const auto plain = pattern == nullptr
                           || !(pattern->isActive() || pattern->awaitsBeat() || patternVoice.isSounding());
        if (plain)
            return renderPlain (head, block, left + done, right + done, frames - done);
        done += renderPattern (head, block, left + done, right + done, frames - done);
    }
}

int DeckVoice::renderPattern (ReadHead& head, const VoiceBlock& block, float* left, float* right,
                              int frames) noexcept
{
    auto& pattern = *block.pattern;
    auto& piece = block.work.piece;
    const auto step =
        std::max (0.0, block.drive.speedRatio * (block.isStretched ? 1.0 / stretchOf (block) : block.tempo));
    piece.frames = std::min (frames, DeckPattern::longestPiece);
    if (pattern.awaitsBeat())
    {
        const auto until = beatWait.framesLeft (block.source.grid, block.drive.region,
                                                heardPosition (head, block.source.frames), step);
        if (until == 0)
            pattern.comeToBeat();
        else
            piece.frames = std::min (piece.frames, until);
    }
    piece.leads = piece.gates = false;
    if (pattern.isActive())
        pattern.makePiece (piece, step, piece.frames);

    if (piece.leads || patternVoice.isSounding())
        readAway (head, block, piece, left, right);
    else
        renderPlain (head, block, left, right, piece.frames);
    if (piece.gates)
        for (int i = 0; i < piece.frames; ++i)
        {
            left[i] *= piece.gains[static_cast<size_t> (i)];
            right[i] *= piece.gains[static_cast<size_t> (i)];
        }
    makeMove (head, block, pattern.takeMove());
    return piece.frames;
}

void DeckVoice::readAway (ReadHead& head, const VoiceBlock& block, const DeckPattern::Piece& piece,
                          float* left, float* right) noexcept
{
    auto drive = block.drive;
    if (stretching || restartPending)
    {
        // The reading goes on past the stretcher, which would blur jumps and scratches.
        auto straight = block;
        straight.isStretched = false;
        drive.playFactor = stretching ? 1.0 : block.tempo;
        begin (head, straight, drive);
    }
    if (!patternVoice.isSounding())
        patternVoice.begin (head);

    drive.playFactor = block.tempo;
    drive.isPlaying = drive.isPlaying || (piece.leads && !block.isScratched);
    auto* const own = block.work.places.data();
    head.declickLeft = 0;
    traceDeck (head, block.source, drive, own, piece.frames);
    head.declickLeft = 0;
    patternVoice.read (block.source, patternSetting (block), own,
                       piece.leads ? piece.offsets.data() : nullptr, head.rate, block.noise, left, right,
                       piece.frames);
    fadeTail (left, right, piece.frames);
}

PatternVoice::Setting DeckVoice::patternSetting (const VoiceBlock& block) const noexcept
{
    return { block.drive.fadeFrames, block.drive.smoothing5ms, block.drive.region.floor };
}

void DeckVoice::makeMove (ReadHead& head, const VoiceBlock& block, const PatternMove& move) noexcept
{
    const auto landsAtRead = move.landsAtRead && patternVoice.isSounding();
    if (!landsAtRead && move.frames == 0.0)
        return;
    const auto target =
        landsAtRead ? patternVoice.lastPlace() : heardPosition (head, block.source.frames) + move.frames;

    if (isStretching())
        restart (head);
    else if (!patternVoice.isSounding())
        head.declickFrom (head.position);
    head.position = std::clamp (target, 0.0, static_cast<double> (block.source.frames));
}
