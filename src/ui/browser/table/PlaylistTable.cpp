#include "ui/browser/table/PlaylistTable.h"

#include "analysis/files/TrackAnalysis.h"
#include "session/browse/LibraryFaults.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/browser/rating/PlaylistTableItemRating.h"
#include "ui/browser/table/CellEditor.h"
#include "ui/browser/table/SongsHeader.h"
#include "ui/browser/table/TableColumn.h"
#include "ui/look/SMLookAndFeel.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr int headerHeight = 24,
              headerAir = 24; ///< beside a column's name, for margins and the arrow of its order
constexpr const char* historyLayoutName = "browser history layout";
constexpr int mostMarked = 20000; ///< selected rows that are found again after other rows have come

const SongList& noSongs()
{
    static const SongList none;
    return none;
}
}

PlaylistTable::PlaylistTable (BrowserWorld& w, SongActions& a, const SongStatus& s)
    : world (w),
      actions (a),
      status (s)
{
    setModel (this);
    setHeader (std::make_unique<SongsHeader> (*this));
    setMultipleSelectionEnabled (true);
    setHeaderHeight (headerHeight);
    setTitle (tr ("Songs"));
    getHeader().setPopupMenuActive (true);
    makeColumns();
    setFontSize (world.engine.settings.editor[EditorPreference::listFontSize]);
    TableLayout::ofKind (shown.kind).applyTo (getHeader());
}

PlaylistTable::~PlaylistTable()
{
    setModel (nullptr);
}

/** Makes the columns that the source has; its layout puts them in order. */
void PlaylistTable::makeColumns()
{
    using Header = juce::TableHeaderComponent;
    auto& header = getHeader();
    for (const auto& column : TableColumn::all())
    {
        const auto isThere = header.getIndexOfColumnId (column.id, false) >= 0;
        const auto isWanted = TableLayout::isColumnOf (column, shown.kind);
        if (isThere && !isWanted)
            header.removeColumn (column.id);
        if (isThere || !isWanted)
            continue;
        // A column of numbers starts with the largest or the newest when it is clicked twice, as all do.
        auto flags = Header::visible | Header::resizable | Header::draggable | Header::appearsOnColumnMenu;
        if (TableColumn::fieldOf (column.id))
            flags |= Header::sortable;
        header.addColumn (tr (column.text), column.id, column.width, TableColumn::leastWidth,
                          TableColumn::mostWidth, flags);
    }
}

void PlaylistTable::openLibrary()
{
    if (world.room == nullptr || rows != nullptr)
        return;
    rows = std::make_unique<RowSource> (*world.room);
    rows->onOpened = [this] (int code) { rowsCame (code); };
    rows->onRows = [this] (int first, int last)
    {
        const auto top = getViewport()->getViewPositionY() / getRowHeight();
        for (auto row = std::max (first, top); row < std::min (last, top + getNumRowsOnScreen() + 2); ++row)
        {
            repaintRow (row);
            // The stars are a component of their own.
            if (auto* cell = getCellComponent (TableColumn::rating, row))
                refreshComponentForCell (row, TableColumn::rating, isRowSelected (row), cell);
        }
        if (onSelection != nullptr && getSelectedRow() >= first && getSelectedRow() < last)
            onSelection();
    };
}

void PlaylistTable::setSource (const Source& source)
{
    if (rows == nullptr)
    {
        shown = source;
        return;
    }
    store();
    shown = source;
    const auto search = std::move (query);
    query = source.query();
    query.search = search.search;
    query.fields = search.fields;
    query.fitBpm = search.fitBpm;
    query.fitPercent = search.fitPercent;
    query.confidenceBelow = search.confidenceBelow;
    takesLayout = isLaidOut = false;
    madeEntries.clear();
    if (source.kind == SongListKind::history)
        return openWith (world.preference (historyLayoutName), {});
    world.room->edits.loadLayout (
        source.layoutPlace(),
        [this, source, alive = juce::Component::SafePointer<juce::Component> (this)] (
            const juce::String& layout, const juce::String& selection)
        {
            if (alive != nullptr && shown == source)
                openWith (layout, selection);
        });
}

