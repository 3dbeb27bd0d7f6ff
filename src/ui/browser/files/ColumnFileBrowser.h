#pragma once

#include "ui/browser/actions/SongActions.h"
#include "ui/browser/files/BrowserColumn.h"
#include "ui/look/ColumnFileBrowserLookAndFeel.h"

#include <memory>
#include <vector>

/** The columns, side by side. */
class ColumnFileBrowserContents : public juce::Component
{
public:
    std::vector<std::unique_ptr<BrowserColumn>> columns;

    void paint (juce::Graphics&) override;
};

/** Columns of folders: a folder that is chosen opens the next one to the right. Message thread. */
class ColumnFileBrowser : public juce::Component
{
public:
    ColumnFileBrowser (BrowserWorld&, SongActions&);
    ~ColumnFileBrowser() override;

    /** Shows a folder with all that lead to it. */
    void showFolder (const juce::File&);

    /** The folder of the last column. */
    juce::File folder() const;

    /** The selected file, or none. */
    juce::File selectedFile() const;

    /** Moves the selection in the column at hand. @param by   rows */
    void step (int by);

    /** Goes into the selected folder, or out of the one at hand. */
    void enter();
    void leave();

    void setFontSize (int size);

    /** Waits until all folders are read. For programs without a message loop. */
    void settle();

    std::function<void()> onEscape;                          ///< the keyboard is to go elsewhere
    std::function<void (const juce::StringArray&)> onImport; ///< files that are to come into the library

    /** Puts the keyboard into the column at hand. */
    void takeKeyboard();

    void resized() override;

private:
    void add (const juce::File& folder);
    void cut (size_t columns);
    void selectionChanged (BrowserColumn&);
    void open (const juce::File&);
    bool handleKey (const juce::KeyPress&);
    void openMenu (const juce::File&, juce::PopupMenu::Options);
    void arrange();
    BrowserColumn& current() const;

    BrowserWorld& world;
    SongActions& actions;
    ColumnFileBrowserLookAndFeel look;
    BasicFileBrowser files;
    ColumnFileBrowserContents contents;
    juce::Viewport viewport;
    size_t at = 0; ///< the column at hand
    int rowHeight = 24;
    bool isMaking = false; ///< columns, which are selected in on the way
};
