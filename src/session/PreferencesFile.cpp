#include "session/PreferencesFile.h"

#include "support/files/ReplaceFile.h"

PreferencesFile::PreferencesFile (const juce::File& f) : file (f)
{
    read();
}

void PreferencesFile::read()
{
    if (!file.existsAsFile())
        return;
    for (const auto& line : juce::StringArray::fromLines (file.loadFileAsString()))
        if (line.containsChar ('='))
            values.set (line.upToFirstOccurrenceOf ("=", false, false),
                        line.fromFirstOccurrenceOf ("=", false, false));
}

juce::String PreferencesFile::get (const juce::String& name, const juce::String& byDefault) const
{
    return values.getValue (name, byDefault);
}

bool PreferencesFile::set (const juce::String& name, const juce::String& value)
{
    jassert (!name.containsAnyOf ("=\n\r") && !value.containsAnyOf ("\n\r"));
    if (values.containsKey (name) && values[name] == value)
        return true;
    if (isWritten)
        read(); // another copy of the program may have written since
    values.set (name, value);
    if (file == juce::File())
        return true;
    juce::String text;
    for (const auto& each : values.getAllKeys())
        text << each << "=" << values[each] << "\n";
    isWritten = file.getParentDirectory().createDirectory().wasOk()
                && replaceFile (file, text.toRawUTF8(), text.getNumBytesAsUTF8());
    return isWritten;
}

void PreferencesFile::takeIn (const juce::String& name, const juce::File& former)
{
    if (!former.existsAsFile())
        return;
    const auto text = former.loadFileAsString().replaceCharacters ("\r\n", "  ").trim();
    if (values.containsKey (name) || set (name, text))
        former.deleteFile();
}
