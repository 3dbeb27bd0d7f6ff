#include "ui/browser/table/RowPainter.h"

#include "library/database/SongDatabase.h"
#include "skin/Palette.h"
#include "ui/browser/table/TableColumn.h"
#include "ui/panel/PanelPaint.h"

#include <algorithm>

namespace
{
constexpr float leastNumberWidth = 0.6f;
constexpr int margin = 4, hueWidth = 4, badgeGap = 2, airAboveText = 8;

TableColumn::Row columnOf (int columnId)
{
    const auto columns = TableColumn::all();
    const auto found = std::find_if (columns.begin(), columns.end(),
                                     [columnId] (const auto& c) { return c.id == columnId; });
    return found != columns.end() ? *found : TableColumn::Row {};
}

/** Gives the words of a cell; none of one that paints signs. */
juce::String textOf (const RowPainter::Row& row, int columnId)
{
    if (columnId == TableColumn::playedAt && row.played != nullptr)
        return row.played->time.formatted ("%H:%M:%S");
    if (columnId == TableColumn::match)
        return row.match;
    if (columnId == TableColumn::order)
        return juce::String (row.index + 1);
    const auto field = TableColumn::fieldOf (columnId);
    return field && columnId != TableColumn::rating && row.song != nullptr
               ? SongDatabase::fieldText (*row.song, *field)
               : juce::String();
}

/** The side of a badge or sign in a row. */
int signSide (juce::Rectangle<int> row)
{
    return std::min (16, row.getHeight() - 4);
}

juce::Colour textColour (const RowPainter::Row& row)
{
    if (row.isMissing)
        return row.isSelected ? palette::anchorNumber : palette::disabledText;
    return row.isSelected ? palette::value : palette::tableText;
}
}

void RowPainter::setFontSize (int size)
{
    textFont = SMLookAndFeel::font (static_cast<float> (juce::jlimit (12, 22, size)));
    height = juce::jlimit (12, 22, size) + airAboveText;
}

void RowPainter::setSearch (QueryTerms found, std::vector<SongField> fields)
{
    terms = std::move (found);
    searched = std::move (fields);
}

void RowPainter::paintGround (juce::Graphics& g, juce::Rectangle<int> area, const Row& row)
{
    SMLookAndFeel::fillRow (g, area, row.index, row.isSelected);
    if (const auto deck = row.status.deck())
    {
        g.setColour (palette::decks[static_cast<size_t> (*deck)]);
        g.fillRect (area.removeFromLeft (hueWidth));
    }
}

int RowPainter::cellWidth (const Row& row, int columnId) const
{
    const auto hasSigns = columnId == TableColumn::status || columnId == TableColumn::rating
                          || columnId == TableColumn::playedOn;
    return hasSigns ? columnOf (columnId).width
                    : textFont.getStringWidth (textOf (row, columnId)) + 2 * margin + 1;
}

void RowPainter::paintCell (juce::Graphics& g, juce::Rectangle<int> area, const Row& row, int columnId) const
{
    if (columnId == TableColumn::status)
        return paintStatus (g, area, row);
    area.reduce (margin, 0);
    if (columnId == TableColumn::playedOn)
        return paintDeck (g, area, row);
    const auto text = textOf (row, columnId);
    if (text.isEmpty())
        return;
    const auto where = columnOf (columnId).isRightAligned ? juce::Justification::centredRight
                                                          : juce::Justification::centredLeft;
    if (const auto field = TableColumn::fieldOf (columnId);
        field && (!terms.words.empty() || !terms.choices.empty()))
        paintMarks (g, area, text, *field, where);
    g.setFont (textFont);
    g.setColour (textColour (row));
    if (where == juce::Justification::centredRight)
        return g.drawFittedText (text, area, where, 1, leastNumberWidth); // a cut number is another number
    g.drawText (text, area, where, true);
}

/** The deck on which the song was played, in its hue. */
void RowPainter::paintDeck (juce::Graphics& g, juce::Rectangle<int> area, const Row& row)
{
    if (row.played != nullptr)
        PanelPaint::badge (
            g, area.removeFromLeft (signSide (area)).withSizeKeepingCentre (signSide (area), signSide (area)),
            row.played->deck, false);
}

void RowPainter::paintStatus (juce::Graphics& g, juce::Rectangle<int> area, const Row& row) const
{
    area.removeFromLeft (hueWidth + margin);
    const auto side = signSide (area);
    const auto next = [&]
    {
        const auto place = area.removeFromLeft (side).withSizeKeepingCentre (side, side);
        area.removeFromLeft (badgeGap);
        return place;
    };
    for (int deck = 0; deck < 4; ++deck)
        if (row.status.decks[static_cast<size_t> (deck)] && area.getWidth() >= side)
            PanelPaint::badge (g, next(), deck, row.status.isPlaying);
    if (area.getWidth() < side)
        return;
    if (row.isMissing)
    {
        // A ring that is struck through, so that it is told by more than its shade.
        const auto sign = next().toFloat().reduced (3.0f);
        g.setColour (palette::label);
        g.drawEllipse (sign, 1.5f);
        g.drawLine ({ sign.getBottomLeft(), sign.getTopRight() }, 1.5f);
    }
    else if (row.status.wasPlayed)
    {
        juce::Path tick;
        const auto sign = next().toFloat().reduced (3.0f);
        tick.startNewSubPath (sign.getX(), sign.getCentreY());
        tick.lineTo (sign.getX() + sign.getWidth() * 0.35f, sign.getBottom() - 1.0f);
        tick.lineTo (sign.getRight(), sign.getY() + 1.0f);
        g.setColour (palette::value);
        g.strokePath (tick, juce::PathStrokeType (2.0f));
    }
}

/** Lays a ground behind the parts of a text for which its row was found. */
void RowPainter::paintMarks (juce::Graphics& g, juce::Rectangle<int> area, const juce::String& text,
                             SongField field, juce::Justification where) const
{
    const auto marks = marksIn (text, terms, field, searched);
    if (marks.empty())
        return;
    const auto widthTo = [&] (int length)
    { return textFont.getStringWidthFloat (text.substring (0, length)); };
    const auto all = widthTo (text.length());
    const auto left = where.testFlags (juce::Justification::right)
                          ? std::max (0.0f, static_cast<float> (area.getWidth()) - all)
                          : 0.0f;
    g.setColour (palette::accent.withAlpha (0.25f));
    for (const auto& mark : marks)
    {
        const auto from = left + widthTo (mark.getStart()), to = left + widthTo (mark.getEnd());
        g.fillRect (area.toFloat()
                        .reduced (0.0f, 3.0f)
                        .withX (static_cast<float> (area.getX()) + from)
                        .withWidth (std::min (to, static_cast<float> (area.getWidth())) - from));
    }
}
