#include "deck/play/DeckBlock.h"
#include "deck/sync/PhaseAlignment.h"
#include "engine/CPlatterdex.h"
#include "support/OnePole.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <cmath>

// One block of audio, from the host's buffer to the recorder. The stages run in the order of processBlock() at the end
// of this file; each has the name and the place that the whole system gives it.

namespace
{
/** From this size on a block brings the decks no input. */
constexpr int tooLongForInput = 16384;

/** Channels of the host's buffer. */
enum Channel
{
    masterLeft,
    masterRight,
    monitorLeft,
    monitorRight,
    firstDeckLeft,
    samplerLeft = 12
};

struct Block
{
    CPlatterdex& engine;
    juce::AudioBuffer<float>& buffer;
    const int frames;
    const double sampleRate;

    float* channel (int index) const noexcept { return buffer.getWritePointer (index); }
    ChannelPair pair (int left) const noexcept { return { channel (left), channel (left + 1), frames }; }
    ChannelPair pair (const DeckPlayer& deck) const noexcept { return pair (firstDeckLeft + 2 * deck.index); }
};

PX_AUDIO_THREAD void takeSampleRate (Block& block)
{
    if (block.engine.decks.engineRate != block.sampleRate)
    {
        block.engine.decks.engineRate = block.sampleRate;
        block.engine.preview.setOutputRate (block.sampleRate);
        for (auto& channel : block.engine.channels)
            channel.setSampleRate (block.sampleRate);
        for (auto& line : block.engine.lineThroughs)
            line.setSampleRate (block.sampleRate);
        for (auto& slot : block.engine.vstSlots)
            slot.setSampleRate (block.sampleRate);
    }
}

PX_AUDIO_THREAD void askHostForPosition (Block& block)
{
    block.engine.host.update (block.engine.getPlayHead(), block.frames / block.sampleRate);
    block.engine.decks.hostBpm = block.engine.host.bpm;
}

PX_AUDIO_THREAD void computeCoefficients (Block& block)
{
    block.engine.decks.smoothing5ms = OnePole::coefficient (0.005, block.sampleRate);
    block.engine.decks.decay100ms = OnePole::coefficient (0.1, block.sampleRate);
    block.engine.limiter.setRate (block.sampleRate);
    block.engine.monitor.setRate (block.sampleRate, block.engine.limiter.latency());
    block.engine.masterMeters.setRate (block.sampleRate);
}

PX_AUDIO_THREAD void advanceCrossfaderAndAutomix (Block& block)
{
    block.engine.automix.advance (block.frames * 1000.0 / block.sampleRate);
}

PX_AUDIO_THREAD void takeDeckInputs (Block& block)
{
    if (auto& probe = block.engine.latencyProbe; probe.isRunning())
        probe.listen (block.channel (2 * probe.pair()), block.channel (2 * probe.pair() + 1), block.frames,
                      block.sampleRate);
    for (auto& deck : block.engine.decks.decks)
    {
        deck->scratchFrames = 0;
        if (block.frames >= tooLongForInput)
            continue;
        const auto pair = juce::jlimit (0, 3, static_cast<int> (block.engine.decks.setup (*deck).inputPair));
        for (int side = 0; side < 2; ++side)
            deck->scratchBuffer.copyFrom (side, 0, block.buffer, 2 * pair + side, 0, block.frames);
        deck->scratchFrames = block.frames;
    }
}

PX_AUDIO_THREAD void clearOutputs (Block& block)
{
    block.buffer.clear();
}

PX_AUDIO_THREAD void releaseScratches (Block& block)
{
    for (auto& deck : block.engine.decks.decks)
        DeckBlock::releaseScratch (*deck);
}

PX_AUDIO_THREAD void alignPhases (Block& block)
{
    PhaseAlignment::run (block.engine.decks, block.engine.host);
}

PX_AUDIO_THREAD void addLineThrough (Block& block, DeckPlayer& deck)
{
    const auto& setup = block.engine.decks.setup (deck);
    block.engine.lineThroughs[static_cast<size_t> (deck.index)].add (
        block.pair (deck), deck.scratchBuffer, deck.scratchFrames,
        setup.lineThrough != 0 ? setup.lineGain.get() : 0.0);
}

PX_AUDIO_THREAD void runChannel (Block& block, DeckPlayer& deck)
{
    auto& world = block.engine.decks;
    auto& channel = block.engine.channels[static_cast<size_t> (deck.index)];
    const auto& setup = world.setup (deck);
    const auto pair = block.pair (deck);
    block.engine.smartKnobs.run (deck.index);
    channel.applyBalance (pair, world.smoothing5ms);
    addLineThrough (block, deck);
    channel.equalise (pair, block.sampleRate);
    channel.runEffects (pair, deck.marks.bpm * deck.tempo.factor);
    channel.tapCue (pair, block.pair (monitorLeft), setup.pfl != 0);
    channel.followAutogain (::Channel::cappedAutogain (deck.track.autogain, deck.track.peak),
                            deck.play.on != 0, block.frames / block.sampleRate);
    const auto target = channel.targetGain (world.settings, setup.crossfaderSide);
    channel.applyFader (pair, target, world.smoothing5ms);
}

PX_AUDIO_THREAD void renderDecks (Block& block)
{
    auto& world = block.engine.decks;
    if (world.deck (world.settings.masterDeck) == nullptr)
        return;
    auto plays = false;
    for (auto& deck : world.decks)
    {
        const auto pair = block.pair (*deck);
        block.engine.timecodes[static_cast<size_t> (deck->index)].feed();
        DeckBlock::render (world, *deck, pair.left, pair.right, block.frames);
        plays = plays || deck->play.on != 0;
        runChannel (block, *deck);
        DeckBlock::checkTimeOuts (world, *deck);
    }
    world.pacing.setSounding (plays);
}

PX_AUDIO_THREAD void clearResyncRequests (Block& block)
{
    for (auto& deck : block.engine.decks.decks)
        deck->sync.resync = 0;
    block.engine.automix.handOverNearEnd();
}

PX_AUDIO_THREAD void runSampler (Block& block)
{
    float* const bus[] { block.channel (samplerLeft), block.channel (samplerLeft + 1) };
    float* const monitor[] { block.channel (monitorLeft), block.channel (monitorLeft + 1) };
    block.engine.sampler.render (bus, monitor, block.frames);
}

/** Beats from the downbeat to a position, along the grid. */
PX_AUDIO_THREAD double beatsAt (const BeatGrid& grid, double frame)
{
    const auto period = grid.period();
    if (!(period > 0.0))
        return 0.0;
    const auto beyond = grid.firstEntryBeyond (frame);
    const auto entry = std::clamp (beyond - 1, 0, std::max (0, grid.beatCount() - 1));
    // The entries stand half a beat apart.
    return (entry - grid.downbeatEntry() + (frame - grid.beatAt (entry)) / period) / 2.0;
}

PX_AUDIO_THREAD void tellOfFault (Block& block, PluginFault fault, int deck)
{
    auto& listeners = block.engine.listeners;
    if (fault == PluginFault::notANumber)
        listeners.postMessage (N_ ("*** Plug-in bypassed ***|It returned no numbers.|Its slot is off"), deck);
    else if (fault == PluginFault::tooLoud)
        listeners.postMessage (N_ ("*** Plug-in bypassed ***|It returned more than +60 dB.|Its slot is off"),
                               deck);
    else if (fault == PluginFault::threw)
        listeners.postMessage (
            N_ ("*** Plug-in bypassed ***|It failed in the middle of a block.|Its slot is off"), deck);
}

PX_AUDIO_THREAD void runSlot (Block& block, const DeckPlayer& deck, const ChannelPair& pair)
{
    const auto& knobs = block.engine.smartKnobs;
    const auto driven = [&] (SmartKnobRow row)
    { return knobs.drivenValue (deck.index, static_cast<int> (row)); };
    const VstSlotDrive drive { driven (SmartKnobRow::pluginOn),
                               driven (SmartKnobRow::pluginDryWet),
                               { driven (SmartKnobRow::pluginParam1), driven (SmartKnobRow::pluginParam2) } };
    const DeckTime time { deck.marks.bpm * deck.tempo.factor, beatsAt (deck.grid(), deck.heardPosition()),
                          deck.isPlaying() };
    auto& slot = block.engine.vstSlots[static_cast<size_t> (deck.index)];
    tellOfFault (block, slot.processVstSlot (pair.left, pair.right, pair.frames, time, drive), deck.index);
}

/** Runs the slots that stand in one of the two places. */
PX_AUDIO_THREAD void runSlots (Block& block, bool onMaster)
{
    for (const auto& deck : block.engine.decks.decks)
        if (const auto& slot = block.engine.vstSlots[static_cast<size_t> (deck->index)];
            slot.hasPlugin() && slot.isOnMaster() == onMaster)
            runSlot (block, *deck, onMaster ? block.pair (masterLeft) : block.pair (*deck));
}

PX_AUDIO_THREAD void runDeckInserts (Block& block)
{
    for (const auto& deck : block.engine.decks.decks)
        block.engine.vstSlots[static_cast<size_t> (deck->index)].follow (
            block.engine.decks.setup (*deck).vstOnMaster != 0);
    runSlots (block, false);
}

PX_AUDIO_THREAD void addPreview (Block& block)
{
    block.engine.preview.addToMonitor (block.channel (monitorLeft), block.channel (monitorRight),
                                       block.frames);
}

PX_AUDIO_THREAD void sumMaster (Block& block)
{
    for (int source = firstDeckLeft; source <= samplerLeft; source += 2)
        for (int side = 0; side < 2; ++side)
            juce::FloatVectorOperations::add (block.channel (masterLeft + side),
                                              block.channel (source + side), block.frames);
}

PX_AUDIO_THREAD void runMasterInserts (Block& block)
{
    runSlots (block, true);
}

PX_AUDIO_THREAD void limitMaster (Block& block)
{
    auto& engine = block.engine;
    const auto [left, right, frames] = block.pair (masterLeft);
    engine.limiter.process (left, right, frames, engine.settings.masterVolume);
    engine.latencyProbe.emit (left, right, frames, block.sampleRate);
    engine.masterMeters.update (left, right, frames);
}

PX_AUDIO_THREAD void mixMonitor (Block& block)
{
    const auto& settings = block.engine.settings;
    float* const monitor[] { block.channel (monitorLeft), block.channel (monitorRight) };
    const float* const master[] { block.channel (masterLeft), block.channel (masterRight) };
    block.engine.monitor.process ({ settings.monitorMix, settings.monitorVolume, settings.monitorSplit != 0,
                                    settings.monitorOverdrive != 0 },
                                  monitor, master, block.frames);
}

PX_AUDIO_THREAD void record (Block& block)
{
    block.engine.recorder.write (block.buffer.getArrayOfReadPointers(), block.frames);
}
}

void CPlatterdex::processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&)
{
    if (buffer.getNumChannels() < outputChannels || !(getSampleRate() > 0.0))
    {
        buffer.clear();
        return;
    }

    const AudioThreadScope audioThread;
    const juce::ScopedNoDenormals noDenormals;
    Block block { *this, buffer, buffer.getNumSamples(), getSampleRate() };

    takeSampleRate (block);
    askHostForPosition (block);
    computeCoefficients (block);
    advanceCrossfaderAndAutomix (block);
    takeDeckInputs (block);
    clearOutputs (block);
    releaseScratches (block);
    alignPhases (block);
    renderDecks (block);
    clearResyncRequests (block);
    runSampler (block);
    runDeckInserts (block);
    addPreview (block);
    sumMaster (block);
    runMasterInserts (block);
    limitMaster (block);
    mixMonitor (block);
    record (block);
}
