#include "session/report/SystemReport.h"

#include "deck/state/DeckNumbers.h"
#include "settings/SettingNames.h"

#include <sys/utsname.h>

namespace
{
constexpr const char* mask = "(path)";
constexpr int longestExtension = 6; // "sqlite"

bool isWordCharacter (juce::juce_wchar c)
{
    return juce::CharacterFunctions::isLetterOrDigit (c) || c == '_' || c == '.' || c == '~';
}

/** The first place from which a path goes on from the root; -1 if there is none. "MP3/WAV" and "1/8" are no paths. */
int beginOfPath (const juce::String& line, int from)
{
    for (auto at = line.indexOfChar (from, '/'); at >= 0; at = line.indexOfChar (at + 1, '/'))
    {
        const auto isBegin = at == 0 || !isWordCharacter (line[at - 1]) || line[at - 1] == '~';
        if (isBegin && at + 1 < line.length() && line[at + 1] != ' ')
            return at;
    }
    return -1;
}

/** The end of a path: behind the extension before the next sign that ends a name, or the line's end. */
int endOfPath (const juce::String& line, int begin)
{
    auto end = line.length();
    for (auto dot = line.indexOfChar (begin, '.'); dot >= 0; dot = line.indexOfChar (dot + 1, '.'))
    {
        auto behind = dot + 1;
        while (behind < line.length() && juce::CharacterFunctions::isLetterOrDigit (line[behind]))
            ++behind;
        const auto isExtension =
            behind > dot + 1 && behind <= dot + 1 + longestExtension
            && (behind == line.length() || juce::String (" :;,.!?)\"'|").containsChar (line[behind]));
        if (!isExtension)
            continue;
        end = behind;
        // "/a/b.c d/e.mp3": a further slash is of the same path, unless one begins anew.
        const auto next = line.indexOfChar (end, '/');
        if (next < 0 || next == beginOfPath (line, end))
            break;
        end = line.length();
    }
    return end;
}

void section (juce::String& text, const char* title, const juce::StringArray& lines)
{
    text << "\n[" << title << "]\n";
    for (const auto& line : lines)
        text << line << "\n";
    if (lines.isEmpty())
        text << "none\n";
}

juce::StringArray machine()
{
    utsname system {};
    juce::StringArray lines;
    if (uname (&system) == 0)
        lines.add (juce::String (system.sysname) + " " + juce::String (system.release) + " "
                   + juce::String (system.machine));
    lines.add (juce::SystemStats::getCpuModel() + ", " + juce::String (juce::SystemStats::getNumCpus())
               + " processors, " + juce::String (juce::SystemStats::getMemorySizeInMegabytes()) + " MB");
    lines.add ("Language " + juce::SystemStats::getUserLanguage());
    return lines;
}
}

juce::String withoutPaths (const juce::String& line)
{
    juce::String masked;
    auto from = 0;
    for (auto begin = beginOfPath (line, 0); begin >= 0; begin = beginOfPath (line, from))
    {
        masked << line.substring (from, begin) << mask;
        from = endOfPath (line, begin);
    }
    return masked + line.substring (from);
}

juce::StringArray changedSettings (const EngineSettings& now, const Folders& folders)
{
    const auto atFirst = defaultSettings (folders);
    juce::StringArray lines;
    for (const auto& row : SettingName::all())
        for (int deck = 0; deck < (row.isOfDeck ? deckCount : 1); ++deck)
        {
            const NamedSetting setting { &row, deck };
            if (const auto value = setting.valueIn (now); value != setting.valueIn (atFirst))
                lines.add (setting.fullName() + " = " + value);
        }
    return lines;
}

juce::String SystemReport::text (bool withPaths) const
{
    juce::String made;
    made << "Platterdex " << version << ", " << juce::SystemStats::getJUCEVersion() << ", "
         << juce::Time::getCurrentTime().toISO8601 (true) << "\n";
    section (made, "Machine", machine());
    section (made, "Audio", audio);
    if (lostFrames > 0)
        made << "Recorder: " << lostFrames << " frames lost, the disk is too slow.\n";
    section (made, "MIDI inputs", midiInputs);
    section (made, "MIDI outputs", midiOutputs);
    section (made, "Settings that differ from the default", settings);
    section (made, "Last notices", notices);
    if (withPaths)
        return made;
    juce::StringArray lines;
    for (const auto& line : juce::StringArray::fromLines (made))
        lines.add (withoutPaths (line));
    return lines.joinIntoString ("\n");
}
