#include "plugins/slot/LoadingMarker.h"

#include "support/files/ReplaceFile.h"

#include <algorithm>

LoadingMarker::LoadingMarker (juce::File f, std::function<bool()> may)
    : file (std::move (f)),
      mayWrite (std::move (may))
{
}

std::array<juce::String, LoadingMarker::slots> LoadingMarker::takeBlamed()
{
    if (file == juce::File() || !file.existsAsFile())
        return {};
    // A line a slot: its letter, a blank, the name.
    for (const auto& line : juce::StringArray::fromLines (file.loadFileAsString()))
        if (const auto slot = static_cast<int> (line[0]) - 'A'; slot >= 0 && slot < slots)
            names[static_cast<size_t> (slot)] = line.substring (2);
    const auto blamed = names;
    for (int slot = 0; slot < slots; ++slot)
        set (slot, {});
    return blamed;
}

void LoadingMarker::set (int slot, const juce::String& name)
{
    auto& own = names[static_cast<size_t> (slot)];
    if (own == name || file == juce::File() || !mayWrite())
        return;
    own = name;
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
