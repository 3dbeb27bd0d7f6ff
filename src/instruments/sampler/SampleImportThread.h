#pragma once

#include "instruments/sampler/GhostTake.h"
#include "instruments/sampler/SamplerSlots.h"
#include "support/Worker.h"
#include "tracks/AdecSharedLibrary.h"

#include <functional>

/** Fills the slots of the sampler on a thread of its own: decodes files, finds tempos, copies loops out of decks and from
    pad to pad, writes samples to files. It is the only writer of the slots' memory. A newer job for a slot takes the place of
    the one before. Its public functions return at once; any thread that may block. */
class SampleImportThread
{
public:
    SampleImportThread (SamplerSlots&, const juce::File& decoderLibrary);

    /** Loads a file into a slot that has been cleared. A file that gives no audio leaves it empty, with the reason as the
        slot's fault. */
    void load (int slot, const juce::File&);

    /** Copies a loop out of a deck, unless the deck has another track by then, and keeps a pad's loop in a file at once.
        @param recordings   the folder of those files; none is written for the preview */
    void take (int slot, const GhostTake&, const juce::File& recordings);

    /** Copies a slot's sample into another slot that has been cleared. @param recordings   as of take() */
    void copy (int from, int to, const juce::File& recordings);

    /** Gives a cleared slot's memory back. */
    void release (int slot);

    /** Writes a slot's sample to a WAV file of 16 bits, with its tempo and loop.
        @param rate   of the file in Hz; 0 for the sample's own
        @param done   called on the import thread */
    void save (int slot, const juce::File&, double rate, std::function<void (bool isWritten)> done);

    /** Gives the loaded slots stretchers for the engine's present rate. */
    void renewStretchers();

    void wait() const { worker.wait(); }
    bool isBusy() const { return worker.isBusy(); }

    /** Ends all work and waits for that; what is written to files is written to its end. */
    void stop();

private:
    enum Kind
    {
        fillKind,
        saveKind,
        stretcherKind
    };

    void post (int slot, std::function<void (SamplerSlot&, const std::stop_token&)> fill);
    juce::String decode (SamplerSlot&, const juce::File&, const std::stop_token&);
    void publish (SamplerSlot&, SampleFacts, const std::stop_token&);
    bool copyTrack (SamplerSlot&, const GhostTake&, const juce::String& path, const std::stop_token&);

    /** Writes an unsaved loop to a file of the system's own, so that no crash takes it. */
    void keep (SamplerSlot&, const juce::File& recordings);

    /** Leaves a slot empty that was to have a sample. @param reason   one sentence */
    static void refuse (SamplerSlot&, const juce::String& reason);

    SamplerSlots& desk;
    AdecSharedLibrary decoder;
    Worker worker; ///< last: its jobs use all of the above
};
