#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The filter of audio files and the thread that reads folders, shared by all lists of files. Message thread. */
class BasicFileBrowser
{
public:
    BasicFileBrowser();
    ~BasicFileBrowser();

    juce::TimeSliceThread& thread() noexcept { return reader; }
    const juce::FileFilter& filter() const noexcept { return audioFiles; }

private:
    const juce::WildcardFileFilter audioFiles;
    juce::TimeSliceThread reader { "fileBrowser" };
};
