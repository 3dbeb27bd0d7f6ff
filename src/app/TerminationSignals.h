#pragma once

#include <juce_events/juce_events.h>

#include <functional>

/** Turns the system's requests to end, SIGTERM and SIGINT, into a call on the message thread, so that the application
    ends by its usual way and saves what it has. One object at a time. */
class TerminationSignals : private juce::Timer
{
public:
    /** @param quit   called once */
    explicit TerminationSignals (std::function<void()> quit);
    ~TerminationSignals() override;

private:
    void timerCallback() override;

    const std::function<void()> quit;
};
