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

namespace
{
/** The entries of a column in one. */
struct Summary
{
    int most = 0, least = 0, level = 0;
    size_t loudest = 0;
};

Summary summaryOf (const TrackOverview& overview, int64_t first, int64_t last)
{
    Summary summary { -128, 127, 0, static_cast<size_t> (last) };
    for (auto entry = static_cast<size_t> (first); entry <= static_cast<size_t> (last); ++entry)
    {
        summary.most = std::max<int> (summary.most, overview.overviewMax[entry]);
        summary.least = std::min<int> (summary.least, overview.overviewMin[entry]);
        if (overview.overviewLevel[entry] >= summary.level)
        {
            summary.level = overview.overviewLevel[entry];
            summary.loudest = entry;
        }
    }
    return summary;
}

/** The colour of three bands as bright as a screen can show it: their data reach to 150, 160 and 170. */
juce::Colour bandColour (const TrackOverview& overview, size_t entry)
{
    const auto bright = [] (int band, int most)
    { return static_cast<juce::uint8> (std::min (255, band * 255 / most)); };
    return { bright (overview.overviewLow[entry], 150), bright (overview.overviewMid[entry], 160),
             bright (overview.overviewHigh[entry], 170) };
}
}

void ColumnPainter::paint (juce::Image& image, int64_t firstColumn) const
{
    juce::Image::BitmapData bitmap (image, juce::Image::BitmapData::readWrite);
    const auto entries = std::min<int64_t> (
        (loadedFrames + framesPerOverviewEntry - 1) / framesPerOverviewEntry, TrackOverview::entries);
    const auto middle = track.length (half);
    const auto heightOf = [this] (int value)
    { return track.length (std::clamp (value * gain, -double (half), double (half))); };
    for (int x = 0; x < bitmap.width; ++x)
    {
        const auto last = track.entryAt (firstColumn + x);
        // A column that is narrower than an entry shows the one it lies in.
        const auto first =
            std::clamp<int64_t> (track.entryAt (firstColumn + x - 1) + 1, 0, std::max<int64_t> (0, last));
        if (last < 0 || first >= entries)
            continue;
        const auto column = summaryOf (overview, first, std::min (last, entries - 1));
        const auto top = middle - heightOf (column.most), bottom = middle - heightOf (column.least);
        if (!spectral)
        {
            const auto colour = plain.brighter (static_cast<float> (column.most - column.least) / 255.0f);
            paintLayer (bitmap, x, middle, top, bottom, colour, colour);
            continue;
        }
        const auto bands = bandColour (overview, column.loudest);
        const auto body = heightOf (column.level);
        paintLayer (bitmap, x, middle, top, bottom, bands, bands.darker (darkening));
        paintLayer (bitmap, x, middle, middle - body, middle + body, bands, bands.brighter (brightening));
    }
}
