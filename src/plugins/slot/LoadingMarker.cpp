#include "plugins/slot/LoadingMarker.h"

#include "support/files/ReplaceFile.h"

#include <algorithm>

LoadingMarker::LoadingMarker (juce::File f) : file (std::move (f)) {}

std::array<juce::String, LoadingMarker::slots> LoadingMarker::takeBlamed()
{
    std::array<juce::String, slots> blamed;
    if (file == juce::File() || !file.existsAsFile())
        return blamed;
    // A line a slot: its letter, a blank, the name.
    for (const auto& line : juce::StringArray::fromLines (file.loadFileAsString()))
        if (const auto slot = static_cast<int> (line[0]) - 'A'; slot >= 0 && slot < slots)
            blamed[static_cast<size_t> (slot)] = line.substring (2);
    file.deleteFile();
    return blamed;
}

void LoadingMarker::set (int slot, const juce::String& name)
{
    auto& own = names[static_cast<size_t> (slot)];
    if (own == name)
        return;
    own = name;
    if (file == juce::File())
        return;
    juce::String text;
    for (int i = 0; i < slots; ++i)
        if (const auto& each = names[static_cast<size_t> (i)]; each.isNotEmpty())
            text << juce::String::charToString (static_cast<juce::juce_wchar> ('A' + i)) << " " << each
                 << "\n";
    if (text.isEmpty())
        file.deleteFile();
    else // unwritten, nobody is blamed
        juce::ignoreUnused (replaceFile (file, text.toRawUTF8(), text.getNumBytesAsUTF8()));
}
