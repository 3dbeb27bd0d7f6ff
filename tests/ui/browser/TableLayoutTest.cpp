#include "ui/browser/table/TableLayout.h"
#include "ui/browser/table/TableColumn.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
const TableLayout::Column& columnOf (const TableLayout& layout, int id)
{
    return *std::find_if (layout.columns.begin(), layout.columns.end(),
                          [id] (const auto& column) { return column.id == id; });
}

constexpr int title = TableColumn::of (SongField::title), bpm = TableColumn::of (SongField::bpm);
}

TEST (TableLayout, StoredIdsAreThoseThatOtherFilesHold)
{
    EXPECT_EQ (title, 5);
    EXPECT_EQ (TableColumn::of (SongField::artist), 1);
    EXPECT_EQ (TableColumn::of (SongField::album), 2);
    EXPECT_EQ (TableColumn::of (SongField::time), 11);
    EXPECT_EQ (bpm, 17);
    EXPECT_EQ (TableColumn::order, 25);
    EXPECT_EQ (TableColumn::status, 26);
}

TEST (TableLayout, SourcesBeginSortedByArtistAndListsInTheirOrder)
{
    const auto library = TableLayout::ofKind (SongListKind::library),
               playlist = TableLayout::ofKind (SongListKind::playlist);
    EXPECT_EQ (library.sortedColumn, 1);
    EXPECT_FALSE (columnOf (library, TableColumn::order).isShown);
    EXPECT_EQ (playlist.sortedColumn, TableColumn::order);
    EXPECT_TRUE (columnOf (playlist, TableColumn::order).isShown);
}

TEST (TableLayout, TheReasonOfARecommendationIsAColumnOfThatListAlone)
{
    const auto has = [] (SongListKind kind)
    {
        const auto columns = TableLayout::ofKind (kind).columns;
        return std::any_of (columns.begin(), columns.end(),
                            [] (const auto& column) { return column.id == TableColumn::match; });
    };
    EXPECT_TRUE (has (SongListKind::recommendation));
    EXPECT_FALSE (has (SongListKind::library));
    EXPECT_FALSE (has (SongListKind::history));
}

TEST (TableLayout, TextsGoRoundThroughAHeaderAndBack)
{
    juce::TableHeaderComponent header;
    for (const auto& column : TableColumn::all())
        if (TableLayout::isColumnOf (column, SongListKind::library))
            header.addColumn (column.text, column.id, column.width, TableColumn::leastWidth,
                              TableColumn::mostWidth);
    auto layout = TableLayout::ofKind (SongListKind::library);
    std::reverse (layout.columns.begin(), layout.columns.end());
    layout.columns[3].isShown = !layout.columns[3].isShown;
    layout.columns[4].width = 333;
    layout.sortedColumn = bpm;
    layout.sortsForwards = false;

    EXPECT_EQ (TableLayout::fromXml (layout.toXml(), SongListKind::library), layout);
    layout.applyTo (header);
    EXPECT_EQ (TableLayout::of (header), layout);
    EXPECT_EQ (TableLayout::fromXml (header.toString(), SongListKind::library), layout)
        << "as JUCE writes it";
}

TEST (TableLayout, ATextThatLacksOrInventsThingsLeavesTheDefaults)
{
    const auto whole = TableLayout::ofKind (SongListKind::library);
    for (const auto* text :
         { "", "no xml", "<TABLELAYOUT", "<OTHER/>", "<TABLELAYOUT sortedCol=\"99\"/>",
           "<TABLELAYOUT><COLUMN id=\"77\" visible=\"1\" width=\"9\"/><COLUMN/></TABLELAYOUT>" })
        EXPECT_EQ (TableLayout::fromXml (text, SongListKind::library), whole) << text;

    const auto some = TableLayout::fromXml ("<TABLELAYOUT sortedCol=\"17\" sortForwards=\"0\">"
                                            "<COLUMN id=\"17\" visible=\"1\" width=\"-5\"/>"
                                            "<COLUMN id=\"5\" visible=\"0\" width=\"999999\"/>"
                                            "<COLUMN id=\"17\" visible=\"0\" width=\"70\"/></TABLELAYOUT>",
                                            SongListKind::library);
    ASSERT_EQ (some.columns.size(), whole.columns.size());
    EXPECT_EQ (some.columns[0], (TableLayout::Column { bpm, TableColumn::leastWidth, true }));
    EXPECT_EQ (some.columns[1], (TableLayout::Column { title, TableColumn::mostWidth, false }));
    EXPECT_EQ (columnOf (some, 1), columnOf (whole, 1));
    EXPECT_EQ (some.sortedColumn, bpm);
    EXPECT_FALSE (some.sortsForwards);
}

TEST (StoredSelection, RowsGoRoundAndThoseBeyondTheListAreLeftOut)
{
    juce::SparseSet<int> rows;
    rows.addRange ({ 2, 4 });
    rows.addRange ({ 9, 10 });
    const auto text = StoredSelection::toXml (rows);
    EXPECT_EQ (StoredSelection::fromXml (text, 20), rows);
    EXPECT_EQ (StoredSelection::fromXml (text, 4).size(), 2);
    EXPECT_EQ (StoredSelection::fromXml ("0", 5).getTotalRange(), juce::Range<int> (0, 1))
        << "as a new library has it";
    EXPECT_TRUE (StoredSelection::fromXml ("", 0).isEmpty());
    EXPECT_TRUE (
        StoredSelection::fromXml ("<SELECTEDSONGS><SONG id=\"-3\"/><SONG/></SELECTEDSONGS>", 5).isEmpty());
}
