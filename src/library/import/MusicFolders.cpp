#include "library/import/MusicFolders.h"

#include <algorithm>
#include <fstream>

juce::File MusicFolders::beside (const juce::File& library)
{
    return library != juce::File() ? library.getSiblingFile ("music_folders.txt") : juce::File();
}

juce::StringArray MusicFolders::all() const
{
    const std::scoped_lock scope (lock);
    auto lines = juce::StringArray::fromLines (list.loadFileAsString());
    lines.removeEmptyStrings();
    lines.removeDuplicates (false);
    return lines;
}

void MusicFolders::note (const juce::StringArray& paths)
{
    auto known = all();
    juce::String added;
    for (const auto& path : paths)
    {
        const auto isKnown = std::any_of (known.begin(), known.end(),
                                          [&path] (const juce::String& folder)
                                          { return path == folder || path.startsWith (folder + "/"); });
        if (isKnown || !juce::File (path).isDirectory() || path.containsAnyOf ("\r\n"))
            continue;
        known.add (path);
        added << path << "\n";
    }
    const std::scoped_lock scope (lock);
    // Appended, so that of two programs that import at once neither takes the other's folder away.
    if (added.isNotEmpty() && list != juce::File())
        std::ofstream (list.getFullPathName().toStdString(), std::ios::app) << added.toStdString();
}
