#include "text/GlyphBlend.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

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

constexpr int opaque = 256; ///< alpha and level that change nothing

/** The formula, for every alpha and level. */
template <class Pixel, bool lcd>
void blendRow (uint8_t* pixel, int stride, const uint8_t* coverage, int count, const Channels& ink, int level)
{
    for (; --count >= 0; pixel += stride, coverage += CachedGlyph::stripes)
    {
        const auto red = coverage[lcd ? 0 : 1] * level >> 8;
        const auto green = coverage[1] * level >> 8;
        const auto blue = coverage[lcd ? 2 : 1] * level >> 8;
        mix (pixel[Pixel::indexR], ink.red, red, ink.alpha);
        mix (pixel[Pixel::indexG], ink.green, green, ink.alpha);
        mix (pixel[Pixel::indexB], ink.blue, blue, ink.alpha);
        if constexpr (std::is_same_v<Pixel, juce::PixelARGB>)
            mix (pixel[Pixel::indexA], 255, std::max ({ red, green, blue }), opaque);
    }
}

constexpr int chunk = 64; ///< pixels that are blended at a time

/** A chunk's channels as they stand in memory. */
template <class Pixel>
using ChunkBytes = std::array<uint8_t, chunk * sizeof (Pixel)>;

/** One value for each channel of a pixel. A pixel of four is written as one word,
    which is native in its order. */
template <class Pixel>
void setChannels (uint8_t* pixel, uint32_t red, uint32_t green, uint32_t blue, uint32_t alpha)
{
    if constexpr (std::is_same_v<Pixel, juce::PixelARGB>)
    {
        const auto word = alpha << 24 | red << 16 | green << 8 | blue;
        std::memcpy (pixel, &word, sizeof (word));
    }
    else
    {
        pixel[Pixel::indexR] = static_cast<uint8_t> (red);
        pixel[Pixel::indexG] = static_cast<uint8_t> (green);
        pixel[Pixel::indexB] = static_cast<uint8_t> (blue);
    }
}

/** The same for an opaque colour, in bytes side by side, which the compiler makes into vectors: there
    d + ((c - d) x coverage x 256 >> 16) is (d x (256 - coverage) + c x coverage) >> 8, and alpha is a channel
    of 255. */
template <class Pixel, bool lcd>
void blendOpaqueRow (uint8_t* __restrict pixel, const uint8_t* coverage, int count,
                     const ChunkBytes<Pixel>& ink)
{
    ChunkBytes<Pixel> spread;
    for (; count > 0; count -= chunk, pixel += spread.size())
    {
        const auto now = std::min (chunk, count);
        for (int i = 0; i < now; ++i, coverage += CachedGlyph::stripes)
        {
            const uint32_t red = coverage[lcd ? 0 : 1], green = coverage[1], blue = coverage[lcd ? 2 : 1];
            setChannels<Pixel> (spread.data() + static_cast<size_t> (i) * sizeof (Pixel), red, green, blue,
                                std::max ({ red, green, blue }));
        }
        const auto bytes = static_cast<size_t> (now) * sizeof (Pixel);
        for (size_t i = 0; i < bytes; ++i)
            pixel[i] = static_cast<uint8_t> ((pixel[i] * (256 - spread[i]) + ink[i] * spread[i]) >> 8);
    }
}

template <class Pixel, bool lcd>
void blendRows (const juce::Image::BitmapData& target, const uint8_t* coverage, int rowBytes,
                juce::Rectangle<int> part, const Channels& ink, int level)
{
    const auto simple =
        ink.alpha == opaque && level == opaque && target.pixelStride == static_cast<int> (sizeof (Pixel));
    ChunkBytes<Pixel> inkBytes;
    if (simple)
        for (int i = 0; i < std::min (chunk, part.getWidth()); ++i)
            setChannels<Pixel> (inkBytes.data() + static_cast<size_t> (i) * sizeof (Pixel), ink.red,
                                ink.green, ink.blue, 255);
    for (int y = part.getY(); y < part.getBottom(); ++y, coverage += rowBytes)
    {
        auto* const row = target.getPixelPointer (part.getX(), y);
        if (simple)
            blendOpaqueRow<Pixel, lcd> (row, coverage, part.getWidth(), inkBytes);
        else
            blendRow<Pixel, lcd> (row, target.pixelStride, coverage, part.getWidth(), ink, level);
    }
}

template <class Pixel>
auto rowsFor (GlyphBlend::Pixels pixels)
{
    return pixels == GlyphBlend::Pixels::lcd ? blendRows<Pixel, true> : blendRows<Pixel, false>;
}
}

void GlyphBlend::blend (const juce::Image::BitmapData& target, const CachedGlyph& glyph, int phase,
                        juce::Point<int> origin, juce::Rectangle<int> part, const Ink& ink, int level)
{
    const auto rows = target.pixelFormat == juce::Image::ARGB ? rowsFor<juce::PixelARGB> (ink.pixels)
                                                              : rowsFor<juce::PixelRGB> (ink.pixels);
    rows (target,
          glyph.phases[static_cast<size_t> (phase)] + (part.getY() - origin.y) * glyph.rowBytes
              + (part.getX() - origin.x) * CachedGlyph::stripes,
          glyph.rowBytes, part, channelsOf (ink.colour), level);
}
