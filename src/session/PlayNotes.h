#pragma once

#include "engine/CPlatterdex.h"

#include <functional>
#include <mutex>
#include <vector>

/** Tells which songs are played: once for each track on a deck, within a second of its start, on the message
    thread. Engines may come and go on any thread. */
class PlayNotes : private juce::Timer
{
public:
    /** @param started   takes the path of a track that a deck has begun to play */
    explicit PlayNotes (std::function<void (const juce::String& path)> started);
    ~PlayNotes() override { stopTimer(); }

    void add (CPlatterdex&);
    void remove (CPlatterdex&);

private:
    struct Watched
    {
        CPlatterdex* engine;
        std::array<juce::String, deckCount> noted; ///< the path of each deck's track, if it was told
    };

    void timerCallback() override;
    juce::StringArray takeStarted();

    const std::function<void (const juce::String&)> started;
    std::mutex mutex; ///< of the engines
    std::vector<Watched> engines;
};
