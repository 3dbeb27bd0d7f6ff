#pragma once

#include "support/Worker.h"

#include <juce_events/juce_events.h>

#include <atomic>
#include <functional>

/** Tells once when a library's file goes away under a running program: SQLite goes on with a file that has no name any more,
    and what is written there is lost. Message thread; looks on a thread of its own, as a drive may hang. */
class LibraryPresence : private juce::Timer
{
public:
    /** @param file   that may come later, and is missed from then on
        @param gone   called once, on the message thread */
    LibraryPresence (const juce::File& file, std::function<void()> gone);
    ~LibraryPresence() override { stopTimer(); }

private:
    void timerCallback() override;

    const juce::File file;
    const std::function<void()> gone;
    std::atomic<bool> isMissing { false };
    bool wasThere = false; ///< of the worker
    Worker worker { "LibraryPresence" };
};
