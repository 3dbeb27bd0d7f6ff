#include "plugins/catalogue/KnownPlugins.h"

#include "plugins/catalogue/PluginListFile.h"
#include "support/files/ReplaceFile.h"

#include <algorithm>
#include <map>

namespace
{
/** This system's own plug-in: its slots would hold it again, without an end. */
bool isThisSystem (const juce::PluginDescription& plugin)
{
    return plugin.name == "Platterdex" && plugin.manufacturerName == "Tonal-Yard";
}
}

std::shared_ptr<KnownPlugins> KnownPlugins::of (const juce::File& file)
{
    static std::mutex mutex;
    static std::map<juce::String, std::weak_ptr<KnownPlugins>> lists;
    const std::scoped_lock scope (mutex);
    auto& place = lists[file.getFullPathName()];
    if (auto shared = place.lock())
        return shared;
    auto made = std::make_shared<KnownPlugins> (file);
    place = made;
    return made;
}

KnownPlugins::KnownPlugins (const juce::File& f) : file (f)
{
    juce::MemoryBlock bytes;
    if (file.existsAsFile() && file.loadFileAsData (bytes))
        if (auto read =
                PluginListFile::read ({ static_cast<const char*> (bytes.getData()), bytes.getSize() }))
            list = std::move (*read);
}

void KnownPlugins::put (const juce::String& scannedFile, std::vector<KnownPluginEntry> found)
{
    const std::scoped_lock scope (lock);
    std::erase_if (list, [&] (const KnownPluginEntry& entry) { return entry.file == scannedFile; });
    std::move (found.begin(), found.end(), std::back_inserter (list));
    std::stable_sort (list.begin(), list.end(),
                      [] (const KnownPluginEntry& a, const KnownPluginEntry& b)
                      { return a.description.name.compareNatural (b.description.name) < 0; });
    ++changes;
}

void KnownPlugins::removeMissing()
{
    const std::scoped_lock scope (lock);
    if (std::erase_if (list, [] (const KnownPluginEntry& entry) { return !juce::File (entry.file).exists(); })
        > 0)
        ++changes;
}

void KnownPlugins::clear()
{
    const std::scoped_lock scope (lock);
    list.clear();
    ++changes;
}

bool KnownPlugins::isUpToDate (const juce::File& scanned) const
{
    const std::scoped_lock scope (lock);
    const auto time = scanned.getLastModificationTime().toMilliseconds();
    return std::any_of (list.begin(), list.end(),
                        [&] (const KnownPluginEntry& entry)
                        { return entry.file == scanned.getFullPathName() && entry.fileTime == time; });
}

std::vector<KnownPluginEntry> KnownPlugins::entries() const
{
    const std::scoped_lock scope (lock);
    return list;
}

std::vector<KnownPluginEntry> KnownPlugins::usable() const
{
    auto all = entries();
    std::erase_if (all,
                   [] (const KnownPluginEntry& entry) {
                       return !entry.isUsable() || entry.description.numOutputChannels < 1
                              || isThisSystem (entry.description);
                   });
    return all;
}

std::optional<KnownPluginEntry> KnownPlugins::find (const juce::String& pathOrName) const
{
    const auto all = usable();
    const auto first = [&all] (auto&& fits) -> std::optional<KnownPluginEntry>
    {
        const auto found = std::find_if (all.begin(), all.end(), fits);
        return found != all.end() ? std::optional (*found) : std::nullopt;
    };
    if (pathOrName.isEmpty())
        return {};
    if (auto exact = first (
            [&] (const KnownPluginEntry& entry)
            {
                return entry.description.matchesIdentifierString (pathOrName) || entry.file == pathOrName
                       || entry.description.fileOrIdentifier == pathOrName;
            }))
        return exact;
    if (auto named = first ([&] (const KnownPluginEntry& entry)
                            { return entry.description.name.equalsIgnoreCase (pathOrName); }))
        return named;
    const auto begins = [&] (const KnownPluginEntry& entry)
    { return entry.description.name.startsWithIgnoreCase (pathOrName); };
    return std::count_if (all.begin(), all.end(), begins) == 1 ? first (begins) : std::nullopt;
}

bool KnownPlugins::save() const
{
    const auto bytes = PluginListFile::write (entries());
    return file.getParentDirectory().createDirectory() && replaceFile (file, bytes.data(), bytes.size());
}

uint32_t KnownPlugins::revision() const
{
    const std::scoped_lock scope (lock);
    return changes;
}
