#pragma once

#include <juce_core/juce_core.h>

#include <optional>

/** Makes steps of a jog out of the events of a mouse. Each step also adds a part of the jog's own speed, so a mouse that
    reports a thousand times a second would drive it away: what comes faster than a step is added to the next. */
class DragSteps
{
public:
    static constexpr int shortestMs = 8;

    void begin() noexcept
    {
        pending = 0.0;
        lastMs = 0;
    }

    /** @param move    pixels since the last event
        @returns the move of a step, if one is due */
    std::optional<double> add (double move, juce::Time at) noexcept
    {
        pending += move;
        return due (at);
    }

    /** The step that waits for its time, for a mouse that has come to rest. */
    std::optional<double> due (juce::Time at) noexcept
    {
        if (pending == 0.0 || std::abs (at.toMilliseconds() - lastMs) < shortestMs)
            return {};
        lastMs = at.toMilliseconds();
        return std::exchange (pending, 0.0);
    }

private:
    double pending = 0.0;
    juce::int64 lastMs = 0;
};
