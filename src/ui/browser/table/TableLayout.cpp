#include "ui/browser/table/TableLayout.h"

#include <algorithm>

namespace
{
constexpr const char *layoutTag = "TABLELAYOUT", *columnTag = "COLUMN", *sortedTag = "sortedCol",
                     *forwardsTag = "sortForwards", *idTag = "id", *visibleTag = "visible",
                     *widthTag = "width", *selectionTag = "SELECTEDSONGS", *songTag = "SONG";

juce::String oneLine (const juce::XmlElement& xml)
{
    return xml.toString (juce::XmlElement::TextFormat().singleLine());
}
}

bool TableLayout::isColumnOf (const TableColumn::Row& column, SongListKind kind)
{
    return !column.onlyOf || *column.onlyOf == kind;
}

TableLayout TableLayout::ofKind (SongListKind kind)
{
    const auto isList = hasOwnOrder (kind);
    TableLayout made;
    for (const auto& row : TableColumn::all())
        if (isColumnOf (row, kind))
            made.columns.push_back (
                { row.id, row.width, row.isShown || (row.id == TableColumn::order && isList) });
    made.sortedColumn = isList ? TableColumn::order : TableColumn::of (SongField::artist);
    return made;
}

TableLayout TableLayout::fromXml (const juce::String& text, SongListKind kind)
{
    auto made = ofKind (kind);
    const auto xml = juce::parseXMLIfTagMatches (text, layoutTag);
    if (xml == nullptr)
        return made;
    auto place = made.columns.begin();
    for (const auto* child : xml->getChildWithTagNameIterator (columnTag))
    {
        const auto id = child->getIntAttribute (idTag);
        const auto found =
            std::find_if (place, made.columns.end(), [id] (const Column& column) { return column.id == id; });
        if (found == made.columns.end())
            continue; // unknown, or told before
        found->width = juce::jlimit (TableColumn::leastWidth, TableColumn::mostWidth,
                                     child->getIntAttribute (widthTag, found->width));
        found->isShown = child->getBoolAttribute (visibleTag, found->isShown);
        std::rotate (place, found, found + 1);
        ++place;
    }
    if (const auto sorted = xml->getIntAttribute (sortedTag); TableColumn::fieldOf (sorted))
    {
        made.sortedColumn = sorted;
        made.sortsForwards = xml->getBoolAttribute (forwardsTag, true);
    }
    return made;
}

juce::String TableLayout::toXml() const
{
    juce::XmlElement xml (layoutTag);
    xml.setAttribute (sortedTag, sortedColumn);
    xml.setAttribute (forwardsTag, sortsForwards);
    for (const auto& column : columns)
    {
        auto* child = xml.createNewChildElement (columnTag);
        child->setAttribute (idTag, column.id);
        child->setAttribute (visibleTag, column.isShown);
        child->setAttribute (widthTag, column.width);
    }
    return oneLine (xml);
}

TableLayout TableLayout::of (const juce::TableHeaderComponent& header)
{
    TableLayout made;
    for (int i = 0; i < header.getNumColumns (false); ++i)
    {
        const auto id = header.getColumnIdOfIndex (i, false);
        made.columns.push_back ({ id, header.getColumnWidth (id), header.isColumnVisible (id) });
    }
    made.sortedColumn = header.getSortColumnId();
    made.sortsForwards = header.isSortedForwards();
    return made;
}

void TableLayout::applyTo (juce::TableHeaderComponent& header) const
{
    header.restoreFromString (toXml());
}

namespace StoredSelection
{
juce::String toXml (const juce::SparseSet<int>& rows)
{
    juce::XmlElement xml (selectionTag);
    for (int i = 0; i < std::min (rows.size(), most); ++i)
        xml.createNewChildElement (songTag)->setAttribute (idTag, rows[i]);
    return oneLine (xml);
}

juce::SparseSet<int> fromXml (const juce::String& text, int rowCount)
{
    juce::SparseSet<int> rows;
    const auto add = [&] (int row)
    {
        if (row >= 0 && row < rowCount && rows.size() < most)
            rows.addRange ({ row, row + 1 });
    };
    if (const auto xml = juce::parseXMLIfTagMatches (text, selectionTag); xml != nullptr)
        for (const auto* child : xml->getChildWithTagNameIterator (songTag))
            add (child->getIntAttribute (idTag, -1));
    else
        add (0);
    return rows;
}
}
