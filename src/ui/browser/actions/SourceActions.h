#pragma once

#include "ui/browser/model/BrowserWorld.h"
#include "ui/browser/model/Source.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** Carries out on lists what the tree's menus and drops ask for. Message thread. */
class SourceActions
{
public:
    /** @param asker   while it is there, answers to questions count */
    SourceActions (BrowserWorld&, juce::Component& asker);

    void importFolder();
    void backUp();
    void clearLibrary();

    /** Looks again at all folders that were imported. */
    void lookAtFolders();

    /** Asks for a folder, and looks there for songs whose files are missing. */
    void relocate();

    /** Asks for a name. @param songIds   that the playlist begins with */
    void createPlaylist (std::vector<int32_t> songIds = {});
    void importPlaylist();
    void createSmartPlaylist();

    void remove (const Source&);
    void rename (const Source&, const juce::String& name);
    void move (const Source&, int by);
    void clear (const Source&);
    void appendToAutomix (const Source&);

    /** The value of SimilarSongs::priorities that recommendations follow; empty without a session. */
    juce::String similarPriority() const;

    /** Prefers another one, and orders the recommendations by it. */
    void setSimilarPriority (const juce::String& value);

    /** Lets automix go on with songs that fit when its list has come to its end, or not. */
    bool continuesAutomix() const;
    void setContinuesAutomix (bool);

    /** Writes keys that analyses find as hours of the wheel ("8A") from now on, or as letters ("Am"). */
    bool writesKeysByWheel() const;
    void setWritesKeysByWheel (bool);

    /** Appends all songs of one source to a list. */
    void append (const Source&, ListRef);
    void append (std::vector<int32_t> songIds, ListRef);
    void importFiles (const juce::StringArray&, ListRef);

    enum class Format
    {
        m3u,
        html,
        text ///< of a session alone: a line a song, with tabs between its parts
    };
    void exportTo (const Source&, Format);

    /** Opens the editor of a smart playlist's rules in a window of its own. */
    void editRules (const Source&);

    /** Offers to take back the last edit of a list. */
    void addUndo (juce::PopupMenu&);

    /** Shows a source that the tree has no row for. */
    std::function<void (const Source&)> showSource;
    void showMissing();

    /** Makes the order that the table shows the list's own. */
    std::function<void (const Source&)> copyToPlayOrder;

private:
    void ask (const juce::String& title, const juce::String& question, std::function<void()> yes);
    void askFile (const Prompts::FileQuestion&, std::function<void (const juce::File&)>);
    LibraryEdits::Done done();
    LibraryEdits::Placed placed();

    BrowserWorld& world;
    juce::Component& asker;
};
