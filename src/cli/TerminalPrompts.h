#pragma once

#include "support/Prompts.h"

/** Asks on the terminal, and waits for the answer. Where the input is no terminal nobody is asked: every answer is no, or
    nothing. Notices are lines of the error output. */
class TerminalPrompts : public Prompts
{
public:
    void askYesNo (const juce::String& title, const juce::String& question,
                   std::function<void (bool yes)> answer) override;
    void notify (const juce::String& title, const juce::String& sentence) override;
    void askText (const juce::String& title, const juce::String& question, const juce::String& initial,
                  std::function<void (std::optional<juce::String>)> answer) override;
    void askFile (const FileQuestion&, std::function<void (const juce::File&)> answer) override;
};
