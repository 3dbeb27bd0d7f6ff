#include "deck/LoopCommands.h"

#include "deck/EditHistory.h"
#include "deck/Snap.h"

#include <algorithm>
#include <utility>

namespace
{
void stepSize (Relaxed<int8_t>& size, int step) noexcept
{
    size = static_cast<int8_t> (std::clamp (size + (step > 0 ? 1 : -1), 0, loopSizeCount - 1));
}
}

void LoopCommands::leaveLoop (DeckPlayer& deck) noexcept
{
    const auto rolled = deck.rollingLoop != 0;
    deck.loopMode = noLoop;
    deck.rollingLoop = 0;
    if (rolled)
        deck.jumpTo (deck.heardRollPosition());
}

void LoopCommands::toggleBeatLoop (int deckIndex, bool rolling, const char* reason)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, reason);
    if (deck->loopMode == noLoop)
    {
        deck->loopStart = Snap::heardPlaceOrPlain (world, *deck);
        deck->loopMode = beatLoop;
        deck->rollingLoop = rolling ? 1 : 0;
        if (rolling)
            deck->rollPosition = deck->loopStart + deck->readLead();
        world.setup (*deck).timecodeAbsolute = 0;
    }
    else if (deck->loopMode == beatLoop)
    {
        // A loop of parts of a beat leaves the deck anywhere on its grid.
        if (deck->rollingLoop == 0 && loopBeats (deck->loopSize) < 1.0)
            deck->resyncRequest = 1;
        if (!rolling)
            deck->rollingLoop = 0;
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
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "loop size");
    stepSize (deck->loopSize, step);
}

void LoopCommands::changeMoveSize (int deckIndex, int step)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "loop move size");
    stepSize (deck->loopMoveSize, step);
}

void LoopCommands::moveLoop (int deckIndex, int direction)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "moveLoop");
    const auto delta = (direction > 0 ? 1.0 : -1.0) * loopBeats (deck->loopMoveSize) * deck->beatFrames();
    if (!std::isfinite (delta))
        return;
    const auto move = [&] (Relaxed<double>& end)
    { end = juce::jlimit (0.0, static_cast<double> (deck->loadedFrames), end + delta); };
    if (deck->loopMode == beatLoop)
        move (deck->loopStart);
    if (deck->loopMode == manualLoop)
    {
        move (deck->loopIn);
        move (deck->loopOut);
    }
    deck->jumpTo (deck->heardPosition() + delta);
    if (deck->playState == 0)
        deck->emptyRings();
}

void LoopCommands::loopIn (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "loopIn");
    if (const auto place = Snap::heardPlace (world, *deck))
        deck->loopIn = *place;
    deck->loopInSet = 1;
    if (deck->loopOutSet != 0 && deck->loopOut <= deck->loopIn)
    {
        // The end belongs to a loop that this start has left behind.
        deck->loopOutSet = 0;
        if (deck->loopMode == manualLoop)
            deck->loopMode = noLoop;
    }
}

void LoopCommands::loopOut (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "loopOut");
    if (deck->loopMode != noLoop)
        return leaveLoop (*deck);
    if (deck->loopInSet == 0)
        return;
    deck->loopOut = Snap::heardPlaceOrPlain (world, *deck);
    if (deck->loopOut < deck->loopIn)
        std::swap (deck->loopIn, deck->loopOut);
    deck->loopOutSet = 1;
    deck->loopMode = manualLoop;
}

void LoopCommands::reloop (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "reloop");
    if (deck->loopInSet == 0 || deck->loopOutSet == 0)
        return;
    if (deck->loopMode == manualLoop)
        deck->jumpTo (deck->loopIn);
    else if (deck->loopMode == noLoop)
        deck->loopMode = manualLoop;
}

void LoopCommands::toggleStartPoint (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "toggleStartPoint");
    const MarkEdit edit (*deck);
    if (deck->startPointOn != 0)
    {
        deck->startPointOn = 0;
        return;
    }
    if (const auto place = Snap::heardPlace (world, *deck))
        deck->startPoint = *place;
    deck->startPointOn = 1;
}
