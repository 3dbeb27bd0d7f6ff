#pragma once

#include "library/songs/SongListKind.h"
#include "ui/browser/table/TableColumn.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

/** The columns of a table as a source keeps them: which are shown, in what order, how wide, and by which one the rows are sorted.
    A plain value. */
struct TableLayout
{
    struct Column
    {
        int id = 0;
        int width = 0;
        bool isShown = false;
        bool operator== (const Column&) const = default;
    };

    std::vector<Column> columns; ///< all there are, from the left
    int sortedColumn = 0;
    bool sortsForwards = true;
    bool operator== (const TableLayout&) const = default;

    /** The layout of a source that has none yet: sorted by artist, a list in its own order. */
    static TableLayout ofKind (SongListKind);

    static bool isColumnOf (const TableColumn::Row&, SongListKind);

    /** Reads the text of a JUCE table header. What it leaves out, or says of columns that don't exist, stays at the default. */
    static TableLayout fromXml (const juce::String&, SongListKind);

    /** The text that fromXml() reads: a TABLELAYOUT with a COLUMN for each. */
    juce::String toXml() const;

    /** Takes the layout of a header, whose columns are those of TableColumn. */
    static TableLayout of (const juce::TableHeaderComponent&);

    /** Gives it to a header. */
    void applyTo (juce::TableHeaderComponent&) const;
};

/** True for a list whose songs stand in an order of their own. */
constexpr bool hasOwnOrder (SongListKind kind)
{
    return kind == SongListKind::playlist || kind == SongListKind::automix
           || kind == SongListKind::foreignPlaylist || kind == SongListKind::recommendation
           || kind == SongListKind::history;
}

/** The selected rows of a source as they are stored: a SELECTEDSONGS with a SONG for each, the row in "id". */
namespace StoredSelection
{
inline constexpr int most = 1000; ///< rows that are kept

juce::String toXml (const juce::SparseSet<int>& rows);

/** @param rows   of the source; rows beyond are left out. Row 0 for a text that says nothing. */
juce::SparseSet<int> fromXml (const juce::String&, int rows);
}
