#pragma once

#include "session/browse/LibrarySources.h"
#include "ui/browser/actions/SourceActions.h"
#include "ui/browser/model/TypeAhead.h"
#include "ui/browser/tree/SourcesTreeItem.h"

#include <memory>

/** The tree of all lists of songs: the library by albums, artists and genres, playlists, smart playlists, the automix list,
    the recommendations, a foreign library, and the sessions that were played. Message thread. */
class SourcesTree : public juce::TreeView
{
public:
    SourcesTree (BrowserWorld&, SourceActions&);
    ~SourcesTree() override;

    /** Takes the library's lists, once there is a library. */
    void openLibrary();

    /** Reads the lists again. */
    void rebuild();

    /** Another source is selected. */
    std::function<void (const Source&)> onSource;
    std::function<void()> onEnter;  ///< the keyboard is to go on to the songs
    std::function<void()> onEscape; ///< or back to the decks

    /** Selects the row of a source; nothing happens if the tree has none. */
    void select (const Source&);
    std::optional<Source> selectedSource() const;

    /** The source that is called so, in any letter case; of albums, artists and genres those that are read. */
    std::optional<Source> named (const juce::String&) const;

    /** The playlists that there are. */
    std::vector<SourceItem> playlists() const;

    /** Opens the rows of albums, artists and genres, so that they are read. */
    void openValues();

    /** The menu of a row; empty where there is none. */
    juce::PopupMenu menuOf (const TreeNode&);

    /** Moves the selection. @param by   visible rows */
    void step (int by);

    /** Opens a closed row, or goes on to its songs. */
    void enter();

    /** Closes an open row, or goes to the one that holds it. */
    void leave();

    void setFontSize (int size);
    const juce::Font& font() const noexcept { return textFont; }
    int rowHeight() const noexcept { return height; }

    /** The rows that are open, to open them again in another session. */
    juce::String openness() const;
    void restoreOpenness (const juce::String&);

    /** Shows what has changed while a hand held the tree: a row that goes would take a drag, or a name that is being typed, with
        it. Called at each tick. */
    void catchUp();

    /** Waits for the lists. For programs without a message loop. */
    void settle();

    bool keyPressed (const juce::KeyPress&) override;
    void resized() override;

private:
    friend class SourcesTreeItem;

    void itemSelected (SourcesTreeItem&);
    void itemOpened (SourcesTreeItem&, bool isOpen);
    void openMenu (SourcesTreeItem&, bool isByKey);
    void actOn (SourcesTreeItem&);
    void rename (SourcesTreeItem&);
    bool takes (const SourcesTreeItem&, const juce::DragAndDropTarget::SourceDetails&) const;
    void drop (const SourcesTreeItem&, const juce::DragAndDropTarget::SourceDetails&);
    bool takes (const SourcesTreeItem&, const juce::StringArray& files) const;
    void drop (const SourcesTreeItem&, const juce::StringArray& files);

    SourcesTreeItem& add (juce::TreeViewItem& parent, TreeNode::Role, const juce::String& text,
                          int32_t id = -1);
    void addAll (juce::TreeViewItem& parent, TreeNode::Role, const std::vector<SourceItem>&);
    void fill();
    bool isHeld() const;
    void leaveGone();
    void wantValues();
    SourcesTreeItem* find (const std::function<bool (const TreeNode&)>&) const;

    BrowserWorld& world;
    SourceActions& actions;
    std::unique_ptr<LibrarySources> sources;
    std::unique_ptr<SourcesTreeItem> root;
    juce::Font textFont;
    int height = 24;
    Source selected;
    bool isFilling = false, owesFill = false;
    TypeAhead typed;
    std::unique_ptr<SourcesTreeItemLabel> label; ///< over the row that is being renamed
};
