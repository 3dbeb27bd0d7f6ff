#pragma once

#include "support/Prompts.h"

/** Answers as the test says, at once, and keeps what was asked. */
struct ScriptedPrompts : Prompts
{
    void askYesNo (const juce::String& title, const juce::String& question,
                   std::function<void (bool)> answer) override
    {
        asked.add (title + "|" + question);
        last = answer;
        answer (yes);
    }

    void notify (const juce::String& title, const juce::String& sentence) override
    {
        asked.add (title + "|" + sentence);
    }

    void askText (const juce::String& title, const juce::String& question, const juce::String&,
                  std::function<void (std::optional<juce::String>)> answer) override
    {
        asked.add (title + "|" + question);
        answer (text);
    }

    void askFile (const FileQuestion& question, std::function<void (const juce::File&)> answer) override
    {
        asked.add (question.title);
        answer (file);
    }

    bool yes = false;
    std::optional<juce::String> text;
    juce::File file;
    juce::StringArray asked;
    std::function<void (bool)> last; ///< of the last question of yes or no
};
