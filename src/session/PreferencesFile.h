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

    /** Takes in what was kept in a file of its own before, as one line, and deletes that file. */
    void takeIn (const juce::String& name, const juce::File& former);

private:
    void read();

    const juce::File file;
    bool isWritten = true; ///< what is in the values
    juce::StringPairArray values { false };
};
