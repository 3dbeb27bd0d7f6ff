#include "midi/mapping/ScriptLogger.h"

ScriptLogger::ScriptLogger (const juce::File& file, const juce::Time& now) : FileLogger (file, {}, 0)
{
    file.replaceWithText ({});
    const auto rule = "//" + juce::String::repeatedString ("=", 77);
    logMessage (rule);
    logMessage ("// " + file.getFileName());
    logMessage ("// MIDI script created: " + now.toString (true, true));
    logMessage (rule);
}

bool writeScript (const juce::StringArray& lines, const juce::File& file)
{
    ScriptLogger script (file);
    for (const auto& line : lines)
        script.logMessage (line);
    return file.loadFileAsString().endsWith (lines[lines.size() - 1] + "\r\n");
}
