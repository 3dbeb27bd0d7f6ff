#include "instruments/slicegate/SlicegateDeckState.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr double beatsOfWindow = 4.0;

/** Windows that the lowest value of a time curve lies back: eight beats. */
constexpr double windowsBack = 2.0;

using Levels = std::array<double, DeckPattern::longestPiece>;

/** Fills a piece with a curve's levels; stretches that hold or go straight need but their ends.
    @returns true if the level holds: then the first stands for all */
PX_AUDIO_THREAD bool follow (const Envelope& curve, EnvelopeCursor& cursor, double time, double timeStep,
                             int frames, Levels& levels) noexcept
{
    const auto first = levels[0] = curve.evaluate (time, cursor);
    const auto last = time + timeStep * (frames - 1);
    const auto point = curve.point (static_cast<int> (cursor.segment));
    const auto isWithin = last <= point.time;
    if (isWithin && point.type == static_cast<uint8_t> (SegmentShape::hold))
        return true;
    if (isWithin && point.sign == EnvelopePoint::straightLine)
    {
        const auto slope =
            frames > 1 ? (curve.evaluate (last, cursor) - first) / static_cast<double> (frames - 1) : 0.0;
        for (int i = 1; i < frames; ++i)
            levels[static_cast<size_t> (i)] = first + slope * i;
        return false;
    }
    for (int i = 1; i < frames; ++i)
        levels[static_cast<size_t> (i)] = curve.evaluate (time + timeStep * i, cursor);
    return false;
}

/** True if a time curve leaves the deck where it is all along. */
bool staysAtOwnPlace (const Envelope& curve) noexcept
{
    const auto count = curve.pointCount();
    const auto points = curve.allPoints();
    return count > 1
           && std::all_of (points.begin(), points.end(), [] (const auto& p) { return p.value == 1.0f; })
           && curve.absoluteTime (count - 1) >= beatsOfWindow;
}
}

SlicegateDeckState::SlicegateDeckState (DeckWorld& w, int index)
    : world (w),
      deckIndex (index),
      times (padCount, w.callbackLock),
      volumes (padCount, w.callbackLock)
{
    for (int pad = 0; pad < padCount; ++pad)
        loadFactoryPreset (FactoryPresets::initialPreset (deckIndex, pad), pad);
}

//======================================================================================================================
// Playing

void SlicegateDeckState::trigger (int pad) noexcept
{
    if (!isPad (pad) || deck().isEmpty())
        return;
    const CallbackLock lock (world.callbackLock, "slicegate pad");
    const auto mode = playMode (pad);
    if (!running)
    {
        startedPlaying = false;
        if (queuedStartPad == pad)
            queuedStartPad = noPad; // pressed again, a pad that waits is called off
        else if (world.setup (deck()).quantise != 0)
            queuedStartPad = pad;
        else
            start (pad);
    }
    else if (mode == PlayMode::reTrigger)
    {
        restartInBeat (pad);
    }
    else if (pad == currentPad)
    {
        stopRunning();
    }
    else
    {
        nextPad = pad;
    }
    publish();
}

void SlicegateDeckState::start (int pad) noexcept
{
    const auto window = beatsOfWindow * deck().beatFrames();
    windowLength = window > 0.0 && std::isfinite (window) ? window : 1.0;
    elapsed = 0.0;
    currentPad = pad;
    running = true;
    startedPlaying = false;
}

void SlicegateDeckState::stopRunning() noexcept
{
    running = false;
    nextPad = queuedStartPad = noPad;
    if (!advanceMode (currentPad) && times.isEnabled (currentPad))
        move = { .landsAtRead = true };
}

double SlicegateDeckState::alongDeck (double frames) const noexcept
{
    return deck().play.reverse != 0 ? -frames : frames;
}

void SlicegateDeckState::restartInBeat (int pad) noexcept
{
    const auto before = elapsed;
    elapsed = std::fmod (elapsed, windowLength / beatsOfWindow);
    // Pressed again, a pad that does not march plays the same beats again; the way to another pad keeps the deck's place.
    if (pad == currentPad && !advanceMode (pad) && times.isEnabled (pad))
        move.frames += alongDeck (elapsed - before);
    currentPad = pad;
}

PadState SlicegateDeckState::padState (int pad) const noexcept
{
    if (!isPad (pad))
        return PadState::idle;
    if (pad == shownPad)
        return PadState::running;
    return pad == shownNext || pad == queuedStartPad ? PadState::queued : PadState::idle;
}

double SlicegateDeckState::padProgress (int pad) const noexcept
{
    return isPad (pad) && pad == shownPad ? shownProgress.get() : 0.0;
}

void SlicegateDeckState::publish() noexcept
{
    shownPad = running ? currentPad : noPad;
    shownNext = running ? nextPad : noPad;
    shownProgress = running ? elapsed / windowLength : 0.0;
}

//======================================================================================================================
// DeckPattern

