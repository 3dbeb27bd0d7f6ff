#include "deck/edit/LoopCommands.h"

#include "deck/edit/DeckSnap.h"
#include "deck/edit/MarkEdit.h"

#include <algorithm>
#include <utility>

namespace
{
int8_t limitedSize (int size) noexcept
{
    return static_cast<int8_t> (std::clamp (size, 0, loopSizeCount - 1));
}
}

void LoopCommands::leaveLoop (DeckPlayer& deck) noexcept
{
    const auto rolled = deck.loops.rolling != 0;
    deck.loops.mode = noLoop;
    deck.loops.rolling = 0;
    if (rolled)
        deck.jumpTo (deck.heardRollPosition());
}

void LoopCommands::toggleBeatLoop (int deckIndex, bool rolling, const char* reason)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, reason);
    if (deck->loops.mode == noLoop)
    {
        deck->loops.start = snapOf (world, *deck).placeOrPlain();
        deck->loops.mode = beatLoop;
        deck->loops.rolling = rolling ? 1 : 0;
        if (rolling)
            deck->head.roll = deck->loops.start + deck->readLead();
        world.setup (*deck).timecodeAbsolute = 0;
    }
    else if (deck->loops.mode == beatLoop)
    {
        // A loop of parts of a beat leaves the deck anywhere on its grid.
        if (deck->loops.rolling == 0 && loopBeats (deck->loopSizes.loop) < 1.0)
            deck->sync.resync = 1;
        if (!rolling)
            deck->loops.rolling = 0;
        leaveLoop (*deck);
    }
}

void LoopCommands::toggleLoop (int deck)
{
    toggleBeatLoop (deck, false, "toggleLoop");
}

void LoopCommands::toggleLeap (int deck)
{
    toggleBeatLoop (deck, true, "toggleLeap");
}

void LoopCommands::changeSize (int deckIndex, int step)
{
    if (const auto* deck = world.deck (deckIndex))
        setSize (deckIndex, deck->loopSizes.loop + (step > 0 ? 1 : -1));
}

void LoopCommands::changeMoveSize (int deckIndex, int step)
{
    if (const auto* deck = world.deck (deckIndex))
        setMoveSize (deckIndex, deck->loopSizes.move + (step > 0 ? 1 : -1));
}

void LoopCommands::setSize (int deckIndex, int size)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "loop size");
    deck->loopSizes.loop = limitedSize (size);
}

void LoopCommands::setMoveSize (int deckIndex, int size)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "loop move size");
    deck->loopSizes.move = limitedSize (size);
}

void LoopCommands::moveLoop (int deckIndex, int direction)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "moveLoop");
    const auto delta = (direction > 0 ? 1.0 : -1.0) * loopBeats (deck->loopSizes.move) * deck->beatFrames();
    if (!std::isfinite (delta))
        return;
    const auto move = [&] (Relaxed<double>& end)
    { end = juce::jlimit (0.0, static_cast<double> (deck->track.loadedFrames), end + delta); };
    if (deck->loops.mode == beatLoop)
        move (deck->loops.start);
    if (deck->loops.mode == manualLoop)
    {
        move (deck->loops.in);
        move (deck->loops.out);
    }
    deck->jumpTo (deck->heardPosition() + delta);
    if (deck->play.on == 0)
        deck->emptyRings();
}

void LoopCommands::loopIn (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "loopIn");
    if (const auto place = snapOf (world, *deck).place())
        deck->loops.in = *place;
    deck->loops.inSet = 1;
    if (deck->loops.outSet != 0 && deck->loops.out <= deck->loops.in)
    {
        // The end belongs to a loop that this start has left behind.
        deck->loops.outSet = 0;
        if (deck->loops.mode == manualLoop)
            deck->loops.mode = noLoop;
    }
}

void LoopCommands::loopOut (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "loopOut");
    if (deck->loops.mode != noLoop)
        return leaveLoop (*deck);
    if (deck->loops.inSet == 0)
        return;
    deck->loops.out = snapOf (world, *deck).placeOrPlain();
    if (deck->loops.out < deck->loops.in)
        std::swap (deck->loops.in, deck->loops.out);
    deck->loops.outSet = 1;
    deck->loops.mode = manualLoop;
}

void LoopCommands::reloop (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "reloop");
    if (deck->loops.inSet == 0 || deck->loops.outSet == 0)
        return;
    if (deck->loops.mode == manualLoop)
        deck->jumpTo (deck->loops.in);
    else if (deck->loops.mode == noLoop)
        deck->loops.mode = manualLoop;
}

void LoopCommands::toggleStartPoint (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "toggleStartPoint");
    const MarkEdit edit (deck->marks, deck->edits, world.clock());
    world.requestSave (*deck);
    if (deck->marks.startPointOn != 0)
    {
        deck->marks.startPointOn = 0;
        return;
    }
    if (const auto place = snapOf (world, *deck).place())
        deck->marks.startPoint = *place;
    deck->marks.startPointOn = 1;
}
