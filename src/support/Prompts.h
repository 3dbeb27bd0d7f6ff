#pragma once

#include <juce_core/juce_core.h>

#include <functional>

/** The questions and notices that stop for the user. Message thread. A window, a terminal and a test each have their
    own. */
class Prompts
{
public:
    virtual ~Prompts() = default;

    /** Asks, and calls `answer` once, at once or later on the message thread. */
    virtual void askYesNo (const juce::String& title, const juce::String& question,
                           std::function<void (bool yes)> answer) = 0;
};
