#pragma once

#include "ui/browser/files/PXFileListComponent.h"

/** One column of the file browser: the folders and files of a folder. Message thread. */
class BrowserColumn : public juce::Component
{
public:
    BrowserColumn (BasicFileBrowser&, const juce::File& folder);

    const juce::File folder;
    PXFileListComponent& list() noexcept { return files; }

    /** Waits until the folder is read. */
    void settle();

    /** The selected folder, or none. */
    juce::File selectedFolder() const;

    void resized() override;

private:
    juce::DirectoryContentsList contents;
    PXFileListComponent files;
};
