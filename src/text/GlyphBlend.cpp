#include "text/GlyphBlend.h"

#include <algorithm>

namespace
{
/** A colour's channels, and its alpha 0 to 256. */
struct Channels
{
    int red, green, blue, alpha;
};

Channels channelsOf (juce::Colour colour)
{
    const auto alpha = static_cast<int> (colour.getAlpha());
    return { colour.getRed(), colour.getGreen(), colour.getBlue(), alpha + (alpha >> 7) };
}

void mix (uint8_t& channel, int towards, int coverage, int alpha)
{
    const auto from = static_cast<int> (channel);
    channel = static_cast<uint8_t> (from + (((towards - from) * coverage * alpha) >> 16));
}

template <class Pixel, bool lcd, bool levelled>
void blendRow (uint8_t* pixel, int stride, const uint8_t* coverage, int count, const Channels& ink, int level)
{
    for (; --count >= 0; pixel += stride, coverage += CachedGlyph::stripes)
    {
        auto red = static_cast<int> (coverage[lcd ? 0 : 1]);
        auto green = static_cast<int> (coverage[1]);
        auto blue = static_cast<int> (coverage[lcd ? 2 : 1]);
        if ((red | green | blue) == 0)
            continue;
        if constexpr (levelled)
        {
            red = red * level >> 8;
            green = green * level >> 8;
            blue = blue * level >> 8;
        }
        mix (pixel[Pixel::indexR], ink.red, red, ink.alpha);
        mix (pixel[Pixel::indexG], ink.green, green, ink.alpha);
        mix (pixel[Pixel::indexB], ink.blue, blue, ink.alpha);
        if constexpr (std::is_same_v<Pixel, juce::PixelARGB>)
        {
            auto& alpha = pixel[Pixel::indexA];
            alpha = static_cast<uint8_t> (alpha + (((255 - alpha) * std::max ({ red, green, blue })) >> 8));
        }
    }
}

using Row = void (*) (uint8_t*, int, const uint8_t*, int, const Channels&, int);

template <class Pixel>
Row rowFor (bool lcd, bool levelled)
{
    if (lcd)
        return levelled ? blendRow<Pixel, true, true> : blendRow<Pixel, true, false>;
    return levelled ? blendRow<Pixel, false, true> : blendRow<Pixel, false, false>;
}
}

void GlyphBlend::blend (const juce::Image::BitmapData& target, const CachedGlyph& glyph, int phase,
                        juce::Point<int> origin, juce::Rectangle<int> part, const Ink& ink, int level)
{
    const auto lcd = ink.pixels == Pixels::lcd;
    const auto row = target.pixelFormat == juce::Image::ARGB ? rowFor<juce::PixelARGB> (lcd, level < 256)
                                                             : rowFor<juce::PixelRGB> (lcd, level < 256);
    const auto channels = channelsOf (ink.colour);
    const auto* coverage = glyph.phases[static_cast<size_t> (phase)]
                           + (part.getY() - origin.y) * glyph.rowBytes
                           + (part.getX() - origin.x) * CachedGlyph::stripes;
    for (int y = part.getY(); y < part.getBottom(); ++y, coverage += glyph.rowBytes)
        row (target.getPixelPointer (part.getX(), y), target.pixelStride, coverage, part.getWidth(), channels,
             level);
}
