#include "ui/browser/files/PXFileListComponent.h"

#include "support/language/Translate.h"
#include "ui/drag/DragImage.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int margin = 8;
}

PXFileListComponent::PXFileListComponent (juce::DirectoryContentsList& contents)
    : DirectoryContentsDisplayComponent (contents)
{
    setModel (this); // once it is there
    setTitle (tr ("Files"));
    setMultipleSelectionEnabled (true);
    directoryContentsList.addChangeListener (this);
}

PXFileListComponent::~PXFileListComponent()
{
    setModel (nullptr);
    directoryContentsList.removeChangeListener (this);
}

juce::File PXFileListComponent::getSelectedFile (int index) const
{
    const auto row = getSelectedRow (index);
    return row >= 0 ? directoryContentsList.getFile (row) : juce::File();
}

void PXFileListComponent::setSelectedFile (const juce::File& file)
{
    waitingToBeSelected = file;
    for (int row = 0; row < directoryContentsList.getNumFiles(); ++row)
        if (directoryContentsList.getFile (row) == file)
        {
            waitingToBeSelected = juce::File();
            updateContent();
            return selectRow (row);
        }
}

void PXFileListComponent::contentsCame()
{
    updateContent();
    repaint();
    if (rereads)
        return selectKept();
    if (waitingToBeSelected != juce::File())
        setSelectedFile (waitingToBeSelected);
}

void PXFileListComponent::reread()
{
    kept.clear();
    for (int i = 0; i < getNumSelectedFiles(); ++i)
        kept.add (getSelectedFile (i));
    rereads = true;
    directoryContentsList.refresh();
}

/** Selects what was selected, once all of it is there again or the folder is read to its end. */
void PXFileListComponent::selectKept()
{
    juce::SparseSet<int> rows;
    for (int row = 0; row < count(); ++row)
        if (kept.contains (directoryContentsList.getFile (row)))
            rows.addRange ({ row, row + 1 });
    setSelectedRows (rows, juce::dontSendNotification);
    if (rows.size() < kept.size() && directoryContentsList.isStillLoading())
        return;
    rereads = false;
    if (rows.size() < kept.size())
        selectedRowsChanged (-1);
}

juce::StringArray PXFileListComponent::draggedFiles() const
{
    juce::StringArray paths;
    for (int i = 0; i < getNumSelectedFiles(); ++i)
        paths.add (getSelectedFile (i).getFullPathName());
    return paths;
}

void PXFileListComponent::paintListBoxItem (int row, juce::Graphics& g, int width, int height, bool selected)
{
    juce::DirectoryContentsList::FileInfo info;
    if (!directoryContentsList.getFileInfo (row, info))
        return;
    getLookAndFeel().drawFileBrowserRow (
        g, width, height, directoryContentsList.getDirectory().getChildFile (info.filename), info.filename,
        nullptr, juce::File::descriptionOfSizeInBytes (info.fileSize),
        info.modificationTime.formatted ("%d %b '%y %H:%M"), info.isDirectory, selected, row, *this);
}

/** Says of an empty folder that it is one: where there is room for one column it would be a dark one. */
void PXFileListComponent::paintOverChildren (juce::Graphics& g)
{
    ListBox::paintOverChildren (g);
    if (count() == 0 && !directoryContentsList.isStillLoading())
        PanelPaint::label (g, tr ("No songs or folders."),
                           getLocalBounds().withHeight (2 * getRowHeight()).reduced (margin, 0));
}

juce::ScaledImage PXFileListComponent::createSnapshotOfRows (const juce::SparseSet<int>& dragged, int& x,
                                                             int& y)
{
    const auto text =
        dragged.size() == 1 ? getNameForRow (dragged[0]) : trPlural ("%1 file", "%1 files", dragged.size());
    return DragImage::make (*this, text, x, y);
}

juce::var PXFileListComponent::getDragSourceDescription (const juce::SparseSet<int>&)
{
    return DragSourceName::ofPress (DragSourceName::files);
}

void PXFileListComponent::listBoxItemDoubleClicked (int row, const juce::MouseEvent&)
{
    returnKeyPressed (row);
}

void PXFileListComponent::returnKeyPressed (int row)
{
    if (const auto file = directoryContentsList.getFile (row); file != juce::File() && onOpen != nullptr)
        onOpen (file);
}

void PXFileListComponent::selectedRowsChanged (int)
{
    if (onSelection != nullptr && !rereads)
        onSelection();
}

bool PXFileListComponent::keyPressed (const juce::KeyPress& key)
{
    if (onKey != nullptr && onKey (key))
        return true;
    if (ListBox::keyPressed (key))
        return true;
    if (!typed.take (key))
        return false;
    if (const auto row =
            typed.find (getSelectedRow(), count(), [this] (int each) { return getNameForRow (each); });
        row >= 0)
        selectRow (row);
    return true;
}
