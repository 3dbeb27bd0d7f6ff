#pragma once

#include "session/browse/rows/RowSource.h"
#include "ui/browser/actions/SongActions.h"
#include "ui/browser/model/RowMenuPress.h"
#include "ui/browser/model/TypeAhead.h"
#include "ui/browser/table/RowPainter.h"
#include "ui/browser/table/TableLayout.h"
#include "ui/drag/FileDragSource.h"

#include <memory>

class CellEditor;

/** The songs of one source: sorted by a click on a header, searched, edited in their cells, dragged to decks, pads and lists.

    The old rows stay until the new ones are there; a row whose fields are not read yet is empty for a moment. Message
    thread. */
class PlaylistTable : public juce::TableListBox,
                      public FileDragSource,
                      public juce::DragAndDropTarget,
                      public juce::FileDragAndDropTarget,
                      private juce::TableListBoxModel
{
public:
    PlaylistTable (BrowserWorld&, SongActions&, const SongStatus&);
    ~PlaylistTable() override;

    /** Takes the library's rows, once there is a library. */
    void openLibrary();

    /** Loads a source, with the layout and the selection that it was left with. */
    void setSource (const Source&);
    const Source& source() const noexcept { return shown; }

    /** The source whose rows are in place: the one before, until the new rows are there. */
    const Source& rowsSource() const noexcept { return inPlace; }

    /** Narrows the source. @param fields   in which words are looked for */
    void setSearch (const juce::String& text, std::vector<SongField> fields);

    /** Sorts as a click on a header does. @param column   of TableColumn */
    void sortBy (int column, bool forwards);

    /** Leaves the songs whose tempo fits. @param bpm   0 for all songs */
    void setFit (double bpm, double percent);

    /** Leaves the songs whose grid is doubtful, or all. */
    void setGridsToCheck (bool);

    /** The tempo and the span that are in use. */
    std::pair<double, double> fit() const { return { query.fitBpm, query.fitPercent }; }

    /** The entries in the order in which they are shown. */
    std::vector<int32_t> entryIds() const;

    /** Stores the layout and the selection of the source. */
    void store();

    /** Reads the rows again. */
    void refresh();

    /** Looks again for the files of the rows on screen. */
    void lookForFiles();

    /** True while rows are asked for and have not come. */
    bool isOpening() const { return rows != nullptr && rows->isOpening(); }

    /** One sentence on why there are no rows. */
    juce::String emptyText() const;

    /** The rows that are in place. */
    const SongList& list() const;

    SelectedSongs selection() const;

    /** The path of the first selected song, if it is known. */
    juce::String selectedPath() const;

    /** The menu of a row for all selected songs. @param column   that "Edit" edits, if it can be */
    juce::PopupMenu rowMenu (int row, int column);

    /** Moves the selection. @param by   rows */
    void step (int by);
    void stepPage (int by) { step (by * std::max (1, getNumRowsOnScreen() - 1)); }

    /** Selects the first song, if none is selected. */
    void selectSomething();

    /** @param size   in pixels, 12 to 22 */
    void setFontSize (int size);

    /** Waits for what is asked for. For programs without a message loop. */
    void settle();

    /** Waits until the rows are there that are asked for, not for edits and tasks. For programs without a message loop. */
    void settleRows();

    std::function<void()> onSelection; ///< another song is selected
    std::function<void()> onRows;      ///< other rows are in place
    std::function<void()> onEscape;    ///< the keyboard is to go elsewhere

    juce::StringArray draggedFiles() const override { return selection().paths; }

    void paintOverChildren (juce::Graphics&) override;
    void resized() override;
    bool keyPressed (const juce::KeyPress&) override;

    bool isInterestedInDragSource (const SourceDetails&) override;
    void itemDragMove (const SourceDetails&) override;
    void itemDragExit (const SourceDetails&) override { markPlace (-1); }
    void itemDropped (const SourceDetails&) override;
    bool isInterestedInFileDrag (const juce::StringArray&) override;
    void fileDragMove (const juce::StringArray&, int x, int y) override { markPlace (placeAt ({ x, y })); }
    void fileDragExit (const juce::StringArray&) override { markPlace (-1); }
    void filesDropped (const juce::StringArray&, int x, int y) override;

private:
    /** A row by its song and its entry, by which it is found again among other rows. */
    struct Mark
    {
        int32_t songId = -1, entryId = -1;
        auto operator<=> (const Mark&) const = default;
    };

    int getNumRows() override;
    void paintRowBackground (juce::Graphics&, int row, int width, int height, bool selected) override;
    void paintCell (juce::Graphics&, int row, int column, int width, int height, bool selected) override;
    juce::Component* refreshComponentForCell (int row, int column, bool selected, juce::Component*) override;
    int getColumnAutoSizeWidth (int column) override;
    void cellClicked (int row, int column, const juce::MouseEvent&) override;
    void cellDoubleClicked (int row, int column, const juce::MouseEvent&) override;
    void sortOrderChanged (int column, bool forwards) override;
    void selectedRowsChanged (int) override;
    void deleteKeyPressed (int) override { actions.remove (selection()); }
    void returnKeyPressed (int row) override;
    void listWasScrolled() override { wantRows(); }
    juce::var getDragSourceDescription (const juce::SparseSet<int>&) override;
    juce::ScaledImage createSnapshotOfRows (const juce::SparseSet<int>&, int& x, int& y) override;
    juce::String getCellTooltip (int row, int column) override;

    void makeColumns();
    void openWith (const juce::String& layout, const juce::String& selection);
    void ask();
    void rowsCame (int code);
    void wantRows();
    void noteSelection();
    void selectMarked();
    void selectEntries (const std::vector<int32_t>& entryIds);
    bool selectMade();
    RowPainter::Row rowAt (int row, bool selected) const;
    juce::String pathOf (int row) const;
    void paintEmptyText (juce::Graphics&);
    void openRowMenu (int row, juce::Point<int> place);
    void openMenuAtRow (juce::PopupMenu, int row);
    void editCell (int row, int column);
    void placeEditor();
    void findTyped();
    bool isInOwnOrder() const;
    int placeAt (juce::Point<int>) const;
    void markPlace (int place);
    void dropFiles (const juce::StringArray&, int place);

    BrowserWorld& world;
    SongActions& actions;
    const SongStatus& status;
    std::unique_ptr<RowSource> rows;
    RowPainter painter;

    Source shown, inPlace; ///< asked for; that of the rows
    SongQuery query;
    bool isLaidOut = false;   ///< the header is that of the source
    bool takesLayout = false; ///< the next rows come with the layout below
    TableLayout layoutToCome;
    juce::String selectionToCome;
    std::vector<Mark> marked; ///< the selected rows, sorted
    int markedRow = -1;       ///< the first of them
    std::vector<int32_t>
        madeEntries;               ///< entries of the last edit that are selected once they are rows, sorted
    bool followsSelection = false; ///< the next rows are scrolled to the selected one
    bool isSettingUp = false;      ///< what changes now is not the user's doing
    int saidCode = 0;              ///< of the fault that was said last; rows are asked for again and again

    std::unique_ptr<CellEditor> editor;
    int32_t editedSong = -1;
    int editedColumn = 0;
    TypeAhead typed;
    int dropPlace = -1;
    int handRow = -1; ///< the one that was clicked last
    RowMenuPress menuPress { *this, [this] (int row, juce::Point<int> place) { openRowMenu (row, place); } };
};