/** Asks for the source's rows, which come with its layout and selection. */
void PlaylistTable::openWith (const juce::String& layout, const juce::String& selection)
{
    takesLayout = true;
    layoutToCome = TableLayout::fromXml (layout, shown.kind);
    selectionToCome = selection;
    query.sort = TableColumn::fieldOf (layoutToCome.sortedColumn).value_or (SongField::listOrder);
    query.ascending = layoutToCome.sortsForwards;
    marked.clear();
    rows->open (query);
    repaint(); // an empty table says why no longer
}

void PlaylistTable::store()
{
    if (world.room == nullptr || rows == nullptr || !isLaidOut || isForeign (shown.kind))
        return;
    const auto layout = TableLayout::of (getHeader()).toXml();
    if (shown.kind == SongListKind::history) // of which the library knows nothing
        return world.setPreference (historyLayoutName, layout);
    auto selected = getSelectedRows();
    world.room->edits.saveLayout (shown.layoutPlace(), layout,
                                  query.isFiltered() ? juce::String() : StoredSelection::toXml (selected));
}

void PlaylistTable::setSearch (const juce::String& text, std::vector<SongField> fields)
{
    if (text == query.search && fields == query.fields)
        return;
    query.search = text;
    query.fields = std::move (fields);
    ask();
}

void PlaylistTable::setFit (double bpm, double percent)
{
    if (std::equal_to<double>() (bpm, query.fitBpm) && std::equal_to<double>() (percent, query.fitPercent))
        return;
    query.fitBpm = bpm;
    query.fitPercent = percent;
    ask();
}

void PlaylistTable::setGridsToCheck (bool isWanted)
{
    if (const auto below = isWanted ? doubtfulBelow : 0;
        std::exchange (query.confidenceBelow, below) != below)
        ask();
}

/** Asks for the rows of the query as it stands. */
void PlaylistTable::ask()
{
    if (rows == nullptr)
        return;
    followsSelection = true;
    rows->open (query);
    if (list().isEmpty())
        repaint();
}

void PlaylistTable::refresh()
{
    if (rows != nullptr)
        rows->reopen();
}

void PlaylistTable::lookForFiles()
{
    if (rows != nullptr)
        rows->lookForFiles();
}

void PlaylistTable::rowsCame (int code)
{
    if (std::exchange (saidCode, code) != code)
        world.say (LibraryFaults::sentence (code));
    if (code != 0)
        return;
    const juce::ScopedValueSetter<bool> settingUp (isSettingUp, true);
    painter.setSearch (QueryTerms::parse (query.search), query.fields);
    updateContent();
    if (takesLayout)
    {
        makeColumns();
        layoutToCome.applyTo (getHeader());
        setSelectedRows (StoredSelection::fromXml (selectionToCome, getNumRows()),
                         juce::dontSendNotification);
        takesLayout = false;
        isLaidOut = followsSelection = true;
        inPlace = shown;
    }
    else if (!selectMade())
        selectMarked();
    noteSelection();
    if (followsSelection && getSelectedRow() >= 0)
        scrollToEnsureRowIsOnscreen (getSelectedRow());
    followsSelection = false;
    placeEditor();
    wantRows();
    repaint();
    if (onRows != nullptr)
        onRows();
    if (onSelection != nullptr)
        onSelection();
}

/** Keeps in mind which rows are selected. */
void PlaylistTable::noteSelection()
{
    marked.clear();
    markedRow = getSelectedRow();
    const auto& songs = list();
    const auto selected = getSelectedRows();
    for (int i = 0; i < std::min (selected.size(), mostMarked); ++i)
        if (selected[i] < songs.size())
            marked.push_back ({ songs[selected[i]].songId, songs[selected[i]].entryId });
    std::sort (marked.begin(), marked.end());
}

/** Selects among new rows those that were selected before. */
void PlaylistTable::selectMarked()
{
    juce::SparseSet<int> selected;
    const auto entries = list().entries();
    if (!marked.empty())
        for (size_t row = 0; row < entries.size(); ++row)
            if (std::binary_search (marked.begin(), marked.end(),
                                    Mark { entries[row].songId, entries[row].entryId }))
                selected.addRange ({ static_cast<int> (row), static_cast<int> (row) + 1 });
    if (selected.isEmpty() && !entries.empty())
    {
        if (followsSelection && query.isFiltered())
            selected.addRange ({ 0, 1 }); // the first that was found is at hand
        else if (!marked.empty() && !followsSelection)
        {
            // The selected ones have gone: the next one is at hand.
            const auto next = juce::jlimit (0, static_cast<int> (entries.size()) - 1, markedRow);
            selected.addRange ({ next, next + 1 });
        }
    }
    setSelectedRows (selected, juce::dontSendNotification);
}

