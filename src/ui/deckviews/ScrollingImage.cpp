#include "ui/deckviews/ScrollingImage.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

void ScrollingImage::setSize (int width, int height)
{
    width = std::max (1, width);
    height = std::max (1, height);
    if (picture.isValid() && picture.getWidth() == width && picture.getHeight() == height)
        return;
    picture = juce::Image (juce::Image::RGB, width, height, false, juce::SoftwareImageType());
    valid = false;
}

bool ScrollingImage::followLoading (int32_t& shown, int32_t loaded, int64_t columnShown) noexcept
{
    const auto before = std::exchange (shown, loaded);
    if (loaded < before)
        invalidate();
    else if (loaded > before)
        invalidateFrom (columnShown);
    return loaded != before;
}

int ScrollingImage::moveTo (int64_t left, const Draw& draw)
{
    if (!picture.isValid())
        return 0;
    const int64_t width = picture.getWidth();
    const auto shift = left - leftColumn;
    const auto right = left + width;

    if (!valid || std::abs (shift) >= width)
    {
        leftColumn = left;
        validEnd = right;
        valid = true;
        return drawBetween (left, right, draw);
    }

    const auto formerLeft = leftColumn;
    const auto formerEnd = std::clamp (validEnd, formerLeft, formerLeft + width);
    leftColumn = left;
    validEnd = right;
    return drawBetween (left, std::min (formerLeft, right), draw)
           + drawBetween (std::max (formerEnd, left), right, draw);
}

/** The place of a column in the ring. */
int ScrollingImage::placeOf (int64_t column) const noexcept
{
    const int64_t width = picture.getWidth();
    return static_cast<int> (((column % width) + width) % width);
}

int ScrollingImage::drawBetween (int64_t begin, int64_t end, const Draw& draw)
{
    auto drawn = 0;
    while (begin < end)
    {
        // As far as the ring's end.
        const auto place = placeOf (begin);
        const auto width = static_cast<int> (std::min<int64_t> (end - begin, picture.getWidth() - place));
        const juce::Rectangle<int> strip (place, 0, width, picture.getHeight());
        picture.clear (strip, ground);
        auto columns = picture.getClippedImage (strip);
        draw (columns, begin);
        begin += width;
        drawn += width;
    }
    return drawn;
}

void ScrollingImage::paint (juce::Graphics& g, int x, int y, juce::Range<int> rows) const
{
    if (!picture.isValid())
        return;
    const auto place = placeOf (leftColumn), width = picture.getWidth();
    const auto part = [&] (int from, int to)
    {
        if (to > from)
            g.drawImageAt (picture.getClippedImage ({ from, rows.getStart(), to - from, rows.getLength() }),
                           x + (from >= place ? from - place : from + width - place), y + rows.getStart());
    };
    part (place, width);
    part (0, place);
}
