#include "instruments/sampler/SamplerSlots.h"

namespace
{
constexpr double bendDown = 0.96, bendUp = 1.04;
constexpr int stretchBlock = 128;
}

SamplerVoice::Block SamplerSlots::blockOf (SamplerSlot& slot, const SamplerClock& clock) noexcept
{
    auto view = slot.view;
    view.loops = slot.isLooping();
    const int bend = slot.pitchBend;
    return { .sample = view,
             .sampleRate = static_cast<double> (slot.sampleRate.get()),
             .engineRate = world.engineRate,
             .beats = slot.beats,
             .bpm = slot.bpm,
             .synced = slot.sync != 0,
             .stretched = world.settings.bypassStretcher == 0,
             .bend = bend < 0   ? bendDown
                     : bend > 0 ? bendUp
                                : 1.0,
             .level = slot.pressLevel,
             .clock = clock,
             .work = world.voiceWork,
             .jumpsLeft = jumpsLeft };
}

void SamplerSlots::silence (SamplerSlot& slot)
{
    const CallbackLock lock (world.callbackLock, "silence sample");
    if (!slot.isEmpty())
        slot.voice.leave (blockOf (slot, {}));
    slot.lengthFrames = 0;
    slot.view = {};
    slot.playing = 0;
}

void SamplerSlots::clear (SamplerSlot& slot)
{
    const CallbackLock lock (world.callbackLock, "clear sample");
    silence (slot);
    slot.pitchBend = 0;
    slot.position = slot.peakLeft = slot.peakRight = slot.peakMonitor = 0.0;
    slot.gain = 0.5;
    const SampleFacts fresh;
    slot.beats = fresh.beats;
    slot.bpm = fresh.bpm;
    slot.speed = 1.0;
    slot.channels = fresh.channels;
    slot.sampleRate = fresh.sampleRate;
    slot.bitsPerSample = fresh.bitsPerSample;
    slot.beatStart = slot.beatEnd = 0;
    slot.playMode = oneShotMode;
    slot.followsVelocity = slot.isUnsaved = 0;
    slot.sampleNumber += 1;
}

SampleFacts SamplerSlots::factsOf (const SamplerSlot& slot) const
{
    const CallbackLock lock (world.callbackLock, "sample facts");
    return { slot.lengthFrames, slot.sampleRate, slot.channels,  slot.bitsPerSample,
             slot.beats,        slot.bpm,        slot.beatStart, slot.beatEnd };
}

SamplerVoice::Stretcher SamplerSlots::makeStretcher() const
{
    const auto rate = static_cast<float> (stretchRate.get());
    CElastiqueProIf* made = nullptr;
    CElastiqueProIf::CreateInstance (made, stretchBlock, 2, rate, 2);
    return { std::unique_ptr<CElastiqueProIf> (made), rate };
}

void SamplerSlots::changeStretcher (SamplerSlot& slot, SamplerVoice::Stretcher& next)
{
    const CallbackLock lock (world.callbackLock, "sampler stretcher");
    slot.voice.changeStretcher (blockOf (slot, {}), next);
}

void SamplerSlots::publish (SamplerSlot& slot, const SampleFacts& facts, SamplerVoice::Stretcher& stretcher)
{
    auto view = SampleView::of (slot.buffer.left(), slot.buffer.right(), facts);
    SampleReading::inspectSeam (view);
    slot.outline.take (slot.buffer.left(), slot.buffer.right(), facts.lengthFrames);

    const CallbackLock lock (world.callbackLock, "publish sample");
    slot.view = view;
    slot.beats = facts.beats;
    slot.bpm = facts.bpm;
    slot.channels = facts.channels;
    slot.sampleRate = facts.sampleRate;
    slot.bitsPerSample = facts.bitsPerSample;
    slot.beatStart = facts.beatStart;
    slot.beatEnd = facts.beatEnd;
    slot.voice.changeStretcher (blockOf (slot, {}), stretcher);
    slot.lengthFrames = facts.lengthFrames;
}
