#include "midi/script/ScriptJournal.h"

#include "support/xml/Utf8.h"
#include "support/xml/XmlCharacters.h"

#include <algorithm>
#include <array>
#include <string>

juce::String textFromScript (std::string_view bytes)
{
    std::string text;
    for (size_t at = 0; at < bytes.size() && bytes[at] != 0;)
    {
        const auto* const here = reinterpret_cast<const unsigned char*> (bytes.data()) + at;
        const auto [character, length] = utf8At (here, bytes.size() - at);
        XmlCharacters::append (text, character);
        at += length;
    }
    return juce::String::fromUTF8 (text.data(), static_cast<int> (text.size()));
}

juce::String textOf (const ScriptEntry& entry)
{
    if (entry.kind == ScriptEntry::Kind::log)
        return entry.text;
    constexpr std::array words { "Error", "Warning", "Info" };
    return juce::String (words[static_cast<size_t> (entry.kind)]) + " (Ln " + juce::String (entry.line)
           + ", Col " + juce::String (entry.column) + ") : " + entry.text;
}

void ScriptJournal::add (std::span<const ScriptEntry> added)
{
    const std::lock_guard guard (lock);
    for (const auto& entry : added)
    {
        entries.push_back (entry);
        entries.back().number = ++lastNumber;
        if (entries.size() > capacity)
            entries.pop_front();
    }
}

std::vector<ScriptEntry> ScriptJournal::after (uint64_t number) const
{
    const std::lock_guard guard (lock);
    const auto first = std::find_if (entries.begin(), entries.end(),
                                     [number] (const auto& entry) { return entry.number > number; });
    return { first, entries.end() };
}

uint64_t ScriptJournal::newest() const
{
    const std::lock_guard guard (lock);
    return lastNumber;
}
