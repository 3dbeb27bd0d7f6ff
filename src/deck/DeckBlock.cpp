#include "deck/DeckBlock.h"

#include "deck/DeckReader.h"
#include "deck/Transport.h"

#include <algorithm>
#include <cmath>

namespace
{
// Rings hold 8192 frames, so a larger block of the host is rendered in pieces.
constexpr int largestPiece = 4096;

constexpr uint32_t scratchTimeOutMs = 26, touchTimeOutMs = 2000;
constexpr double nudgeUp = 1.04, nudgeDown = 0.96;
constexpr double slowestStretch = 0.5, fastestStretch = 1.5;

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

void setStretcher (DeckPlayer& deck) noexcept
{
    const auto stretch = 1.0 / std::clamp (deck.tempo.get(), slowestStretch, fastestStretch);
    auto pitch = static_cast<float> (deck.keyLock != 0 ? std::exp2 (deck.keyTuning / 12.0) : 1.0 / stretch);
    deck.stretcher->setStretchAndPitch (static_cast<float> (stretch), &pitch, 0);
}

/** Renders until the rings hold `frames` frames. */
void fillRings (DeckWorld& world, DeckPlayer& deck, const ReaderBlock& block, bool stretching,
                int frames) noexcept
{
    auto* const* in = world.stretcherInput.getArrayOfWritePointers();
    auto* const* out = world.stretcherOutput.getArrayOfWritePointers();

    while (deck.ringLeft.available() < frames)
    {
        if (!stretching)
        {
            const auto count = frames - deck.ringLeft.available();
            readDeck (deck, block, world.noise, in[0], in[1], count);
            deck.ringLeft.write (in[0], count);
            deck.ringRight.write (in[1], count);
            continue;
        }

        const auto count =
            std::clamp (deck.stretcher->getFramesNeeded(), 0, world.stretcherInput.getNumSamples());
        readDeck (deck, block, world.noise, in[0], in[1], count);
        const float* const inputs[] { in[0], in[1] };
        float* const outputs[] { out[0], out[1] };
        if (deck.stretcher->process (inputs, count, outputs) != 0)
        {
            std::fill_n (out[0], stretcherBlock, 0.0f);
            std::fill_n (out[1], stretcherBlock, 0.0f);
        }
        deck.ringLeft.write (out[0], stretcherBlock);
        deck.ringRight.write (out[1], stretcherBlock);
    }
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
    const auto stretching = deck.stretcher != nullptr && world.settings.bypassStretcher == 0;
    if (stretching)
        setStretcher (deck);

    ReaderBlock block;
    block.speedRatio = deck.sampleRate / world.engineRate;
    block.playFactor = stretching ? 1.0 : deck.tempo.get();
    block.smoothing5ms = world.smoothing5ms;
    block.decay100ms = world.decay100ms;
    block.leftGain = std::clamp (2.0 * (1.0 - deck.balance), 0.0, 1.0);
    block.rightGain = std::clamp (2.0 * deck.balance, 0.0, 1.0);

    for (int done = 0; done < frames;)
    {
        const auto piece = std::min (frames - done, largestPiece);
        fillRings (world, deck, block, stretching, piece);
        deck.ringLeft.read (left + done, piece);
        deck.ringRight.read (right + done, piece);
        done += piece;
    }

    if (deck.playState != 0 && deck.scratchOn == 0)
        deck.elapsedOutput += frames;
    if (deck.playState != 0 && deck.position > 0.0 && deck.position >= deck.loadedFrames)
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
