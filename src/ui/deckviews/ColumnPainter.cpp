#include "ui/deckviews/ColumnPainter.h"

#include <algorithm>

namespace
{
constexpr float darkening = 0.6f, brightening = 0.3f;

void put (const juce::Image::BitmapData& bitmap, int x, int y, juce::PixelARGB pixel)
{
    if (y >= 0 && y < bitmap.height)
        reinterpret_cast<juce::PixelRGB*> (bitmap.getPixelPointer (x, y))->set (pixel);
}

/** A column from `top` to `bottom` that goes from `centre` at the centre line to `tip` at both ends. */
void paintLayer (const juce::Image::BitmapData& bitmap, int x, int middle, int top, int bottom,
                 juce::Colour tip, juce::Colour centre)
{
    const auto from = centre.getPixelARGB(), to = tip.getPixelARGB();
    for (int y = std::max (0, top); y < std::min (bottom, bitmap.height); ++y)
    {
        const auto above = y < middle;
        const auto reach = 2 * (above ? middle - top : bottom - middle);
        const auto distance =
            above ? 2 * (middle - y) - 1 : 2 * (y - middle) + 1; // of the pixel's own middle
        auto pixel = from;
        pixel.tween (to, static_cast<juce::uint32> (256 * distance / reach));
        put (bitmap, x, y, pixel);
    }
}
}

void ColumnPainter::paint (juce::Image::BitmapData& bitmap, int64_t firstColumn) const
{
    const auto entries = (loadedFrames + framesPerOverviewEntry - 1) / framesPerOverviewEntry;
    const auto middle = track.length (centreLine);
    for (int x = 0; x < bitmap.width; ++x)
    {
        const auto entry = track.entryAt (firstColumn + x);
        if (entry < 0 || entry >= std::min (entries, TrackOverview::entries))
            continue;
        const auto at = static_cast<size_t> (entry);
        const int most = overview.overviewMax[at], least = overview.overviewMin[at];
        const auto top = middle - track.length (most), bottom = middle - track.length (least);
        if (!spectral)
        {
            const auto colour = plain.brighter (static_cast<float> (most - least) / 255.0f);
            paintLayer (bitmap, x, middle, top, bottom, colour, colour);
            continue;
        }
        const juce::Colour bands (overview.overviewLow[at], overview.overviewMid[at],
                                  overview.overviewHigh[at]);
        const auto body = track.length (overview.overviewLevel[at]);
        paintLayer (bitmap, x, middle, top, bottom, bands, bands.darker (darkening));
        paintLayer (bitmap, x, middle, middle - body, middle + body, bands, bands.brighter (brightening));
    }
}
