#include "deck/play/DeckBlock.h"

#include "deck/sync/MasterDeck.h"
#include "deck/sync/TempoSync.h"
#include "support/FadeCurve.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr uint32_t scratchTimeOutMs = 26, touchTimeOutMs = 2000;

void updateTempo (DeckWorld& world, DeckPlayer& deck) noexcept
{
    if (deck.jog.scratchOn != 0 || deck.play.followsRecord != 0)
        return;
    const auto tempo = TempoSync::followed (world, deck).tempo;
    if (auto& sync = world.setup (deck).sync; sync != 0)
    {
        if (deck.sync.oneShot != 0)
            sync = deck.sync.oneShot = 0;
        deck.tempo.pitch = (tempo - 1.0) / world.pitchRange + 0.5;
    }
    deck.tempo.factor = TempoSync::withHand (world, deck, tempo);
}

ReadDrive driveOf (const DeckWorld& world, DeckPlayer& deck) noexcept
{
    ReadDrive drive;
    drive.speedRatio = deck.track.sampleRate / world.engineRate;
    drive.smoothing5ms = world.smoothing5ms;
    drive.decay100ms = world.decay100ms;
    drive.isPlaying = deck.play.on != 0 && deck.jog.scratchOn == 0;
    drive.isRolling = deck.loops.rolling != 0;
    drive.nudge = deck.play.nudge;
    drive.fadeFrames = std::max (1, static_cast<int> (FadeCurve::jumpSeconds * world.engineRate));
    drive.region = deck.region();
    drive.record = deck.play.followsRecord != 0 ? &deck.record : nullptr;
    return drive;
}

VoiceBlock voiceBlockOf (DeckWorld& world, DeckPlayer& deck) noexcept
{
    return { .source = deck.readSource(),
             .drive = driveOf (world, deck),
             .tempo = deck.tempo.factor,
             .keyTuning = deck.tempo.keyTuning,
             .isStretched = world.isStretched (deck),
             .engineRate = world.engineRate,
             .noise = world.noise,
             .work = world.voiceWork,
             .pattern = deck.pattern,
             .isScratched = deck.jog.scratchOn != 0 };
}

void stop (DeckWorld& world, DeckPlayer& deck) noexcept
{
    deck.play.on = 0;
    deck.play.cueHold = 0;
    MasterDeck::choose (world, deck);
}
}

void DeckBlock::releaseScratch (DeckPlayer& deck) noexcept
{
    if (deck.jog.scratchEnded != 0 && deck.jog.scratchOn == 0 && deck.head.jog == 0.0)
    {
        deck.jog.scratchEnded = 0;
        deck.sync.resync = 1;
    }
}

void DeckBlock::leaveTrack (DeckWorld& world, DeckPlayer& deck) noexcept
{
    if (deck.track.loadedFrames > 0)
        deck.voice.leaveTrack (deck.head, voiceBlockOf (world, deck));
}

void DeckBlock::render (DeckWorld& world, DeckPlayer& deck, float* left, float* right, int frames) noexcept
{
    if (deck.track.loadedFrames < 1)
    {
        if (deck.play.on != 0)
            stop (world, deck);
        deck.voice.renderTail (left, right, frames);
        return;
    }

    updateTempo (world, deck);
    deck.voice.render (deck.head, voiceBlockOf (world, deck), left, right, frames);
    deck.publishHeard();

    if (deck.play.on != 0 && deck.jog.scratchOn == 0)
        deck.play.elapsedOutput += frames;
    const auto heard = deck.heardPosition();
    if (deck.play.on != 0 && deck.play.followsRecord == 0 && heard > 0.0 && heard >= deck.track.loadedFrames)
        stop (world, deck);
}

void DeckBlock::checkTimeOuts (DeckWorld& world, DeckPlayer& deck) noexcept
{
    if (deck.jog.scratchArmed == 0 && deck.jog.touched == 0)
        return;
    const auto elapsed = millisecondsBetween (deck.jog.lastTime, world.clock());

    if (deck.jog.scratchArmed != 0 && elapsed >= scratchTimeOutMs)
    {
        deck.jog.scratchArmed = 0;
        if (deck.jog.scratchKeep != 0)
        {
            deck.jog.scratchKeep = 0;
        }
        else
        {
            deck.jog.scratchOn = 0;
            deck.jog.scratchEnded = 1;
        }
    }
    if (elapsed > touchTimeOutMs)
        deck.jog.touched = 0;
}
