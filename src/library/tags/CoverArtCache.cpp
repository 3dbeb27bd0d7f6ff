#include "library/tags/CoverArtCache.h"

#include "library/tags/CoverArt.h"

#include <algorithm>

CoverArtCache::CoverArtCache (int s, size_t pictures) : side (s), most (pictures) {}

std::list<CoverArtCache::Entry>::iterator CoverArtCache::take (const juce::String& path)
{
    const auto found = std::find_if (entries.begin(), entries.end(),
                                     [&path] (const Entry& entry) { return entry.path == path; });
    if (found == entries.end())
        return found;
    entries.splice (entries.begin(), entries, found);
    return entries.begin();
}

std::optional<juce::Image> CoverArtCache::find (const juce::String& path)
{
    const std::scoped_lock scope (lock);
    const auto entry = take (path);
    return entry != entries.end() ? std::optional (entry->picture) : std::nullopt;
}

juce::Image CoverArtCache::read (const juce::String& path)
{
    const auto changed = juce::File::createFileWithoutCheckingPath (path).getLastModificationTime();
    {
        const std::scoped_lock scope (lock);
        if (const auto entry = take (path); entry != entries.end() && entry->changed == changed)
            return entry->picture;
    }
    auto picture = readCoverArt (path, side);
    const std::scoped_lock scope (lock);
    if (const auto old = take (path); old != entries.end())
        entries.erase (old);
    entries.push_front ({ path, changed, picture });
    if (entries.size() > most)
        entries.pop_back();
    return picture;
}
