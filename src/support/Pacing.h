#pragma once

#include <juce_core/juce_core.h>

#include "support/AudioThread.h"
#include "support/Relaxed.h"

/** The pauses that worker threads make so that they never starve audio.

    On stage a worker yields 1 ms at the intervals that its loop names; an offline run, where nothing sounds in real
    time, makes none. One object per engine; any worker thread. */
class Pacing
{
public:
    enum class Mode
    {
        live,
        offline
    };

    explicit Pacing (Mode m) noexcept : mode (m) {}

    bool isLive() const noexcept { return mode == Mode::live; }

    /** Rests for 1 ms, or not at all offline. */
    void pause() noexcept
    {
        assertMayBlock();
        if (mode == Mode::offline)
            return;
        const auto before = juce::Time::getMillisecondCounterHiRes();
        juce::Thread::sleep (1);
        pausedMilliseconds += juce::Time::getMillisecondCounterHiRes() - before;
    }

    /** The priority of threads whose work nobody waits for: on stage it is done with what time is left over. */
    juce::Thread::Priority workerPriority() const noexcept
    {
        return mode == Mode::live ? juce::Thread::Priority::background : juce::Thread::Priority::normal;
    }

    /** The time spent in pause() so far, in ms, over all workers (approximate while several pause at once). */
    double totalPausedMilliseconds() const noexcept { return pausedMilliseconds; }

private:
    const Mode mode;
    Relaxed<double> pausedMilliseconds { 0.0 };
};
