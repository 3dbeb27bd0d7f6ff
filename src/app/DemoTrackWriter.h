#pragma once

#include "support/Worker.h"

#include <juce_core/juce_core.h>

#include <functional>

/** Fills an audio folder with the demo tracks while the application runs. */
class DemoTrackWriter
{
public:
    /** Starts at once.
        @param finished   called with one sentence, on the message thread, unless this has gone before */
    DemoTrackWriter (const juce::File& folder, std::function<void (const juce::String&)> finished);

    /** Waits for the track that is being written; the rest is left out. */
    ~DemoTrackWriter() = default;

    /** True if a folder has nothing that a user could play. */
    static bool isWanted (const juce::File& folder);

private:
    void write (const std::stop_token&);

    const juce::File folder;
    const std::shared_ptr<std::function<void (const juce::String&)>> finished;
    Worker worker { "DemoTracks" }; ///< last: its job uses all of the above
};