/** Selects the entries that an edit has made, now or with the rows that have them. */
void PlaylistTable::selectEntries (const std::vector<int32_t>& entryIds)
{
    madeEntries = entryIds;
    std::sort (madeEntries.begin(), madeEntries.end());
    marked.clear();
    juce::ignoreUnused (selectMade()); // else they come with the next rows
}

/** @returns false if they are not among the rows */
bool PlaylistTable::selectMade()
{
    juce::SparseSet<int> selected;
    const auto entries = list().entries();
    if (!madeEntries.empty())
        for (size_t row = 0; row < entries.size(); ++row)
            if (std::binary_search (madeEntries.begin(), madeEntries.end(), entries[row].entryId))
                selected.addRange ({ static_cast<int> (row), static_cast<int> (row) + 1 });
    if (selected.isEmpty())
        return false;
    madeEntries.clear();
    setSelectedRows (selected, juce::sendNotification);
    return true;
}

const SongList& PlaylistTable::list() const
{
    return rows != nullptr ? rows->list() : noSongs();
}

std::vector<int32_t> PlaylistTable::entryIds() const
{
    std::vector<int32_t> ids;
    for (const auto& entry : list().entries())
        ids.push_back (entry.entryId);
    return ids;
}

int PlaylistTable::getNumRows()
{
    return list().size();
}

/** Says which rows are on screen, so that their fields are read. */
void PlaylistTable::wantRows()
{
    if (rows == nullptr || getRowHeight() <= 0)
        return;
    const auto first = getViewport()->getViewPositionY() / getRowHeight();
    rows->want (first, std::min (getNumRows(), first + getNumRowsOnScreen() + 2));
}

void PlaylistTable::resized()
{
    TableListBox::resized();
    wantRows();
}

void PlaylistTable::setFontSize (int size)
{
    painter.setFontSize (size);
    if (getRowHeight() == painter.rowHeight())
        return;
    setRowHeight (painter.rowHeight());
    wantRows();
}

void PlaylistTable::settle()
{
    if (rows == nullptr)
        return;
    world.room->settle(); // the layout comes before the rows
    rows->settle();
    wantRows();
    rows->settle();
}

void PlaylistTable::settleRows()
{
    if (rows == nullptr)
        return;
    world.room->edits.settleViews();
    rows->settleRows();
    wantRows();
    rows->settleRows();
}

juce::String PlaylistTable::pathOf (int row) const
{
    const auto* song = rows != nullptr ? rows->row (row) : nullptr;
    return song != nullptr ? (*song)[SongColumn::filename] : juce::String();
}

juce::String PlaylistTable::selectedPath() const
{
    return pathOf (getSelectedRow());
}

SelectedSongs PlaylistTable::selection() const
{
    SelectedSongs made;
    made.source = inPlace;
    const auto selected = getSelectedRows();
    const auto& songs = list();
    // The song under the hand comes first among the paths: a deck takes that one.
    if (isRowSelected (handRow))
        if (const auto path = pathOf (handRow); path.isNotEmpty())
            made.paths.add (path);
    for (int i = 0; i < selected.size(); ++i)
    {
        const auto row = selected[i];
        if (row >= songs.size())
            break;
        if (songs[row].songId >= 0) // else the library lacks it
        {
            made.songIds.push_back (songs[row].songId);
            made.entryIds.push_back (songs[row].entryId);
        }
        if (row != handRow)
            if (const auto path = pathOf (row); path.isNotEmpty())
                made.paths.add (path);
    }
    return made;
}

RowPainter::Row PlaylistTable::rowAt (int index, bool selected) const
{
    RowPainter::Row made;
    made.index = index;
    made.isSelected = selected;
    if (rows == nullptr || index < 0 || index >= rows->size())
        return made;
    made.song = rows->row (index);
    made.played = rows->playedSong (index);
    made.isMissing = rows->presence (index) == RowSource::Presence::missing;
    if (made.song != nullptr)
        made.status = status.of ((*made.song)[SongColumn::filename]);
    if (made.song != nullptr && shown.kind == SongListKind::recommendation)
        made.match = actions.matchOf (made.song->id);
    return made;
}