void SlicegateDeckState::beginBlock() noexcept
{
    // Without quantise nothing waits for a beat.
    if (queuedStartPad >= 0 && world.setup (deck()).quantise == 0)
        comeToBeat();
    if (!running && queuedStartPad < 0)
        return;
    // A pad that was pressed on a stopped deck plays by itself, or waits until the deck comes to a beat; one that has run or
    // waited with the deck ends with it.
    const auto plays = deck().play.on != 0;
    if (startedPlaying && !plays)
    {
        running = false;
        nextPad = queuedStartPad = noPad;
        publish();
    }
    startedPlaying = plays;
}

bool SlicegateDeckState::isActive() const noexcept
{
    return running || !slicegateGain.isAt (1.0);
}

void SlicegateDeckState::comeToBeat() noexcept
{
    if (queuedStartPad >= 0 && !running)
        start (queuedStartPad);
    queuedStartPad = noPad;
}

PatternMove SlicegateDeckState::takeMove() noexcept
{
    return std::exchange (move, {});
}

void SlicegateDeckState::makePiece (Piece& piece, double step, int frames) noexcept
{
    if (running && step > 0.0)
        frames = static_cast<int> (
            std::clamp (std::ceil ((windowLength - elapsed) / step), 1.0, static_cast<double> (frames)));
    piece.frames = frames;
    piece.leads = false;

    const auto time = elapsed * beatsOfWindow / windowLength;
    const auto timeStep = step * beatsOfWindow / windowLength;
    if (running)
        makeOffsets (piece, time, timeStep);
    makeGains (piece, time, timeStep);

    if (running)
    {
        elapsed += step * frames;
        if (elapsed >= windowLength)
            endPass();
    }
    publish();
}

void SlicegateDeckState::makeOffsets (Piece& piece, double time, double timeStep) noexcept
{
    if (!times.isEnabled (currentPad))
        return;
    const auto& curve = times.audible (currentPad);
    if (staysAtOwnPlace (curve))
        return;
    piece.leads = true;
    // In reverse back is the way that the reading has come as well.
    const auto reach = alongDeck (-windowsBack * windowLength);
    Levels levels;
    if (follow (curve, timeCursor, time, timeStep, piece.frames, levels))
        // A distance in whole frames leaves a deck at the file's own speed on the frames that it is on.
        std::fill_n (piece.offsets.begin(), piece.frames, std::round ((1.0 - levels[0]) * reach));
    else
        for (size_t i = 0; i < static_cast<size_t> (piece.frames); ++i)
            piece.offsets[i] = (1.0 - levels[i]) * reach;
}

void SlicegateDeckState::makeGains (Piece& piece, double time, double timeStep) noexcept
{
    const auto wasOpen = slicegateGain.isAt (1.0);
    // A ramp begins half its length before its edge, so that its middle is on it.
    const auto begin = time + timeStep * 0.5 * GainRamp::steps;
    const auto& curve = volumes.audible (currentPad);
    auto holds = true;
    Levels levels;
    if (!running || !volumes.isEnabled (currentPad))
        levels[0] = 1.0;
    else if (begin + timeStep * piece.frames < beatsOfWindow)
        holds = follow (curve, volumeCursor, begin, timeStep, piece.frames, levels);
    else
    {
        holds = false;
        for (int i = 0; i < piece.frames; ++i)
            levels[static_cast<size_t> (i)] =
                curve.evaluate (std::min (begin + timeStep * i, beatsOfWindow), volumeCursor);
    }

    if (const auto held = std::clamp (levels[0], 0.0, 1.0); holds && slicegateGain.isAt (held))
        std::fill_n (piece.gains.begin(), piece.frames, static_cast<float> (held));
    else
        for (size_t i = 0; i < static_cast<size_t> (piece.frames); ++i)
        {
            const auto next = std::clamp (levels[holds ? 0 : i], 0.0, 1.0);
            // A curve that moves no faster than the ramp is followed as it is.
            if (!slicegateGain.isMoving() && std::abs (next - slicegateGain.value()) <= 1.0 / GainRamp::steps)
                slicegateGain.reset (next);
            else
                slicegateGain.setTarget (next);
            piece.gains[i] = static_cast<float> (slicegateGain.next());
        }
    piece.gates = !wasOpen || !slicegateGain.isAt (1.0);
}

void SlicegateDeckState::endPass() noexcept
{
    elapsed = std::fmod (elapsed, windowLength);
    const auto ended = currentPad;
    const auto goesOn = nextPad >= 0 || playMode (ended) == PlayMode::loop;
    if (nextPad >= 0)
        currentPad = nextPad;
    nextPad = noPad;
    running = goesOn;
    if (!advanceMode (ended) && times.isEnabled (ended))
        move = goesOn ? PatternMove { .frames = alongDeck (-windowLength) }
                      : PatternMove { .landsAtRead = true };
}
