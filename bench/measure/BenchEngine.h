#pragma once

#include "engine/CPlatterdex.h"
#include "shared/TemporaryFolder.h"

#include <memory>

/** A whole engine in a folder of its own, driven as a host does it, without a device. */
class BenchEngine
{
public:
    /** @param offline   no pauses of worker threads, and a clock that the rendered audio drives */
    explicit BenchEngine (bool offline, double rate = 44100.0, int blockFrames = 128);

    CPlatterdex& operator*() { return *engine; }
    CPlatterdex* operator->() { return engine.get(); }

    DeckPlayer& deck (int index) { return *engine->decks.decks[static_cast<size_t> (index)]; }

    /** Puts audio into a deck's memory as its loader would. @param rate   of the file, in Hz */
    void putTrack (int deck, const juce::AudioBuffer<float>& audio, double rate);

    /** Fills the inputs and processes one block of the constructor's length under the callback lock.
        @returns nanoseconds from asking for the lock to having given it back */
    int64_t processBlock();

    /** The same, with the time that the block waited for the lock apart. */
    int64_t processBlock (int64_t& waited);

    /** The input pairs of the blocks to come, one after the other; noise at first. */
    juce::AudioBuffer<float>& inputs() { return input; }

    const juce::AudioBuffer<float>& output() const { return buffer; }

private:
    static EngineWorld makeWorld (const juce::File& root, bool offline, MillisecondClock audioClock);

    const double rate;
    TemporaryFolder folder;
    std::atomic<int64_t> renderedFrames { 0 };
    std::unique_ptr<CPlatterdex> engine;
    juce::AudioBuffer<float> input, buffer;
    juce::MidiBuffer noMidi;
};
