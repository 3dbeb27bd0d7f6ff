#include "ui/deckviews/ScrollingImage.h"

#include <algorithm>
#include <cstdlib>

void ScrollingImage::setSize (int width, int height)
{
    width = std::max (1, width);
    height = std::max (1, height);
    if (picture.isValid() && picture.getWidth() == width && picture.getHeight() == height)
        return;
    picture = juce::Image (juce::Image::RGB, width, height, false, juce::SoftwareImageType());
    valid = false;
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
    if (shift != 0)
        picture.moveImageSection (static_cast<int> (std::max<int64_t> (0, -shift)), 0,
                                  static_cast<int> (std::max<int64_t> (0, shift)), 0,
                                  static_cast<int> (width - std::abs (shift)), picture.getHeight());
    leftColumn = left;
    validEnd = right;
    return drawBetween (left, std::min (formerLeft, right), draw)
           + drawBetween (std::max (formerEnd, left), right, draw);
}

int ScrollingImage::drawBetween (int64_t begin, int64_t end, const Draw& draw)
{
    if (begin >= end)
        return 0;
    const juce::Rectangle<int> strip (static_cast<int> (begin - leftColumn), 0,
                                      static_cast<int> (end - begin), picture.getHeight());
    picture.clear (strip, ground);
    juce::Image::BitmapData bitmap (picture, strip.getX(), 0, strip.getWidth(), strip.getHeight(),
                                    juce::Image::BitmapData::readWrite);
    draw (bitmap, begin);
    return strip.getWidth();
}
