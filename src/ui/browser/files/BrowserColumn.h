#pragma once

#include "ui/browser/files/PXFileListComponent.h"

/** One column of the file browser: the folders and files of a folder, read again when it has changed. Message thread; looks at
    the disk on the browser's thread. */
class BrowserColumn : public juce::Component, private juce::TimeSliceClient, private juce::AsyncUpdater
{
public:
    BrowserColumn (BasicFileBrowser&, const juce::File& folder);
    ~BrowserColumn() override;

    const juce::File folder;
    PXFileListComponent& list() noexcept { return files; }

    /** Waits until the folder is read. */
    void settle();

    /** The selected folder, or none. */
    juce::File selectedFolder() const;

    void resized() override;

private:
    int useTimeSlice() override;
    void handleAsyncUpdate() override;

    juce::TimeSliceThread& reader;
    juce::Time changed; ///< of the folder; of the browser's thread
    juce::DirectoryContentsList contents;
    PXFileListComponent files;
};
