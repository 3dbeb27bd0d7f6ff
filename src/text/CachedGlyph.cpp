#include "text/CachedGlyph.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>

namespace
{
constexpr int leadPixels = 2; ///< empty columns that the filter reads into
constexpr int leadSamples = leadPixels * CachedGlyph::stripes;

/** Spreads a sample's light over its neighbours almost evenly, so that an edge has hardly a colour. Sums to 256.
    The taps lie ahead of the sample that they give, so the picture moves left by two samples, which are four
    sixths of a pixel: the 4 in `placeAt`. */
constexpr std::array<int, 5> filterTaps { 0x08, 0x4d, 0x56, 0x4d, 0x08 };
constexpr int filterReach = static_cast<int> (filterTaps.size()) - 1;

constexpr int samplesPerPhase = 32; ///< half a sample, a sixth of a pixel, in 1/64 samples

/** The area that a glyph's ink can reach, over all phases, in whole pixels. */
struct Cell
{
    int overhang; ///< columns left of the pen
    int columns, top, bottom;
};

Cell cellOf (const FT_BBox& ink)
{
    const auto xMin = static_cast<double> (ink.xMin) / 64.0, xMax = static_cast<double> (ink.xMax) / 64.0;
    const auto overhang = std::max (0, static_cast<int> (std::ceil (4.0 / 3.0 - xMin)));
    const auto samples = 3.0 * (xMax + overhang) + 0.5 * (CachedGlyph::numPhases - 1);
    return { overhang, static_cast<int> (std::ceil ((samples + 1.0) / 3.0)),
             static_cast<int> (std::ceil (static_cast<double> (ink.yMax) / 64.0)),
             static_cast<int> (std::floor (static_cast<double> (ink.yMin) / 64.0)) };
}

/** Filters a row of samples that begins behind its lead into a row of stripes. */
void filterRow (const uint8_t* samples, uint8_t* stripes, int count)
{
    for (int i = 0; i < count; ++i)
    {
        auto sum = 0;
        for (int tap = 0; tap <= filterReach; ++tap)
            sum += filterTaps[static_cast<size_t> (tap)] * samples[i + tap];
        stripes[i] = static_cast<uint8_t> (sum >> 8);
    }
}
}

CachedGlyph::Place CachedGlyph::placeAt (double x) noexcept
{
    const auto column = std::floor (x);
    const auto fraction = x - column;
    // 4 to 9: beyond the last rendering the first ones follow, a pixel further on.
    const auto phase = 4 - static_cast<int> (fraction * -6.0);
    return { phase % numPhases, static_cast<int> (column) + phase / numPhases };
}

CachedGlyph CachedGlyph::render (FreeTypeFace& face, uint32_t code, const FreeTypeFace::Style& style)
{
    CachedGlyph glyph;
    FT_Outline* outline = nullptr;
    if (!face.load (code, style, outline, glyph.advance) || outline->n_points == 0)
        return glyph;

    FT_BBox ink;
    FT_Outline_Get_CBox (outline, &ink);
    constexpr FT_Pos largest = 1024 * 64; // a damaged outline; ours end at a tenth of it
    if (ink.xMin < -largest || ink.xMax > largest || ink.yMin < -largest || ink.yMax > largest)
        return glyph;
    const auto cell = cellOf (ink);
    const auto rows = cell.top - cell.bottom;
    if (cell.columns <= 0 || rows <= 0)
        return glyph;

    glyph.width = cell.columns;
    glyph.height = rows;
    glyph.left = -cell.overhang;
    glyph.top = cell.top;
    glyph.rowBytes = cell.columns * stripes;
    const auto phaseBytes = static_cast<size_t> (glyph.rowBytes) * static_cast<size_t> (rows);
    glyph.block.resize (phaseBytes * numPhases);

    constexpr FT_Matrix threeAcross { stripes * 0x10000, 0, 0, 0x10000 };
    FT_Outline_Transform (outline, &threeAcross);
    FT_Outline_Translate (outline, (leadSamples + cell.overhang * stripes) * 64, -cell.bottom * 64);

    const auto sampleColumns = leadSamples + glyph.rowBytes + filterReach;
    std::vector<uint8_t> samples;
    for (size_t phase = 0; phase < numPhases; ++phase)
    {
        samples.assign (static_cast<size_t> (sampleColumns) * static_cast<size_t> (rows), 0);
        face.rasterise (*outline, samples.data(), sampleColumns, rows);
        auto* const rendering = glyph.block.data() + phase * phaseBytes;
        for (int row = 0; row < rows; ++row)
            filterRow (samples.data() + row * sampleColumns + leadSamples, rendering + row * glyph.rowBytes,
                       glyph.rowBytes);
        glyph.phases[phase] = rendering;
        FT_Outline_Translate (outline, samplesPerPhase, 0);
    }
    return glyph;
}
