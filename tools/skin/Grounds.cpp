#include "Materials.h"

void paintArea (const Pen& pen, const skin::Row&, int)
{
    drawSurface (pen, pen.all(), 4, { palette::panel, palette::edgeLight, palette::edgeDark });
}

void paintSunken (const Pen& pen, const skin::Row&, int)
{
    drawSurface (pen, pen.all(), 3, { palette::well, palette::edgeDark, palette::line });
}

void paintCorner (const Pen& pen, const skin::Row&, int frame)
{
    const auto colour = frame == skin::normalOff ? palette::line.brighter (0.3f)
                        : frame == skin::overOff ? palette::value
                                                 : palette::accent;
    for (const float line : { 4.0f, 8.0f, 12.0f })
    {
        juce::Path slant;
        slant.startNewSubPath (14, line);
        slant.lineTo (line, 14);
        pen.g.setColour (colour);
        pen.g.strokePath (slant, juce::PathStrokeType (1.3f));
    }
}

void paintScroll (const Pen& pen, const skin::Row& row, int frame)
{
    const bool upright = row.material == skin::Material::scrollUpright;
    const auto body = frame == skin::normalOff ? palette::line
                      : frame == skin::overOff ? palette::line.brighter (0.4f)
                                               : palette::label;
    const auto thumb = pen.snap (upright ? pen.all().reduced (2, 0) : pen.all().reduced (0, 2));
    drawSurface (pen, thumb, 3, lying (body));
}
