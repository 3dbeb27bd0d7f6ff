#pragma once

#include "ui/browser/files/BasicFileBrowser.h"
#include "ui/browser/model/RowMenuPress.h"
#include "ui/browser/model/TypeAhead.h"
#include "ui/drag/FileDragSource.h"

#include <atomic>
#include <functional>

/** The folders and audio files of one folder, read in the background. Files are dragged from it. Message thread. */
class PXFileListComponent : public juce::ListBox,
                            public juce::DirectoryContentsDisplayComponent,
                            public FileDragSource,
                            private juce::ListBoxModel,
                            private juce::ChangeListener
{
public:
    /** @param contents   outlives this */
    explicit PXFileListComponent (juce::DirectoryContentsList& contents);
    ~PXFileListComponent() override;

    std::function<void()> onSelection;                 ///< another file or folder is selected
    std::function<void (const juce::File&)> onOpen;    ///< a double click or Return
    std::function<void (const juce::File&)> onMenu;    ///< the right button
    std::function<bool (const juce::KeyPress&)> onKey; ///< keys that the list leaves alone

    /** Folders and files that are known so far. */
    int count() const { return directoryContentsList.getNumFiles(); }

    int getNumSelectedFiles() const override { return getNumSelectedRows(); }
    juce::File getSelectedFile (int index = 0) const override;
    void deselectAllFiles() override { deselectAllRows(); }
    void scrollToTop() override { getVerticalScrollBar().setCurrentRangeStart (0.0); }

    /** Selects a file once the folder has been read so far. */
    void setSelectedFile (const juce::File&) override;

    /** Reads the folder again; what is selected stays selected, as far as it is still there. */
    void reread();
    bool isRereading() const noexcept { return rereads; }

    /** Shows what has been read since. */
    void contentsCame();

    juce::StringArray draggedFiles() const override;
    void paintOverChildren (juce::Graphics&) override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    int getNumRows() override { return count(); }
    void paintListBoxItem (int row, juce::Graphics&, int width, int height, bool selected) override;
    void listBoxItemDoubleClicked (int row, const juce::MouseEvent&) override;
    void returnKeyPressed (int row) override;
    void selectedRowsChanged (int) override;
    juce::var getDragSourceDescription (const juce::SparseSet<int>&) override;
    juce::ScaledImage createSnapshotOfRows (const juce::SparseSet<int>&, int& x, int& y) override;
    juce::String getNameForRow (int row) override
    {
        return directoryContentsList.getFile (row).getFileName();
    }
    void changeListenerCallback (juce::ChangeBroadcaster*) override { contentsCame(); }

    TypeAhead typed;
    void selectKept();

    juce::File waitingToBeSelected;
    juce::Array<juce::File> kept; ///< that were selected before the folder was read again
    std::atomic<bool> rereads { false };
    RowMenuPress menuPress { *this, [this] (int row, juce::Point<int>)
                             {
                                 if (onMenu != nullptr)
                                     onMenu (directoryContentsList.getFile (row));
                             } };
};
