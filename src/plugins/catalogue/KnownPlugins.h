#pragma once

#include "plugins/catalogue/KnownPluginEntry.h"

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/** The plug-ins that scans have found, and the files that could not be scanned. Any thread that may block. */
class KnownPlugins
{
public:
    /** The list that all engines of this process share for one file. Without a readable file it is empty.
        @param file   "vst_plugins_list.xml" */
    static std::shared_ptr<KnownPlugins> of (const juce::File& file);

    /** Reads a file that exists; a list that can't be read counts as empty and is replaced by the next save. */
    explicit KnownPlugins (const juce::File&);

    /** Replaces all that is known of one file. @param found   what the scan has found in it, with that file */
    void put (const juce::String& scannedFile, std::vector<KnownPluginEntry> found);

    /** Forgets everything of files that have gone. */
    void removeMissing();

    /** Forgets everything that is known of a file, so that it is scanned again. */
    void remove (const juce::String& scannedFile) { put (scannedFile, {}); }
    void clear();

    /** True if the file was scanned and has not changed since. */
    bool isUpToDate (const juce::File&) const;

    /** All entries, by name. */
    std::vector<KnownPluginEntry> entries() const;

    /** The entries that slots can load, by name: effects and instruments with an output. */
    std::vector<KnownPluginEntry> usable() const;

    /** The usable plug-in that a user means: by its file's path, JUCE's identifier, its whole name, or the beginning of
        its name if only one begins so. Cases don't matter in names. */
    std::optional<KnownPluginEntry> find (const juce::String& pathOrName) const;

    /** Writes the file. @returns false if that failed */
    bool save() const;

    /** Grows with every change. */
    uint32_t revision() const;

private:
    const juce::File file;
    mutable std::mutex lock;
    std::vector<KnownPluginEntry> list;
    uint32_t changes = 0;
};