/** Says why there are no rows. */
void PlaylistTable::paintEmptyText (juce::Graphics& g)
{
    if (getNumRows() > 0 || isOpening())
        return;
    g.setFont (painter.font());
    g.setColour (palette::label);
    g.drawText (emptyText(), getLocalBounds().withTrimmedTop (headerHeight).reduced (16).withHeight (24),
                juce::Justification::centred, true);
}

juce::String PlaylistTable::emptyText() const
{
    if (world.room == nullptr)
    {
        const auto fault = world.session != nullptr ? world.session->libraryFault() : juce::String();
        return fault.isEmpty() && world.session != nullptr ? tr ("Opening the library...") : fault;
    }
    if (query.isFiltered())
        return tr ("No songs found.");
    if (shown.isEditable())
        return tr ("Drag songs or files here.");
    if (shown.kind == SongListKind::missing)
        return tr ("No file is missing.");
    if (shown.kind == SongListKind::recommendation)
        return tr ("No recommendations.");
    return shown.kind == SongListKind::library
               ? tr ("Drag music folders here, or import them by the menu of the Library.")
               : tr ("No songs.");
}

void PlaylistTable::paintRowBackground (juce::Graphics& g, int row, int width, int height, bool selected)
{
    RowPainter::paintGround (g, { width, height }, rowAt (row, selected));
}

void PlaylistTable::paintCell (juce::Graphics& g, int row, int column, int width, int height, bool selected)
{
    painter.paintCell (g, { width, height }, rowAt (row, selected), column);
}

/** @returns the width that the column's name and its texts on screen need, in pixels */
int PlaylistTable::getColumnAutoSizeWidth (int column)
{
    auto width = SMLookAndFeel::labelFont().getStringWidth (getHeader().getColumnName (column)) + headerAir;
    const auto first = getViewport()->getViewPositionY() / getRowHeight();
    for (auto row = first; row < std::min (getNumRows(), first + getNumRowsOnScreen() + 1); ++row)
        width = std::max (width, painter.cellWidth (rowAt (row, false), column));
    return juce::jlimit (TableColumn::leastWidth, TableColumn::mostWidth, width);
}

juce::Component* PlaylistTable::refreshComponentForCell (int row, int column, bool, juce::Component* there)
{
    if (column != TableColumn::rating)
    {
        delete there;
        return nullptr;
    }
    auto* stars = static_cast<PlaylistTableItemRating*> (there);
    if (stars == nullptr)
    {
        stars = new PlaylistTableItemRating();
        stars->onRate = [this] (int rated, int count)
        {
            if (rated < list().size() && list()[rated].songId >= 0 && !isForeign (inPlace.kind))
                actions.rate (list()[rated].songId, count);
        };
    }
    const auto* song = rows != nullptr && row < rows->size() ? rows->row (row) : nullptr;
    stars->show (row, song != nullptr ? (*song)[SongColumn::rating].getIntValue() : 0);
    return stars;
}

void PlaylistTable::sortOrderChanged (int column, bool forwards)
{
    // The header tells later what was set in code, too.
    const auto field = TableColumn::fieldOf (column).value_or (SongField::listOrder);
    if (takesLayout || (field == query.sort && forwards == query.ascending))
        return;
    query.sort = field;
    query.ascending = forwards;
    ask();
}

void PlaylistTable::sortBy (int column, bool forwards)
{
    getHeader().setSortColumnId (column, forwards);
    sortOrderChanged (column, forwards);
}

void PlaylistTable::selectedRowsChanged (int)
{
    if (isSettingUp)
        return;
    noteSelection();
    if (onSelection != nullptr)
        onSelection();
}

void PlaylistTable::step (int by)
{
    const auto last = getNumRows() - 1;
    if (last < 0)
        return;
    const auto now = getSelectedRow();
    selectRow (now < 0 ? 0 : juce::jlimit (0, last, now + by));
}

void PlaylistTable::selectSomething()
{
    if (getSelectedRow() < 0)
        step (0);
}

bool PlaylistTable::isInOwnOrder() const
{
    return inPlace == shown && shown.isEditable() && query.sort == SongField::listOrder && query.ascending
           && !query.isFiltered();
}
