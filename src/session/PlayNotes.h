#pragma once

#include "engine/CPlatterdex.h"
#include "session/browse/PlayHistory.h"

#include <functional>
#include <mutex>
#include <vector>

/** Tells which songs are loaded and played: each once for a track on a deck, within a second, on the message thread. Engines
    may come and go on any thread. */
class PlayNotes : private juce::Timer
{
public:
    /** @param loaded    takes the path of a track that has come onto a deck
        @param started   takes a track that a deck has begun to play */
    PlayNotes (std::function<void (const juce::String& path)> loaded,
               std::function<void (const PlayedSong&)> started);
    ~PlayNotes() override { stopTimer(); }

    void add (CPlatterdex&);
    void remove (CPlatterdex&);

private:
    struct Watched
    {
        CPlatterdex* engine;
        std::array<juce::String, deckCount> loaded; ///< the path of each deck's track
        std::array<juce::String, deckCount> noted;  ///< the same, once it was played
    };

    void timerCallback() override;
    void lookAt (Watched&, juce::StringArray& nowLoaded, std::vector<PlayedSong>& nowStarted) const;

    const std::function<void (const juce::String&)> loaded;
    const std::function<void (const PlayedSong&)> started;
    std::mutex mutex; ///< of the engines
    std::vector<Watched> engines;
};
