#include "ui/browser/files/PXFileListComponent.h"

PXFileListComponent::PXFileListComponent (juce::DirectoryContentsList& contents)
    : DirectoryContentsDisplayComponent (contents)
{
    setModel (this); // once it is there
    setTitle ("Files");
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
    if (waitingToBeSelected != juce::File())
        setSelectedFile (waitingToBeSelected);
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

void PXFileListComponent::listBoxItemClicked (int row, const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu() && onMenu != nullptr)
        onMenu (directoryContentsList.getFile (row));
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
    if (onSelection != nullptr)
        onSelection();
}

bool PXFileListComponent::keyPressed (const juce::KeyPress& key)
{
    if (onKey != nullptr && onKey (key))
        return true;
    if (ListBox::keyPressed (key))
        return true;
    const auto mods = key.getModifiers();
    if (key.getTextCharacter() <= ' ' || mods.isCtrlDown() || mods.isAltDown())
        return false;
    selectByLetters (key.getTextCharacter());
    return true;
}

/** Goes to the next name that begins with a letter. */
void PXFileListComponent::selectByLetters (juce::juce_wchar letter)
{
    const auto count = directoryContentsList.getNumFiles();
    for (int i = 1; i <= count; ++i)
        if (const auto row = (std::max (0, getSelectedRow()) + i) % count;
            getNameForRow (row).startsWithIgnoreCase (juce::String::charToString (letter)))
            return selectRow (row);
}
