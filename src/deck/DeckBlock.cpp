#include "deck/DeckBlock.h"

#include "deck/DeckReader.h"
#include "deck/Transport.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr uint32_t scratchTimeOutMs = 26, touchTimeOutMs = 2000;
constexpr double nudgeUp = 1.04, nudgeDown = 0.96;

/** The speed factor of the fader, or of the reference while Sync is on. */
double followedTempo (DeckWorld& world, DeckPlayer& deck) noexcept
{
    const double range = world.pitchRange;
    auto fromFader = [range] (double pitch) { return 1.0 + (pitch - 0.5) * range; };

    auto& sync = world.setup (deck).sync;
    if (sync == 0)
        return fromFader (deck.pitch);

    auto tempo = fromFader (deck.pitch);
    if (deck.bpm > 0.0)
    {
        if (world.isStandalone == 0)
            tempo = world.hostBpm / deck.bpm;
        else if (const auto* master = world.deck (world.settings.masterDeck);
                 master != nullptr && master != &deck)
            tempo = master->bpm / deck.bpm * fromFader (master->pitch);
    }
    if (deck.oneShotSync != 0)
        sync = deck.oneShotSync = 0;
    deck.pitch = (tempo - 1.0) / range + 0.5;
    return tempo;
}

void updateTempo (DeckWorld& world, DeckPlayer& deck) noexcept
{
    if (deck.scratchOn != 0)
        return;
    auto tempo = followedTempo (world, deck) - deck.bend;
    if (deck.nudge != 0)
        tempo *= deck.nudge > 0 ? nudgeUp : nudgeDown;
    deck.tempo = tempo;
}

void stop (DeckWorld& world, DeckPlayer& deck) noexcept
{
    deck.playState = 0;
    deck.cueHold = 0;
    Transport::chooseMaster (world, deck);
}
}

void DeckBlock::releaseScratch (DeckPlayer& deck) noexcept
{
    if (deck.scratchEnded != 0 && deck.jogValue == 0.0)
    {
        deck.scratchEnded = 0;
        deck.resyncRequest = 1;
    }
}

void DeckBlock::render (DeckWorld& world, DeckPlayer& deck, float* left, float* right, int frames) noexcept
{
    if (deck.loadedFrames < 1)
    {
        if (deck.playState != 0)
            stop (world, deck);
        return;
    }

    updateTempo (world, deck);
    ReaderBlock block;
    block.speedRatio = deck.sampleRate / world.engineRate;
    block.smoothing5ms = world.smoothing5ms;
    block.decay100ms = world.decay100ms;
    block.leftGain = std::clamp (2.0 * (1.0 - deck.balance), 0.0, 1.0);
    block.rightGain = std::clamp (2.0 * deck.balance, 0.0, 1.0);

    block.course = Course (deck);
    findNextBeat (deck);

    deck.voice.render (world, deck, block, left, right, frames);
    deck.publishHeard();

    if (deck.playState != 0 && deck.scratchOn == 0)
        deck.elapsedOutput += frames;
    const auto heard = deck.heardPosition();
    if (deck.playState != 0 && heard > 0.0 && heard >= deck.loadedFrames)
        stop (world, deck);
}

void DeckBlock::checkTimeOuts (DeckWorld& world, DeckPlayer& deck) noexcept
{
    if (deck.scratchArmed == 0 && deck.jogTouched == 0)
        return;
    const auto elapsed = millisecondsBetween (deck.lastJogTime, world.clock());

    if (deck.scratchArmed != 0 && elapsed >= scratchTimeOutMs)
    {
        deck.scratchArmed = 0;
        if (deck.scratchKeep != 0)
        {
            deck.scratchKeep = 0;
        }
        else
        {
            deck.scratchOn = 0;
            deck.scratchEnded = 1;
        }
    }
    if (elapsed > touchTimeOutMs)
        deck.jogTouched = 0;
}
