#pragma once

#include "ui/look/SMLookAndFeel.h"

/** The look of the browser's columns: rows of tables, and bars so narrow that the names keep the room. */
class ColumnFileBrowserLookAndFeel : public SMLookAndFeel
{
public:
    ColumnFileBrowserLookAndFeel();

    int getDefaultScrollbarWidth() override { return 8; }
    void drawFileBrowserRow (juce::Graphics&, int width, int height, const juce::File&,
                             const juce::String& name, juce::Image* icon, const juce::String& size,
                             const juce::String& time, bool isFolder, bool selected, int row,
                             juce::DirectoryContentsDisplayComponent&) override;
};
