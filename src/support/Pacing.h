#pragma once

#include <juce_core/juce_core.h>

#include "support/AudioThread.h"
#include "support/Relaxed.h"

/** The pauses that worker threads make so that they never starve audio.

    On stage, while a deck plays, a worker yields 1 ms at the intervals that its loop names; an offline run, where
    nothing sounds in real time, makes none. One object per engine; any worker thread. */
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

    /** Says whether a deck plays; audio thread, at each block. Until then caution is taken. */
    PX_AUDIO_THREAD void setSounding (bool isSounding) noexcept { sounding = isSounding ? 1 : 0; }

    /** False offline, and on stage while nothing plays that a worker could starve. */
    bool mustRest() const noexcept { return mode == Mode::live && sounding != 0; }

    /** Rests for 1 ms if that must be. */
    void pause() noexcept
    {
        assertMayBlock();
        if (!mustRest())
            return;
        const auto before = juce::Time::getMillisecondCounterHiRes();
        juce::Thread::sleep (1);
        pausedMilliseconds += juce::Time::getMillisecondCounterHiRes() - before;
    }

    /** The time spent in pause() so far, in ms, over all workers (approximate while several pause at once). */
    double totalPausedMilliseconds() const noexcept { return pausedMilliseconds; }

private:
    const Mode mode;
    Relaxed<int8_t> sounding { 1 };
    Relaxed<double> pausedMilliseconds { 0.0 };
};
