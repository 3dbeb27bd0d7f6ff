#include "ui/browser/files/BrowserColumn.h"

BrowserColumn::BrowserColumn (BasicFileBrowser& browser, const juce::File& f)
    : folder (f),
      contents (&browser.filter(), browser.thread()),
      files (contents)
{
    addAndMakeVisible (files);
    contents.setDirectory (folder, true, true);
}

void BrowserColumn::settle()
{
    constexpr int lookMs = 1;
    while (contents.isStillLoading())
        juce::Thread::sleep (lookMs);
    files.contentsCame();
}

juce::File BrowserColumn::selectedFolder() const
{
    const auto file = files.getSelectedFile();
    return files.getNumSelectedFiles() == 1 && file.isDirectory() ? file : juce::File();
}

void BrowserColumn::resized()
{
    files.setBounds (getLocalBounds().withTrimmedRight (1)); // a line parts it from the next
}
