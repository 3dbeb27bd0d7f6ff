#pragma once

#include "text/CachedGlyph.h"

/** Laying a glyph's coverage on an image. */
namespace GlyphBlend
{
/** The way that a pixel's coverage is taken. */
enum class Pixels
{
    lcd, ///< red, green and blue each by their own stripe: for screens whose stripes stand in that order
    grey ///< all by the whole pixel: for pictures that are scaled later, and for other screens
};

struct Ink
{
    juce::Colour colour;
    Pixels pixels;
};

/** Blends a rendering into an image, RGB or ARGB with its colours multiplied by alpha, within a part of it.
    @param target   the image's pixels
    @param origin   where the rendering's first pixel lies in the image
    @param part     what may change; within the image and the rendering
    @param level    of the clip, 0 to 256 */
void blend (const juce::Image::BitmapData& target, const CachedGlyph&, int phase, juce::Point<int> origin,
            juce::Rectangle<int> part, const Ink&, int level);
}
