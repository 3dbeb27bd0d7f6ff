#pragma once

#include <juce_core/juce_core.h>

/** Writes a script line by line, each ended by CR LF. Makes the file's folder if it is missing and begins the file anew, with a
    head of four lines in place of JUCE's own banner. */
class ScriptLogger : public juce::FileLogger
{
public:
    explicit ScriptLogger (const juce::File&, const juce::Time& now = juce::Time::getCurrentTime());
};

/** Writes a script of these lines. @returns false if the file can't be written */
bool writeScript (const juce::StringArray& lines, const juce::File&);
