#pragma once

#include "support/AudioThread.h"
#include "support/Relaxed.h"

#include <algorithm>
#include <cmath>

/** Measures the way from the master's output through a cable to an input, by a click.

    The probe listens to the input's noise, sends the click, and counts frames until it comes back: the latency of
    output and input together. */
class LatencyProbe
{
public:
    enum class State : int8_t
    {
        idle,
        running,
        measured,
        nothingCame ///< within a second
    };

    struct Result
    {
        State state = State::idle;
        double milliseconds = 0;
        int inputPair = 0; ///< that was listened to
    };

    /** Begins a measurement, unless one runs. Any thread. @param pair   0 to 3 */
    void start (int pair) noexcept
    {
        if (state == State::running)
            return;
        inputPair = pair;
        state = State::running;
        fresh = 1;
    }

    /** Any thread. */
    Result result() const noexcept { return { state, milliseconds, inputPair }; }

    bool isRunning() const noexcept { return state == State::running; }
    int pair() const noexcept { return inputPair; }

    /** Looks for the click in a block of the input. Audio thread, before emit() of the same block. */
    PX_AUDIO_THREAD void listen (const float* left, const float* right, int frames, double rate) noexcept
    {
        if (fresh != 0)
        {
            fresh = 0;
            now = 0;
            floor = 0;
        }
        for (int i = 0; i < frames && isRunning(); ++i, ++now)
        {
            const auto level = std::max (std::abs (left[i]), std::abs (right[i]));
            if (now < clickAt (rate))
                floor = std::max (floor, level);
            else if (level > std::max (leastClick, 4 * floor))
                finish (State::measured, static_cast<double> (now - clickAt (rate)) * 1000.0 / rate);
            else if (now > clickAt (rate) + rate)
                finish (State::nothingCame, 0);
        }
        blockEnd = now;
    }

    /** Adds the click where its time has come. Audio thread, after the limiter. */
    PX_AUDIO_THREAD void emit (float* left, float* right, int frames, double rate) const noexcept
    {
        if (!isRunning() || fresh != 0)
            return;
        for (int i = 0; i < frames; ++i)
            if (const auto at = blockEnd - frames + i - clickAt (rate); at >= 0 && at < clickFrames)
            {
                left[i] += clickLevel;
                right[i] += clickLevel;
            }
    }

private:
    static constexpr float clickLevel = 0.5f, leastClick = 0.02f;
    static constexpr int clickFrames = 8;

    static int clickAt (double rate) noexcept { return static_cast<int> (0.1 * rate); }

    PX_AUDIO_THREAD void finish (State next, double found) noexcept
    {
        milliseconds = found;
        state = next;
    }

    Relaxed<State> state { State::idle };
    Relaxed<int> inputPair;
    Relaxed<double> milliseconds;
    Relaxed<int8_t> fresh;
    int now = 0, blockEnd = 0; ///< frames since the start
    float floor = 0;
};
