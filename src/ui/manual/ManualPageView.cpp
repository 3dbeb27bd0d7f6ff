#include "ui/manual/ManualPageView.h"

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/panel/PanelPaint.h"

#include <cmath>

namespace
{
using Kind = ManualBlock::Kind;
using Style = ManualSpan::Style;

constexpr int margin = 20, indent = 22, gap = 9, rowGap = 5, aboveHeading = 10;
constexpr int pictureScale =
    2; // pixels of a picture for one of the page, so that it is sharp at any size of the interface
constexpr float bodySize = 14.0f, lineSpacing = 3.0f;

bool isHeading (Kind kind)
{
    return kind == Kind::title || kind == Kind::heading;
}

bool isOfList (Kind kind)
{
    return kind == Kind::bullet || kind == Kind::step;
}

float sizeOf (Kind kind)
{
    return kind == Kind::title     ? SMLookAndFeel::figureSize
           : kind == Kind::heading ? SMLookAndFeel::titleSize
                                   : bodySize;
}

juce::AttributedString wordsOf (const ManualBlock& block)
{
    juce::AttributedString words;
    words.setWordWrap (juce::AttributedString::byWord);
    words.setLineSpacing (lineSpacing);
    for (const auto& span : block.spans)
    {
        const auto usual =
            isHeading (block.kind) || span.style == Style::strong ? palette::value : palette::label;
        words.append (span.text, SMLookAndFeel::font (sizeOf (block.kind)),
                      span.style == Style::link ? palette::accent : usual);
    }
    return words;
}
}

ManualPageView::ManualPageView()
{
    setOpaque (true);
    setWantsKeyboardFocus (false);
}

void ManualPageView::show (const Manual::Page& page, const juce::File& folder)
{
    blocks = page.blocks;
    pictures = folder;
    setTitle (page.title);
    fit (getWidth());
}

void ManualPageView::say (const juce::String& sentence)
{
    blocks = { { Kind::paragraph, 0, { { sentence } } } };
    setTitle (sentence);
    fit (getWidth());
}

void ManualPageView::fit (int width)
{
    rows.clear();
    links.clear();
    auto bottom = margin - aboveHeading;
    auto last = Kind::title;
    for (const auto& block : blocks)
    {
        const auto left = margin + (isOfList (block.kind) ? indent : 0);
        auto top = bottom + (isOfList (block.kind) && isOfList (last) ? rowGap : gap);
        if (isHeading (block.kind))
            top += aboveHeading;
        auto row = rowOf (block, left, top, width - margin - left);
        bottom = row.area.getBottom();
        last = block.kind;
        addLinks (block, row);
        rows.push_back (std::move (row));
    }
    setSize (width, bottom + margin);
    repaint();
}

ManualPageView::Row ManualPageView::rowOf (const ManualBlock& block, int left, int top, int width)
{
    Row row;
    width = std::max (1, width);
    if (block.kind == Kind::picture)
    {
        row.picture = juce::ImageFileFormat::loadFrom (pictures.getChildFile (block.file));
        const auto size = row.picture.getBounds() / pictureScale;
        const auto shownWidth = std::min (width, size.getWidth());
        row.area = { left, top, shownWidth,
                     size.getWidth() > 0 ? size.getHeight() * shownWidth / size.getWidth() : 0 };
        return row;
    }
    row.words.createLayout (wordsOf (block), static_cast<float> (width));
    row.area = { left, top, width, juce::roundToInt (std::ceil (row.words.getHeight())) };
    if (isHeading (block.kind))
        row.anchor = ManualText::anchorOf (block.text());
    if (block.kind == Kind::step)
        row.mark << block.number << ".";
    else if (block.kind == Kind::bullet)
        row.mark = juce::String::charToString (0x2022);
    return row;
}

void ManualPageView::addLinks (const ManualBlock& block, const Row& row)
{
    auto begin = 0;
    for (const auto& span : block.spans)
    {
        const juce::Range<int> letters (begin, begin + span.text.length());
        begin = letters.getEnd();
        if (span.style != Style::link)
            continue;
        // A link that is broken over two lines has an area on each.
        for (int i = 0; i < row.words.getNumLines(); ++i)
        {
            const auto& line = row.words.getLine (i);
            for (const auto* run : line.runs)
            {
                if (!run->stringRange.intersects (letters))
                    continue;
                const auto along = run->getRunBoundsX() + line.lineOrigin.x;
                const auto across = line.getLineBoundsY();
                links.push_back ({ juce::Rectangle<float> (along.getStart(), across.getStart(),
                                                           along.getLength(), across.getLength())
                                           .getSmallestIntegerContainer()
                                       + row.area.getPosition(),
                                   span.target });
            }
        }
    }
}

int ManualPageView::topOf (const juce::String& anchor) const
{
    for (const auto& row : rows)
        if (anchor.isNotEmpty() && row.anchor == anchor)
            return row.area.getY() - gap;
    return 0;
}

juce::String ManualPageView::linkAt (juce::Point<int> place) const
{
    for (const auto& link : links)
        if (link.area.contains (place))
            return link.target;
    return {};
}

void ManualPageView::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    g.setImageResamplingQuality (juce::Graphics::highResamplingQuality);
    for (const auto& row : rows)
    {
        if (!g.clipRegionIntersects (row.area.withTrimmedLeft (-indent)))
            continue;
        if (row.picture.isValid())
            g.drawImage (row.picture, row.area.toFloat());
        row.words.draw (g, row.area.toFloat());
        if (row.mark.isNotEmpty())
        {
            g.setColour (palette::value);
            g.setFont (SMLookAndFeel::font (bodySize));
            g.drawText (row.mark, row.area.getX() - indent, row.area.getY(), indent - rowGap,
                        juce::roundToInt (bodySize), juce::Justification::centredRight, false);
        }
    }
}

void ManualPageView::mouseMove (const juce::MouseEvent& event)
{
    setMouseCursor (linkAt (event.getPosition()).isNotEmpty() ? juce::MouseCursor::PointingHandCursor
                                                              : juce::MouseCursor::NormalCursor);
}

void ManualPageView::mouseUp (const juce::MouseEvent& event)
{
    if (const auto target = linkAt (event.getPosition());
        target.isNotEmpty() && event.mouseWasClicked() && onLink != nullptr)
        onLink (target);
}

std::unique_ptr<juce::AccessibilityHandler> ManualPageView::createAccessibilityHandler()
{
    juce::String all;
    for (const auto& block : blocks)
        all << block.text() << "\n";
    setDescription (all);
    return std::make_unique<juce::AccessibilityHandler> (*this, juce::AccessibilityRole::staticText);
}
