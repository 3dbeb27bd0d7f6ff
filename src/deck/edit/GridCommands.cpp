#include "deck/edit/GridCommands.h"

#include "deck/edit/MarkEdit.h"

#include <cmath>

namespace
{
constexpr double slowestBpm = 30.0, fastestBpm = 250.0;
constexpr double slowestByNumber = 32.0, fastestByNumber = 256.0;
constexpr int gridStep = 512;

/** Steps and places of the table that differ by less are one: two ratios may undo each other. */
constexpr double same = 1.0e-9;

bool isPlayable (double bpm)
{
    return bpm >= slowestBpm && bpm <= fastestBpm;
}

/** Has so many beats read where `per` were, around the downbeat. */
bool changeTempo (TrackMarks& marks, const GridReading& reading)
{
    const auto ratio = static_cast<double> (reading.beats) / reading.per;
    if (!isPlayable (marks.bpm * ratio))
        return false;
    const auto downbeat = marks.tableOffset + marks.downbeatIndex * marks.tableStep;
    auto step = marks.tableStep / ratio;
    if (std::abs (step - 1.0) < same)
        step = 1.0;
    const auto index = std::floor (downbeat / step + same);
    const auto offset = downbeat - index * step;
    marks.tableStep = step;
    marks.tableOffset = offset < same ? 0.0 : offset;
    marks.downbeatIndex = static_cast<int32_t> (index);
    marks.bpm = marks.bpm * ratio;
    return true;
}

bool moveDownbeat (TrackMarks& marks, const BeatGrid& grid, int halfBeats)
{
    if (grid.fixedGrid)
    {
        const auto moved =
            marks.downbeatPosition + static_cast<int32_t> (std::lround (halfBeats * grid.period()));
        if (moved > grid.loadedFrames)
            return false;
        marks.downbeatPosition = moved;
        return true;
    }
    const auto moved = marks.downbeatIndex + halfBeats;
    if (moved >= grid.beatCount())
        return false;
    marks.downbeatIndex = moved;
    marks.downbeatPosition = static_cast<int32_t> (std::lround (grid.beatAt (moved)));
    return true;
}
}

bool GridCommands::read (int deckIndex, const GridReading& reading)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return false;
    {
        const CallbackLock lock (world.callbackLock, "read the grid");
        const auto grid = deck->grid();
        if (grid.beatCount() < 1)
            return false;
        const MarkEdit edit (deck->marks, deck->edits, world.clock());
        if (!(reading.changesTempo() ? changeTempo (deck->marks, reading)
                                     : moveDownbeat (deck->marks, grid, reading.halfBeatsOn)))
            return false;
        deck->marks.confidence = TrackAnalysis::sureByHand;
    }
    world.requestSave (*deck);
    return true;
}

void GridCommands::setDownbeat (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    {
        const CallbackLock lock (world.callbackLock, "setDownbeat");
        const auto grid = deck->grid();
        const auto entry = grid.nearestEntry (deck->heardPosition());
        if (!entry)
            return;
        const MarkEdit edit (deck->marks, deck->edits, world.clock());
        // Entries of a fixed grid are counted anew with every change of it: only the place means anything.
        if (!grid.fixedGrid)
            deck->marks.downbeatIndex = *entry;
        deck->marks.downbeatPosition = static_cast<int32_t> (std::lround (grid.beatAt (*entry)));
    }
    world.requestSave (*deck);
}

void GridCommands::scaleTempo (int deckIndex, double factor)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "scaleTempo");
    const auto bpm = deck->marks.bpm * factor;
    if (!isPlayable (bpm) || bpm < deck->marks.bpmAverage * 0.5 || bpm > deck->marks.bpmAverage * 2.0)
        return;
    const MarkEdit edit (deck->marks, deck->edits, world.clock());
    deck->marks.bpm = bpm;
}

void GridCommands::setTempo (int deckIndex, double bpm)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !std::isfinite (bpm))
        return;
    const CallbackLock lock (world.callbackLock, "setTempo");
    const MarkEdit edit (deck->marks, deck->edits, world.clock());
    deck->marks.bpm = juce::jlimit (slowestByNumber, fastestByNumber, bpm);
}

void GridCommands::moveGrid (int deckIndex, int direction)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "moveGrid");
    if (deck->marks.fixedGrid == 0)
        return;
    const MarkEdit edit (deck->marks, deck->edits, world.clock(), EditHistory::Kind::gridMove);
    const auto moved = deck->marks.downbeatPosition + (direction > 0 ? gridStep : -gridStep);
    deck->marks.downbeatPosition = juce::jlimit (0, deck->track.loadedFrames.get(), moved);
}

void GridCommands::toggleGridMode (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "toggleGridMode");
    const MarkEdit edit (deck->marks, deck->edits, world.clock());
    deck->marks.fixedGrid = deck->marks.fixedGrid == 0 ? 1 : 0;
}

void GridCommands::tapTempo (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const auto now = world.clock();
    const CallbackLock lock (world.callbackLock, "tapTempo");
    auto& tap = deck->tap;
    if (tap.taps == 0 || millisecondsBetween (tap.last, now) > tapPauseMs)
    {
        tap = { 1, now, now };
        return;
    }
    tap.last = now;
    if (const auto elapsed = millisecondsBetween (tap.first, now); elapsed > 0)
    {
        const MarkEdit edit (deck->marks, deck->edits, world.clock(), EditHistory::Kind::tap);
        // After n taps n - 1 beats have gone by; `taps` still counts without this one.
        const auto bpm = juce::jlimit (slowestBpm, fastestBpm, tap.taps * 60000.0 / elapsed);
        deck->marks.bpm = bpm;
        deck->marks.bpmAverage = bpm;
    }
    ++tap.taps;
}

void GridCommands::analyseAgain (int deckIndex)
{
    if (const auto* deck = world.deck (deckIndex))
        world.measureTempo (deckIndex, deck->marks.bpm);
}

bool GridCommands::undo (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return false;
    const CallbackLock lock (world.callbackLock, "undo");
    world.requestSave (*deck);
    return deck->edits.undo (deck->marks);
}

bool GridCommands::redo (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return false;
    const CallbackLock lock (world.callbackLock, "redo");
    world.requestSave (*deck);
    return deck->edits.redo (deck->marks);
}
