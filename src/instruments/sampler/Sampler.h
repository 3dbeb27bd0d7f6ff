#pragma once

#include "instruments/sampler/SampleImportThread.h"
#include "instruments/sampler/SamplerBank.h"
#include "settings/Folders.h"

/** Sixteen pads and the loop recorder beside the decks. docs/sampler.md tells how they work.

    Presses are commands: they change fields under the callback lock and are heard with the next block. Samples come and go
    through the import thread. Slot indexes outside 0 to 16 are ignored everywhere. */
class Sampler
{
public:
    static constexpr int padCount = SamplerSlots::padCount, preview = SamplerSlots::preview;
    static constexpr int strongest = 127; ///< velocity

    /** @param host         the host's transport, as the running block sees it
        @param wallClock    local time, for the names of files */
    Sampler (DeckWorld&, const SongPosition& host, const Folders&, const juce::File& decoderLibrary,
             std::function<juce::Time()> wallClock);

    //==================================================================================================================
    // Playing. Any thread, also the audio thread.

    /** Answers a press by the pad's mode. @param velocity   1 to 127; 0 is a release */
    void padPress (int slot, int velocity) noexcept;

    void setMasterGain (double) noexcept; ///< 0 to 1, of all slots
    double masterGain() const noexcept { return desk.slots[0].masterGain; }

    /** Switches of all slots alike. */
    void setSync (bool) noexcept;
    void setMonitor (bool) noexcept;
    bool isSynced() const noexcept { return desk.slots[preview].sync != 0; }
    bool isMonitored() const noexcept { return desk.slots[preview].monitor != 0; }

    void setPlayMode (int slot, int mode) noexcept;
    void setFollowsVelocity (int slot, bool) noexcept;
    void setPadSync (int slot, bool) noexcept;

    /** Mixes a block of a slot into the sampler's bus and, if it is monitored, the monitor bus. Audio thread. */
    PX_AUDIO_THREAD void renderSlot (int slot, const SamplerClock&, float* const bus[2],
                                     float* const monitor[2], int frames) noexcept;

    /** Renders all slots in their order. @param frames   of the block, any number */
    PX_AUDIO_THREAD void render (float* const bus[2], float* const monitor[2], int frames) noexcept;

    //==================================================================================================================
    // Samples. Any thread that may block; each returns at once.

    void loadSample (int slot, const juce::File&);

    /** Writes a WAV file of 16 bits at 44100 Hz. @param done   called on the import thread */
    void saveSample (
        int slot, const juce::File&, std::function<void (bool isWritten)> done = [] (bool) {});

    /** Empties a slot, its name too. */
    void clearSlot (int slot);

    /** Copies a sample onto another pad, over what is there. From an empty slot, or onto itself, nothing happens. */
    void copySlot (int from, int to);
    void rename (int slot, const juce::String& name);

    /** Takes a loop out of a deck as it plays now. Without a track there nothing happens. @param lengthIndex   of GhostTake */
    void ghostRecordPreview (int deck, int lengthIndex) { ghostRecordToPad (deck, preview, lengthIndex); }
    void ghostRecordToPad (int deck, int pad, int lengthIndex);

    /** Notes the chosen loop as it plays at this moment and asks the engine to copy it into the preview. Any thread, also
        the audio thread. */
    void askForLoop() noexcept;

    /** Copies the loop that was asked for. Called by the engine's requests. */
    void serveLoop();

    /** Gives the pads stretchers for a new engine rate in Hz. */
    void renewStretchers (double rate)
    {
        desk.stretchRate = rate;
        importThread.renewStretchers();
    }

    /** Waits until all that was asked for is done. */
    void waitUntilIdle() const { importThread.wait(); }
    bool isBusy() const { return importThread.isBusy(); }
    void stop() { importThread.stop(); }

    //==================================================================================================================
    // Banks. Message thread, or whichever thread drives an engine without one.

    /** Loads a bank over all pads. @returns one sentence of why nothing was loaded; empty if the samples are on their way */
    juce::String loadBank (const juce::File&);

    /** Saves all pads; loops that were recorded and are in no file yet are written into the folder of samples first.
        @returns one sentence of why it is not saved; empty if it is */
    juce::String saveBank (const juce::File&);

    /** The name of the bank that was loaded or saved last; empty before. */
    juce::String bankName() const { return currentBank; }

    /** The pads as they lie now. */
    SamplerBank bank() const;

    /** Pads that hold a recorded loop of which the user has no file. */
    int unsavedLoops() const noexcept;

    /** Gives each of those loops a file in the folder of samples. @returns false if one can't have it, which stays as it was */
    bool keepUnsavedLoops();

    /** Reads the pads of the last session, if it left any; keepPads() writes them. */
    bool restorePads();
    void keepPads();

    //==================================================================================================================
    SamplerSlots desk;
    Relaxed<int8_t> ghostDeck;         ///< of the loop recorder, 0 to 3
    Relaxed<int8_t> ghostLength { 7 }; ///< an index of GhostTake: 4 beats
    const Folders folders;

private:
    SamplerSlot* find (int slot) noexcept { return desk.find (slot); }
    void apply (const SamplerBank&);
    void takeLoop (int slot, const GhostTake&);

    /** Lets a recorded loop lie in a file of the user's from now on; the system's own goes. Nothing happens if another sample
        has come to its slot since. Any thread that may block. @param sampleNumber   of the loop */
    void giveFile (SamplerSlot&, uint32_t sampleNumber, const juce::File&);
    juce::File padsFile() const { return folders.setup().getChildFile ("sampler.xml"); }
    juce::File recordings() const { return folders.samples().getChildFile ("recorded"); }
    void waitOffline() const;
    void askToKeep() noexcept;

    const SongPosition& host;
    const std::function<juce::Time()> wallClock;
    juce::String currentBank;
    std::optional<GhostTake> pendingLoop; ///< under the callback lock
    juce::AudioBuffer<float> piece { 2, 1024 };
    SampleImportThread importThread; ///< last: its jobs use all of the above
};
