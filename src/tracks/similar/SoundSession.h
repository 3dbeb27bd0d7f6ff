#pragma once

#include "tracks/similar/SoundListener.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/** The facts about a track whose sound is known. */
struct SoundFacts
{
    double tempoBpm = 0.0; ///< 0 if unknown
    double seconds = 0.0;
    int key = -1;               ///< 0 to 11: C to B major, 12 to 23: C to B minor, -1: none
    double keyConfidence = 0.0; ///< 0 to 1
};

/** The tracks whose sound is known, and the question which of them sound alike. One per process; any thread that may
    block. The library and the session file are opened when they are first needed; without the library nothing is known
    and nothing is asked of anybody. */
class SoundSession
{
public:
    struct Places
    {
        juce::File library; ///< the shared object
        juce::File folder;  ///< of the session file
    };

    /** Functions may be left out; both are called on the thread that stored or opened. */
    struct Watch
    {
        /** Hears of the facts of a track that has been analysed. */
        std::function<void (const juce::String& path, const SoundFacts&)> described;

        /** Hears a sentence when the session file could not be read as it was. */
        std::function<void (const juce::String& sentence)> notice;
    };

    explicit SoundSession (Places p) : SoundSession (std::move (p), Watch()) {}
    SoundSession (Places, Watch);

    /** Writes what is not written yet. */
    ~SoundSession();

    /** "AudioGenSDK.so" beside the program or plug-in. */
    static juce::File libraryBesideBinary();

    /** The session that the decks and the batch analysis of this process tell of their tracks; null while there is none. */
    static std::shared_ptr<SoundSession> ofProcess();

    /** Makes a session the one of the process until it ends, which this does not put off. */
    static void setOfProcess (const std::shared_ptr<SoundSession>&);

    /** Opens the library and the file. @returns false without the library */
    bool open();

    bool isKnown (const juce::String& path) { return facts (path).has_value(); }
    std::optional<SoundFacts> facts (const juce::String& path);

    /** @returns an object that is to hear the track from its first frame on, or null: the track is known, or there is no
                 library
        @param isAgain   also a track that is known */
    std::unique_ptr<SoundListener> listenTo (const juce::String& path, double rate, bool isAgain = false);

    /** Ends the audio of a track, stores its description and writes it to the file.
        @param tempoBpm   0 if there is none
        @returns false if too little of it sounded, or the file can't be written: it is known until the end then */
    bool store (const juce::String& path, SoundListener&, double tempoBpm);

    /** Tells the watch of a track that was known before. */
    void tellKnown (const juce::String& path);

    struct Query
    {
        int count = 20;           ///< most tracks of the answer
        double tempoWeight = 0.0; ///< share of the distance in tempo in the order, 0 to 1
        double keyWeight = 0.0;   ///< share of the key's; the rest is sound
        bool withCopies = false;  ///< other copies of the same recording too
    };

    struct Similar
    {
        juce::String path;
        SoundFacts facts;
        double closeness = 0.0; ///< 0 to 1: the share of tracks that are farther away, seen from both sides
        bool isCopy = false;
    };

    /** The tracks that fit, best first; none for a track that isn't known. */
    std::vector<Similar> similar (const juce::String& path, const Query&);

private:
    struct Opened;

    const Places places;
    const Watch watch;
    const std::unique_ptr<Opened> opened;
};
