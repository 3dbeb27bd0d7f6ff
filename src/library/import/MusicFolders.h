#pragma once

#include <juce_core/juce_core.h>

#include <mutex>

/** The folders that were imported, which are looked at again for moved and new files: one a line in a file beside the library,
    which windows and verbs share. Any thread that may block. */
class MusicFolders
{
public:
    /** @param listFile   made with the first folder; without one nothing is noted */
    explicit MusicFolders (juce::File listFile) : list (std::move (listFile)) {}

    /** The place of the list. @param library   the library's file */
    static juce::File beside (const juce::File& library);

    juce::StringArray all() const;

    /** Notes the folders among what was imported; those below a known one are known with it. One that can't be written down
        is only not looked at again.
        @param paths   absolute, of files and folders */
    void note (const juce::StringArray& paths);

private:
    const juce::File list;
    mutable std::mutex lock; ///< of the file
};
