#pragma once

#include "deck/DeckWorld.h"
#include "support/Worker.h"
#include "tracks/AdecSharedLibrary.h"
#include "tracks/TrackDecoder.h"

#include <array>
#include <atomic>

/** Loads one deck's tracks, one job after the other on a thread of its own: decodes a file into the deck's memory, and
    analyses it if no analysis is stored. A playing deck keeps its track until the first frames of the next one are
    there; from then on the audio thread may play what has arrived. Its public functions return at once. */
class DeckLoader
{
public:
    /** @param deckIndex   0 to 3; the deck is looked up in the world at each job */
    DeckLoader (DeckWorld&, int deckIndex, const AdecSharedLibrary&);

    /** Stops a running job and waits for that. */
    ~DeckLoader() = default;

    /** Asks for a track; a load that runs or waits gives way. Any thread that may block. */
    void load (const juce::File&);

    /** Asks for an empty deck. */
    void unload();

    /** Measures the tempo near one in BPM, from the samples in memory; the grid stays. The listeners are told what was
        found. A measurement that runs gives way; without a track, or during a load, nothing happens. */
    void measureTempo (double nearBpm);

    /** Stops what runs and drops what waits; a load ends where it is. */
    void cancel() { worker.cancel(); }

    bool isBusy() const { return worker.isBusy(); }
    void waitUntilIdle() const { worker.wait(); }

private:
    struct Load;

    DeckPlayer& deck() const { return *world.deck (index); }
    void post (Worker::Job);
    void run (const juce::File&, const std::stop_token&);
    void replaceTrack (const juce::File&, double sampleRate, Load&);
    void dropTrack();
    void analyse (const std::stop_token&);
    void measure (double nearBpm, const std::stop_token&);
    void takeKey();
    void fail (const juce::File&, const juce::String& reason);
    void tellShortened (const juce::File&, double statedSeconds);

    DeckWorld& world;
    const int index;
    const AdecSharedLibrary& decoder;
    bool isPartial = false; ///< the deck's track stopped short when its load gave way; the worker's own
    std::mutex requests;    ///< guards the two below
    int64_t newest = 0;     ///< number of the last request
    Worker worker;          ///< last: its jobs use all of the above
};

/** The loaders of all decks and the thread that saves analyses for those who must not wait for a disk. Belongs to the
    owner of the decks. Its functions return at once, unless they say that they wait. */
class DeckLoaders
{
public:
    /** @param decoderLibrary   where the decoder's shared library lies */
    DeckLoaders (DeckWorld&, const juce::File& decoderLibrary);
    ~DeckLoaders();

    /** The request of the library, a script or the user to load a track. Ignores a file whose name is not that of an
        audio file; tells the listeners when the file does not exist, when the deck is locked, and when a load begins.
        Any thread that may block. */
    void load (const juce::File&, int deckIndex);

    /** Takes the track off a deck. Does nothing while the deck loads. */
    void unload (int deckIndex);

    /** Saves a deck's analysis within a second, several edits at once. */
    void saveSoon (int deckIndex);

    /** Waits until all edits that were to be saved are in their files. Any thread that may block. */
    void waitUntilSaved() const { saver.wait(); }

    /** Waits until a deck neither loads nor measures nor saves. Any thread that may block. */
    void waitUntilIdle (int deckIndex);

    /** Ends all work and waits for that; what waits to be saved is saved by the owner. */
    void stop();

private:
    void restOrEnd();

    DeckWorld& world;
    const AdecSharedLibrary decoder;
    std::array<std::unique_ptr<DeckLoader>, deckCount> loaders;

    std::mutex endLock;
    std::condition_variable_any ends;
    std::stop_source ending;
    Worker saver;
};
