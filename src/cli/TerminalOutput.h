#pragma once

#include <juce_core/juce_core.h>

namespace ExitCode
{
inline constexpr int success = 0, badInput = 2;
}

/** Writes "platterdex: " and the sentence to the standard error output, as one line.
    @returns ExitCode::badInput */
int failWith (const juce::String& sentence);

/** Writes a line to the standard output, in UTF-8. */
void printLine (const juce::String&);

/** Writes a line to the standard error output, in UTF-8. */
void reportLine (const juce::String&);

/** @returns false, after a report, if a file to be written has another ending than the one that is written */
bool requireEnding (const juce::File&, const char* ending);

/** The text with blanks for its control characters: a tab or a line's end in a tag breaks no table, and a file's name
    sends nothing to the terminal. */
juce::String oneLine (const juce::String&);
