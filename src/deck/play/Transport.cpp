#include "deck/play/Transport.h"

#include "deck/edit/DeckSnap.h"
#include "deck/edit/MarkEdit.h"
#include "deck/sync/MasterDeck.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double cueReachFrames = 588.0;
constexpr const char* playLocked = N_ ("*** Play Locked ***|Turn off Automix|for direct use");

bool isSlot (int slot) noexcept
{
    return slot >= 0 && slot < cueSlotCount;
}

double cueAt (const DeckPlayer& deck, int slot) noexcept
{
    return deck.marks.cues[static_cast<size_t> (slot)];
}

int currentSlot (DeckPlayer& deck) noexcept
{
    deck.play.currentCue = static_cast<int8_t> (std::clamp<int> (deck.play.currentCue, 0, cueSlotCount - 1));
    return deck.play.currentCue;
}
}

void Transport::playOrStop (DeckWorld& world, DeckPlayer& deck) noexcept
{
    if (deck.play.on == 0)
    {
        deck.play.on = 1;
        deck.sync.resync = 1;
    }
    else if (deck.play.cueHold != 0)
    {
        deck.play.cueHold = 0;
    }
    else
    {
        deck.play.on = 0;
    }

    if (deck.play.on != 0 && deck.isAtEnd())
        deck.place (0.0);
    MasterDeck::choose (world, deck);
}

void Transport::playPause (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    if (world.settings.automixOn != 0)
        return world.requests.ask (EngineRequest::askToStopAutomix, deckIndex);

    const CallbackLock lock (world.callbackLock, "playPause");
    playOrStop (world, *deck);
}

void Transport::playSynchronized (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    if (world.settings.automixOn != 0)
        return world.listeners.postMessage (playLocked, deckIndex);

    const CallbackLock lock (world.callbackLock, "playSynchronized");
    if (deck->play.on != 0)
        return;
    world.setup (*deck).sync = 1;
    deck->sync.oneShot = 1;
    playOrStop (world, *deck);
}

void Transport::storeCue (DeckWorld& world, DeckPlayer& deck, int slot) noexcept
{
    const MarkEdit edit (deck.marks, deck.edits, world.clock());
    if (const auto place = snapOf (world, deck).place())
        deck.marks.cues[static_cast<size_t> (slot)] = *place;
    world.requestSave (deck);
}

void Transport::returnToCue (DeckPlayer& deck) noexcept
{
    deck.head.declickFrom (deck.head.position);
    deck.play.cueHold = 0;
    deck.play.on = 0;
    deck.head.rate = 0.0;
    deck.placeLimited (std::max (0.0, cueAt (deck, currentSlot (deck))));
    deck.emptyRings();
}

bool Transport::isStoppedAtCue (const DeckPlayer& deck) noexcept
{
    return deck.play.on == 0
           && std::any_of (deck.marks.cues.begin(), deck.marks.cues.end(),
                           [&] (double cue) {
                               return cue > emptyCue
                                      && std::abs (cue - deck.heardPosition()) < cueReachFrames;
                           });
}

void Transport::cue (int deckIndex, bool pressed)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    if (world.settings.automixOn != 0)
        return world.listeners.postMessage (playLocked, deckIndex);

    const CallbackLock lock (world.callbackLock, "cue");
    const auto slot = currentSlot (*deck);

    if (deck->play.on != 0)
    {
        if (pressed || deck->play.cueHold != 0)
            returnToCue (*deck);
    }
    else if (!pressed)
    {
        returnToCue (*deck);
    }
    else if (isStoppedAtCue (*deck))
    {
        deck->play.on = 1;
        deck->play.cueHold = 1;
        deck->sync.resync = 1;
    }
    else
    {
        storeCue (world, *deck, slot);
    }
    MasterDeck::choose (world, *deck);
}

bool Transport::keepPhase (DeckWorld& world, DeckPlayer& deck, double& target) noexcept
{
    if (deck.play.on == 0 || world.setup (deck).sync == 0)
        return true;

    const auto grid = deck.grid();
    const auto beatHere = grid.nearestEvenBeat (deck.heardPosition());
    const auto beatThere = grid.nearestEvenBeat (target);
    const auto beat = deck.beatFrames();
    if (!beatHere.has_value() || !beatThere.has_value() || !(beat > 0.0))
        return false;

    const auto offset = deck.heardPosition() - *beatHere;
    if (std::abs (offset) > beat)
        return false;
    target = *beatThere + offset;
    if (target < 0.0)
        target += beat * std::ceil (-target / beat);
    return true;
}

void Transport::jumpToCue (int deckIndex, int slot)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !isSlot (slot))
        return;

    const CallbackLock lock (world.callbackLock, "jumpToCue");
    deck->play.currentCue = static_cast<int8_t> (slot);
    auto target = cueAt (*deck, slot);
    if (target <= emptyCue)
        return storeCue (world, *deck, slot);

    deck->loops.mode = noLoop;
    deck->loops.rolling = 0;
    if (!keepPhase (world, *deck, target))
        return;
    world.setup (*deck).timecodeAbsolute = 0; // a record would take the deck back at once
    deck->sync.resync = 1;
    deck->jumpTo (target);
    if (deck->play.on == 0)
        deck->emptyRings();
}

void Transport::setCue (int deckIndex, int slot)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !isSlot (slot))
        return;
    const CallbackLock lock (world.callbackLock, "setCue");
    storeCue (world, *deck, slot);
}

