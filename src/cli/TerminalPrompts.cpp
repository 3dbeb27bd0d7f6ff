#include "cli/TerminalPrompts.h"

#include "cli/TerminalOutput.h"

#include <cstdio>
#include <iostream>
#include <string>

#include <unistd.h>

namespace
{
/** @returns nothing at the end of the input, or if that is no terminal */
std::optional<juce::String> ask (const juce::String& question)
{
    if (isatty (STDIN_FILENO) == 0)
        return {};
    const auto shown = oneLine (question) + " ";
    std::fwrite (shown.toRawUTF8(), 1, shown.getNumBytesAsUTF8(), stderr);
    std::string line;
    if (!std::getline (std::cin, line))
        return {};
    return juce::String::fromUTF8 (line.c_str()).trim();
}
}

void TerminalPrompts::askYesNo (const juce::String&, const juce::String& question,
                                std::function<void (bool yes)> answer)
{
    const auto said = ask (question + " [y/N]");
    answer (said && (said->equalsIgnoreCase ("y") || said->equalsIgnoreCase ("yes")));
}

void TerminalPrompts::notify (const juce::String&, const juce::String& sentence)
{
    reportLine ("platterdex: " + oneLine (sentence));
}

void TerminalPrompts::askText (const juce::String&, const juce::String& question, const juce::String& initial,
                               std::function<void (std::optional<juce::String>)> answer)
{
    auto said = ask (question + (initial.isEmpty() ? juce::String() : " [" + initial + "]"));
    answer (said && said->isEmpty() ? std::optional (initial) : std::move (said));
}

void TerminalPrompts::askFile (const FileQuestion& question, std::function<void (const juce::File&)> answer)
{
    const auto said = ask (question.title + ":");
    answer (said && said->isNotEmpty() ? juce::File::getCurrentWorkingDirectory().getChildFile (*said)
                                       : juce::File());
}
