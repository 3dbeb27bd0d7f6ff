#pragma once

#include "deck/DeckWorld.h"
#include "tracks/AdecSharedLibrary.h"

#include <atomic>
#include <mutex>

/** Decodes one file after the other into its deck's memory, and analyses those of which no analysis is stored. One per
    deck, started with it.

    The audio thread may play what has arrived while the rest is still decoded and analysed. */
class FileImportThread : private juce::Thread
{
public:
    /** @param decoderLibrary   where the decoder's shared library lies */
    FileImportThread (DeckWorld&, DeckPlayer&, const juce::File& decoderLibrary);

    /** Cancels a running job and ends the thread. */
    ~FileImportThread() override;

    /** Cancels a running job, waits for its end, and starts the next one. Any thread but the audio thread; requests of
        several threads queue up. */
    void request (const juce::File&);

    /** True from a request to the end of its job. Any thread. */
    bool isBusy() const noexcept { return busy; }

    /** Waits until no job runs. Any thread but the audio thread. */
    void waitUntilIdle() const;

private:
    void run() override;
    void runJob (const juce::File&);
    void prepareDeck (const juce::File&);
    void dropTrack();
    void analyse();

    DeckWorld& world;
    DeckPlayer& deck;
    AdecSharedLibrary decoder;
    std::mutex requestLock; ///< held over the whole of a request, so that two can't interleave
    juce::File requested;   ///< written while no job runs, read by the job
    std::atomic<bool> busy { false };
    juce::WaitableEvent wake;
};

/** The request of the library, a script or the user to load a track. Ignores a file whose name is not that of an audio
    file; tells the listeners when the file does not exist, when the deck is locked, and when a load begins. A playing
    deck is stopped. Any thread but the audio thread. */
void loadTrack (DeckWorld&, const juce::File&, int deckIndex);

/** Takes the track off a deck whose thread is idle. Any thread but the audio thread. */
void unloadTrack (DeckWorld&, int deckIndex);
