#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <optional>

/** Questions and notices for the user, who sees them in a window or on a terminal.

    Each call returns at once or, on a terminal, when it is answered. An answer comes once, on the message thread, unless
    the prompts have gone before. Message thread. */
class Prompts
{
public:
    virtual ~Prompts() = default;

    virtual void askYesNo (const juce::String& title, const juce::String& question,
                           std::function<void (bool yes)> answer) = 0;

    /** Shows one sentence that stays until the user has read it. Stops nothing. */
    virtual void notify (const juce::String& title, const juce::String& sentence) = 0;

    /** Asks for one line of text. @param answer   nothing if the user breaks it off */
    virtual void askText (const juce::String& title, const juce::String& question,
                          const juce::String& initial,
                          std::function<void (std::optional<juce::String>)> answer) = 0;

    struct FileQuestion
    {
        juce::String title;
        juce::File start;           ///< the file or folder that is chosen at first
        juce::String pattern = "*"; ///< "*.m3u;*.xml"
        bool isForWriting = false;  ///< asks for a place, and before an existing file is replaced
    };

    /** @param answer   File() if the user breaks it off */
    virtual void askFile (const FileQuestion&, std::function<void (const juce::File&)> answer) = 0;
};
