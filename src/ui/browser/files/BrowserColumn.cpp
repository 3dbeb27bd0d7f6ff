#include "ui/browser/files/BrowserColumn.h"

#include <utility>

namespace
{
constexpr int lookAgainMs = 2000;
}

BrowserColumn::BrowserColumn (BasicFileBrowser& browser, const juce::File& f)
    : folder (f),
      reader (browser.thread()),
      contents (&browser.filter(), browser.thread()),
      files (contents)
{
    addAndMakeVisible (files);
    contents.setDirectory (folder, true, true);
    reader.addTimeSliceClient (this, lookAgainMs);
}

BrowserColumn::~BrowserColumn()
{
    reader.removeTimeSliceClient (this);
    cancelPendingUpdate();
}

int BrowserColumn::useTimeSlice()
{
    const auto now = folder.getLastModificationTime();
    const auto isFirstLook = changed == juce::Time();
    if ((std::exchange (changed, now) != now && !isFirstLook) || files.isRereading())
        triggerAsyncUpdate();
    return lookAgainMs;
}

void BrowserColumn::handleAsyncUpdate()
{
    if (files.isRereading())
        files.contentsCame(); // the end of a folder is not always told
    else
        files.reread();
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
