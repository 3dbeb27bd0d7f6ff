#pragma once

#include "engine/CPlatterdex.h"
#include "support/Worker.h"

#include <array>
#include <cstddef>
#include <mutex>
#include <vector>

/** Writes the settings of running engines and the contents of their pads and knobs, and has their decks write cues and
    grids, within two seconds of a change, so that a program that is killed loses nothing older. Engines of one root share the settings' file: the last change is kept.

    The message thread looks, a thread of this writes. Engines may come and go on any thread that may block. */
class SettingsKeeper : private juce::Timer
{
public:
    /** @param mayWrite   asked before each writing, on the message thread */
    explicit SettingsKeeper (std::function<bool()> mayWrite);
    ~SettingsKeeper() override;

    /** Begins to look after an engine, whose settings are as they stand in the file. */
    void add (CPlatterdex&);

    /** Waits for what is being written: the engine writes its last state by itself. */
    void remove (CPlatterdex&);

private:
    struct Kept
    {
        CPlatterdex* engine;
        std::array<TrackMarks, deckCount> marks;
        std::vector<std::byte> written; ///< the bytes that are in the file, or on their way to it
    };

    void timerCallback() override;
    static void saveMarks (Kept&);
    void saveSettingsOf (Kept&);
    void saveContentsOf (Kept&);

    const std::function<bool()> mayWrite;
    std::mutex mutex; ///< of the engines
    std::vector<Kept> engines;
    Worker writer { "Settings" };
};
