#pragma once

#include <juce_core/juce_core.h>

/** A small store of names and values for what is no setting of the engine, such as the interface's size.

    Lines of "name=value" in a file that is replaced at each change. Message thread. */
class PreferencesFile
{
public:
    /** Reads the file. @param file   need not exist; with File() nothing is kept beyond this object's life */
    explicit PreferencesFile (const juce::File& file);

    /** @param name   without "=" @returns the default if there is no such value */
    juce::String get (const juce::String& name, const juce::String& byDefault = {}) const;

    /** Takes the value, a single line, and writes the file. What was there under unknown names stays.
        @returns false if the file can't be written, which leaves it as it was; the value holds until the end */
    bool set (const juce::String& name, const juce::String& value);

private:
    const juce::File file;
    juce::StringPairArray values { false };
};
