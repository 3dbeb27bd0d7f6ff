#pragma once

#include "support/Prompts.h"

/** Asks in windows that don't stop the rest of the application. */
class ApplicationPrompts : public Prompts
{
public:
    void askYesNo (const juce::String& title, const juce::String& question,
                   std::function<void (bool yes)> answer) override;
};
