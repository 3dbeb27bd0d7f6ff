#include "Materials.h"
#include "Writer.h"

#include <algorithm>
#include <vector>

namespace
{
constexpr int sheetWide = 1280, margin = 16, gap = 8, caption = 12;
constexpr int knobsShown = 9; ///< of a film strip, from first to last

/** The frames of a strip that the sheet shows. */
std::vector<int> shownFrames (const skin::Row& row)
{
    const int shown = row.frames > 16 ? knobsShown : row.frames;
    std::vector<int> frames (static_cast<size_t> (shown));
    for (int index = 1; index < shown; ++index)
        frames[static_cast<size_t> (index)] = index * (row.frames - 1) / (shown - 1);
    return frames;
}

/** The strips as the sheet shows them: from low ones to high ones, so that its shelves are full. */
std::vector<const skin::Row*> sorted()
{
    std::vector<const skin::Row*> rows (skin::table.size());
    std::ranges::transform (skin::table, rows.begin(), [] (const skin::Row& row) { return &row; });
    std::ranges::stable_sort (rows, {}, &skin::Row::height);
    return rows;
}

/** Runs over the places of all strips. @returns the height that they take */
template <typename Each>
int layOut (Each&& each)
{
    int x = margin, y = margin, rowHigh = 0;
    for (const auto* const shown : sorted())
    {
        const auto& row = *shown;
        const int count = static_cast<int> (shownFrames (row).size());
        const int wide =
            juce::jmax (count * (row.width + 4), 9 * static_cast<int> (row.name().size()) * 2 / 3);
        if (x + wide > sheetWide - margin)
        {
            x = margin;
            y += rowHigh + gap;
            rowHigh = 0;
        }
        each (row, x, y);
        x += wide + gap;
        rowHigh = juce::jmax (rowHigh, row.height + caption);
    }
    return y + rowHigh + margin;
}
}

juce::String writeSheet (const juce::File& png, float scale)
{
    const int high = layOut ([] (const skin::Row&, int, int) {});
    juce::Image sheet (juce::Image::RGB, skin::scaled (sheetWide, scale), skin::scaled (high, scale), false,
                       juce::SoftwareImageType());
    juce::Graphics g (sheet);
    g.fillAll (palette::ground);
    layOut (
        [&] (const skin::Row& row, int x, int y)
        {
            const auto strip = drawStrip (row, scale);
            auto name = wordPath (juce::String (row.name().data(), row.name().size()), 6.5f);
            name.applyTransform (
                juce::AffineTransform::translation (static_cast<float> (x), static_cast<float> (y + 8))
                    .scaled (scale));
            g.setColour (palette::label);
            g.fillPath (name);
            const int width = strip.getWidth(), height = strip.getHeight() / row.frames;
            for (const int frame : shownFrames (row))
            {
                g.drawImageAt (strip.getClippedImage ({ 0, frame * height, width, height }),
                               skin::scaled (x, scale), skin::scaled (y + caption, scale));
                x += row.width + 4;
            }
        });
    return writePng (sheet, png) ? juce::String() : "Can't write " + png.getFullPathName() + ".";
}