void Transport::deleteCue (int deckIndex, int slot)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !isSlot (slot))
        return;
    const CallbackLock lock (world.callbackLock, "deleteCue");
    const MarkEdit edit (deck->marks, deck->edits, world.clock());
    deck->marks.cues[static_cast<size_t> (slot)] = emptyCue;
    world.requestSave (*deck);
}

void Transport::cuePlay (int deckIndex, bool pressed)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    if (world.settings.automixOn != 0)
        return world.listeners.postMessage (playLocked, deckIndex);

    const CallbackLock lock (world.callbackLock, "cuePlay");
    const auto slot = currentSlot (*deck);
    const auto wasArmed = std::exchange (deck->play.cuePlayArmed, pressed && deck->play.on == 0);
    if (!pressed)
    {
        if (wasArmed && deck->play.on == 0)
            playOrStop (world, *deck);
    }
    else if (deck->play.on == 0)
    {
        if (!isStoppedAtCue (*deck))
            storeCue (world, *deck, slot);
    }
    else
    {
        returnToCue (*deck);
        MasterDeck::choose (world, *deck);
    }
}

void Transport::seekLocked (DeckPlayer& deck, double frames) noexcept
{
    auto target = juce::jlimit (0.0, static_cast<double> (deck.track.loadedFrames), frames);
    if (!keepPhase (world, deck, target))
        return;
    world.setup (deck).timecodeAbsolute = 0;
    deck.sync.resync = 1;
    deck.jumpTo (target);
    if (deck.play.on == 0)
        deck.emptyRings();
}

void Transport::seekFrames (int deckIndex, double frames)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !std::isfinite (frames))
        return;
    const CallbackLock lock (world.callbackLock, "seekFrames");
    seekLocked (*deck, frames);
}

void Transport::seekNormalised (int deckIndex, double value)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !std::isfinite (value))
        return;
    const CallbackLock lock (world.callbackLock, "seekNormalised");
    seekLocked (*deck, value * deck->track.loadedFrames);
}

void Transport::rewind (int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "rewind");
    if (deck->isEmpty())
        return;
    deck->jumpTo (0.0);
    if (deck->play.on == 0)
        deck->emptyRings();
}

void Transport::bendJog (int deckIndex, double value, double bendScale, double scratchScale)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !std::isfinite (value * bendScale) || !std::isfinite (value * scratchScale))
        return;
    const CallbackLock lock (world.callbackLock, "bendJog");
    if (deck->play.on != 0 && deck->jog.scratchOn == 0)
        deck->head.bend += value * bendScale;
    else
        deck->head.jog += value * scratchScale;
    deck->jog.lastTime = world.clock();
}

void Transport::setScratch (int deckIndex, bool on, bool touched)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "setScratch");
    if (touched)
    {
        deck->jog.touched = 1;
        deck->jog.lastTime = world.clock();
    }
    if (on)
    {
        deck->jog.scratchEnded = 0;
        if (deck->jog.scratchArmed != 0)
            deck->jog.scratchKeep = 1;
    }
    else if (deck->jog.scratchOn != 0)
    {
        deck->jog.scratchKeep = 0;
        deck->jog.scratchEnded = 1;
    }
    deck->jog.scratchOn = on ? 1 : 0;
}

void Transport::spinJog (int deckIndex, double speed)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !std::isfinite (speed))
        return;
    const CallbackLock lock (world.callbackLock, "spinJog");
    deck->jog.lastTime = world.clock();
    if (deck->jog.scratchOn != 0)
    {
        deck->head.jog += speed;
        return;
    }
    deck->jog.scratchOn = 1;
    deck->jog.scratchEnded = 0;
    deck->jog.scratchArmed = 1;
}

void Transport::dragJog (int deckIndex, double move, double gain)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !std::isfinite (move * gain))
        return;
    const CallbackLock lock (world.callbackLock, "dragJog");
    deck->head.jog += (deck->head.jog - move) * gain;
}

void Transport::setReverse (int deckIndex, bool on)
{
    if (auto* deck = world.deck (deckIndex))
        deck->play.reverse = on ? 1 : 0;
}

void Transport::setNudge (int deckIndex, int direction)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "setNudge");
    deck->play.nudge = static_cast<int8_t> (std::clamp (direction, -1, 1));
    if (direction == 0)
        deck->head.nudgeAccel = 0.0;
}

void Transport::setPitch (int deckIndex, double value)
{
    if (auto* deck = world.deck (deckIndex); deck != nullptr && std::isfinite (value))
        deck->tempo.pitch = juce::jlimit (0.0, 1.0, value);
}

void Transport::setKeyTuning (int deckIndex, double semitones)
{
    if (auto* deck = world.deck (deckIndex); deck != nullptr && std::isfinite (semitones))
        deck->tempo.keyTuning = juce::jlimit (-12.0, 12.0, semitones);
}

void Transport::setKeyLock (int deckIndex, bool on)
{
    if (auto* deck = world.deck (deckIndex))
        deck->tempo.keyLock = on ? 1 : 0;
}

void Transport::toggleSync (int deckIndex, bool oneShot)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "toggleSync");
    auto& sync = world.setup (*deck).sync;
    const auto leads = world.isStandalone != 0 && world.settings.masterDeck == deckIndex;
    if (sync == 0 && leads)
        return;
    sync = sync == 0 ? 1 : 0;
    if (sync != 0)
    {
        deck->sync.resync = 1;
        deck->sync.oneShot = oneShot ? 1 : 0;
    }
}

void Transport::setMaster (int deckIndex)
{
    if (world.deck (deckIndex) != nullptr)
        world.settings.masterDeck = static_cast<int8_t> (deckIndex);
}
