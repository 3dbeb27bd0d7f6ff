#pragma once

#include "engine/BrowserRequests.h"
#include "ui/browser/actions/SourceActions.h"
#include "ui/browser/files/ColumnFileBrowser.h"
#include "ui/browser/jobs/JobLine.h"
#include "ui/browser/preview/CoverArtPreview.h"
#include "ui/browser/preview/PreviewPlayerComponent.h"
#include "ui/browser/search/SearchEditor.h"
#include "ui/browser/table/PlaylistTable.h"
#include "ui/browser/tree/SourcesTree.h"
#include "ui/poll/PollingView.h"

/** The record crate, the lower half of the window: sources on the left, the songs of one of them in the middle under the search
    field, the files of the disk on the right, and a line with the sum of the songs, long tasks and the preview.

    It holds nothing of the library: all that is seen comes from the session's LibraryRoom, and every change goes there.
    Message thread. */
class SongManager : public PollingView, private juce::FocusChangeListener, private BrowserRequests::Receiver
{
public:
    /** @param session   null where there is no library; else it outlives this */
    SongManager (CPlatterdex&, Session* session);
    ~SongManager() override;

    /** Reads the source in view again. */
    void refresh();

    /** Writes what the batch analysis is at into the line at the bottom. */
    void showAnalysisProgress() { jobLine.refresh(); }

    /** Shows a source in the tree and in the table. */
    void showSource (const Source&);

    /** The same for a source by its name in the tree. For programs without a message loop. @returns false if there is none */
    bool showSourceNamed (const juce::String&);

    /** Puts the keyboard into the songs, or into the search field. */
    void takeKeyboard();
    /** Loads the selected song onto a deck that is free. */
    void loadToFreeDeck() { songActions.loadToFreeDeck (table.selectedPath()); }

    void takeKeyboardToSearch() { search.takeKeyboard(); }

    std::function<void()> onEscape;       ///< the keyboard goes back to the decks
    std::function<void()> onOpenInWindow; ///< the browser is to stand in a window of its own, or back

    /** Opens the library now, and waits for all that is on its way. For programs without a message loop. */
    void settle();

    PlaylistTable& songs() noexcept { return table; }
    SourcesTree& sources() noexcept { return tree; }
    SearchEditor& searchField() noexcept { return search; }
    ColumnFileBrowser& fileBrowser() noexcept { return files; }

    void paint (juce::Graphics&) override;
    void paintOverChildren (juce::Graphics&) override;
    void resized() override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    /** A bar between two panes, which keeps the sizes when it is let go. */
    struct PaneBar : juce::StretchableLayoutResizerBar
    {
        PaneBar (SongManager& m, juce::StretchableLayoutManager* layout, int item)
            : StretchableLayoutResizerBar (layout, item, true),
              manager (m)
        {
        }
        void hasBeenMoved() override;
        void paint (juce::Graphics&) override;

        SongManager& manager;
    };

    void pollMoving() override;
    void pollCalm() override;
    void globalFocusChanged (juce::Component*) override;
    bool openLibrary (LibraryRoom*);
    void followLibrary();
    void followSettings();
    void followForeign();
    void followMaster();
    void carryOut (BrowserRequest, int deck) override;
    void restorePanes();
    void storePanes();
    juce::Component* focusedPane() const;
    void turnKeyboard (int by);
    void songSelected();

    BrowserWorld world;
    SongStatus status;
    SongActions songActions;
    SourceActions sourceActions;

    SearchEditor search;
    SourcesTree tree;
    CoverArtPreview cover;
    PlaylistTable table;
    ColumnFileBrowser files;
    JobLine jobLine;
    PreviewPlayerComponent preview;
    PXTextButton windowButton;

    juce::StretchableLayoutManager panes;
    PaneBar leftBar, rightBar;
    juce::Rectangle<int> summaryArea;
    juce::String summary;
    juce::Component* lit = nullptr; ///< the pane that has the keyboard
    int fontSize = 0, shownCover = -1, shownForeign = -1;
    juce::String shownHint, namedForeign;
    int turnsUntilLibrary = 0, turns = 0;
    bool isAsking = false; ///< rows were on their way at the last look
};
