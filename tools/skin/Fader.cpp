#include "Materials.h"

namespace
{
constexpr float trackWide = 4;
constexpr float travelInset = 14; ///< half a cap: the ticks stand where its line can

/** The parts of a travel of so many pixels: ten, or another even number if that gives whole pixels. */
int ticksFor (int travel)
{
    for (const int parts : { 10, 8, 4 })
        if (travel % parts == 0)
            return parts;
    return 10;
}

bool isUpright (skin::Material material)
{
    using skin::Material;
    return material == Material::uprightTrack || material == Material::uprightScale
           || material == Material::uprightCap;
}

/** A rectangle given along and across the travel. */
juce::Rectangle<float> placed (bool upright, float along, float across, float length, float breadth)
{
    return upright ? juce::Rectangle<float> (across, along, breadth, length)
                   : juce::Rectangle<float> (along, across, length, breadth);
}

void drawGroove (const Pen& pen, bool upright)
{
    const float length = upright ? pen.height : pen.width, breadth = upright ? pen.width : pen.height;
    const auto groove = pen.snap (placed (upright, 2, (breadth - trackWide) / 2, length - 4, trackWide));
    drawSurface (pen, groove, trackWide / 2, { palette::well, palette::edgeDark, palette::line });
}
}

void paintTrack (const Pen& pen, const skin::Row& row, int)
{
    drawGroove (pen, isUpright (row.material));
}

void paintScale (const Pen& pen, const skin::Row& row, int)
{
    const bool upright = isUpright (row.material);
    const float length = upright ? pen.height : pen.width, breadth = upright ? pen.width : pen.height;
    const float side = (breadth - 12) / 2; // what a cap leaves free beside itself
    const float travel = length - 2 * travelInset;
    const int ticks = ticksFor (juce::roundToInt (travel));
    for (int tick = 0; tick <= ticks; ++tick)
    {
        const bool strong = tick % (ticks / 2) == 0;
        const float along = travelInset + travel * static_cast<float> (tick) / static_cast<float> (ticks);
        const float hair = pen.hair(), from = pen.snap (along - hair / 2);
        const float reach = pen.snap (strong ? side - 1 : (side - 1) * 0.6f);
        const auto colour = strong ? palette::label : palette::line.brighter (0.25f);
        pen.fill (colour, placed (upright, from, pen.snap (side - 1) - reach, hair, reach));
        pen.fill (colour, placed (upright, from, pen.snap (breadth - side + 1), hair, reach));
    }
    drawGroove (pen, upright);
}

void paintCap (const Pen& pen, const skin::Row& row, int frame)
{
    const bool upright = isUpright (row.material);
    const float length = upright ? pen.height : pen.width, breadth = upright ? pen.width : pen.height;
    const auto body = frame == skin::downOff   ? palette::line.brighter (0.55f)
                      : frame == skin::overOff ? palette::line.brighter (0.35f)
                                               : palette::line.brighter (0.12f);
    // A rim of the ground's colour keeps the cap apart from track and ticks.
    juce::Path rim;
    rim.addRoundedRectangle (pen.all(), 3);
    pen.fill (palette::edgeDark, rim);
    drawSurface (pen, pen.all().reduced (pen.hair()), 2, lying (body));

    const float lineWide = pen.snap (2);
    for (const float grip : { 6.0f, 9.0f, length - 10, length - 7 })
        pen.fill (body.interpolatedWith (juce::Colours::black, 0.3f),
                  placed (upright, pen.snap (grip), 3, pen.hair(), breadth - 6));
    pen.fill (frame == skin::downOff ? palette::accent : juce::Colours::white,
              placed (upright, pen.snap (length / 2 - lineWide / 2), 0, lineWide, breadth));
}
