#include "instruments/sampler/Sampler.h"

#include <algorithm>
#include <cmath>

// The sampler's part on the audio thread, and the presses that change what it plays.

namespace
{
/** A pad at its rest of 0.5 plays its sample as it is. */
constexpr double padScale = 2.0;

/** When the master jumps, all synced pads follow, some blocks one after the other: a jump takes 5 % of a block of so many. */
constexpr int framesPerJump = 64;

template <typename Peak>
void raise (Peak& peak, const float* samples, int frames, double gain) noexcept
{
    const auto range = juce::FloatVectorOperations::findMinAndMax (samples, frames);
    const auto here = gain * static_cast<double> (std::max (-range.getStart(), range.getEnd()));
    if (here > peak)
        peak = here;
}

/** Adds a pair to a bus at a gain that may move. */
void mix (float* const bus[2], const float* left, const float* right, int frames, GainRamp& gain) noexcept
{
    if (!gain.isMoving())
    {
        const auto fixed = static_cast<float> (gain.value());
        juce::FloatVectorOperations::addWithMultiply (bus[0], left, fixed, frames);
        juce::FloatVectorOperations::addWithMultiply (bus[1], right, fixed, frames);
        return;
    }
    for (int i = 0; i < frames; ++i)
    {
        const auto here = static_cast<float> (gain.next());
        bus[0][i] += left[i] * here;
        bus[1][i] += right[i] * here;
    }
}
}

void Sampler::padPress (int index, int velocity) noexcept
{
    auto* const slot = find (index);
    if (slot == nullptr)
        return;
    const CallbackLock lock (desk.world.callbackLock, "pad");
    if (velocity < 1 ? slot->playMode != triggerMode : slot->isEmpty())
        return;
    const auto was = slot->playing != 0;
    const auto next = velocity >= 1 && (slot->playMode == retriggerMode || !was);
    if (velocity < 1 && !was)
        return;

    slot->playing = next ? 1 : 0;
    if (next)
    {
        slot->pressLevel = slot->followsVelocity == 0
                               ? 1.0f
                               : static_cast<float> (std::min (velocity, strongest)) / strongest;
        // A loop joins the beats where they are; what plays to its end begins with its begin, in time from the next beat on.
        slot->position = 0.0;
        slot->voice.startFrom (slot->position, !slot->isLooping());
    }
    else
    {
        slot->peakLeft = slot->peakRight = slot->peakMonitor = 0.0;
    }
}

void Sampler::setMasterGain (double gain) noexcept
{
    for (size_t i = 0; i < desk.slots.size(); ++i)
        desk.slots[i].masterGain = desk.world.settings.samplerLevels[i] = std::clamp (gain, 0.0, 1.0);
}

void Sampler::setSync (bool on) noexcept
{
    const CallbackLock lock (desk.world.callbackLock, "sampler sync");
    for (auto& slot : desk.slots)
        slot.sync = on ? 1 : 0;
}

void Sampler::setMonitor (bool on) noexcept
{
    const CallbackLock lock (desk.world.callbackLock, "sampler monitor");
    for (auto& slot : desk.slots)
        slot.monitor = on ? 1 : 0;
}

void Sampler::setPlayMode (int index, int mode) noexcept
{
    auto* const slot = find (index);
    if (slot == nullptr || mode < 0 || mode >= samplePlayModeCount)
        return;
    slot->playMode = mode;
    askToKeep();
}

void Sampler::setFollowsVelocity (int index, bool on) noexcept
{
    if (auto* const slot = find (index))
    {
        slot->followsVelocity = on ? 1 : 0;
        askToKeep();
    }
}

void Sampler::setPadSync (int index, bool on) noexcept
{
    if (auto* const slot = find (index))
        slot->sync = on ? 1 : 0;
}

void Sampler::askForLoop() noexcept
{
    const CallbackLock lock (desk.world.callbackLock, "loop recorder");
    const auto* deck = desk.world.deck (ghostDeck);
    if (deck == nullptr)
        return;
    pendingLoop = GhostTake::of (*deck, ghostLength);
    if (pendingLoop)
        desk.world.requests.ask (EngineRequest::recordLoop, 0);
}

void Sampler::askToKeep() noexcept
{
    desk.world.requests.ask (EngineRequest::keepPads, 0);
}

void Sampler::renderSlot (int index, const SamplerClock& clock, float* const bus[2], float* const monitor[2],
                          int frames) noexcept
{
    auto* const slot = find (index);
    if (slot == nullptr)
        return;
    const auto isOn = slot->playing != 0 && slot->lengthFrames >= 1;
    const auto gain = padScale * slot->gain * slot->masterGain;
    const auto cue = slot->monitor != 0 ? 1.0 : 0.0;
    if (!isOn && !slot->voice.isSounding())
    {
        slot->level.reset (gain);
        slot->cueLevel.reset (cue);
        return;
    }

    auto* const* made = piece.getArrayOfWritePointers();
    if (!slot->voice.render (desk.blockOf (*slot, clock), isOn, made[0], made[1], frames) && isOn)
        slot->playing = 0;
    slot->position = slot->playing != 0 ? slot->voice.heardFrame() : 0.0;
    slot->speed = slot->voice.speed();

    slot->level.setSampleRate (desk.world.engineRate);
    slot->cueLevel.setSampleRate (desk.world.engineRate);
    slot->level.setTarget (gain);
    slot->cueLevel.setTarget (cue);
    mix (bus, made[0], made[1], frames, slot->level);
    raise (slot->peakLeft, made[0], frames, gain);
    raise (slot->peakRight, made[1], frames, gain);
    if (slot->cueLevel.isAt (0.0))
        return;
    mix (monitor, made[0], made[1], frames, slot->cueLevel);
    raise (slot->peakMonitor, made[0], frames, cue);
    raise (slot->peakMonitor, made[1], frames, cue);
}

void Sampler::render (float* const bus[2], float* const monitor[2], int frames) noexcept
{
    const auto clock = SamplerClock::of (desk.world, host, frames);
    for (int done = 0; done < frames;)
    {
        const auto count = std::min (frames - done, piece.getNumSamples());
        auto here = clock;
        here.frames = count;
        here.phaseAtEnd = clock.phaseAt (done + count);
        desk.jumpsLeft = std::max (1, count / framesPerJump);
        float* const busHere[] { bus[0] + done, bus[1] + done };
        float* const monitorHere[] { monitor[0] + done, monitor[1] + done };
        for (int slot = 0; slot < SamplerSlots::slotCount; ++slot)
            renderSlot (slot, here, busHere, monitorHere, count);
        done += count;
    }
}
