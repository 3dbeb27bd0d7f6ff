#include "Materials.h"

namespace
{
/** What a flag and its line have: the colour of the cue, the deck or the loop. */
juce::Colour flagColour (const skin::Row& row, int frame)
{
    using skin::Material;
    if (row.material == Material::cueFlag || row.material == Material::cueLine)
        return palette::cues[static_cast<size_t> (frame)];
    if (row.material == Material::deckFlag || row.material == Material::deckLine)
        return colourOf (row.hue);
    return frame == 0 ? palette::label : palette::selected; // a loop's: waiting, then turning
}

/** The digits 1 to 8 on a grid of 3 by 5: at this size a drawn shape is clearer than a font's. */
constexpr const char* digits[] { ".X.XX..X..X.XXX", "XX...X.X.X..XXX", "XX...X.X...XXX.", "X.XX.XXXX..X..X",
                                 "XXXX..XX...XXX.", ".XXX..XX.X.XXX.", "XXX..X.X..X..X.", "XXXX.XXXXX.XXXX" };
}

void paintMark (const Pen& pen, const skin::Row& row, int frame)
{
    const bool strong = row.material == skin::Material::barMark;
    const auto colour = frame == 1 ? juce::Colours::white : strong ? palette::anchorNumber : palette::label;
    juce::Path mark;
    mark.addTriangle (0, 0, pen.width, 0, pen.width / 2, pen.height);
    pen.fill (colour, mark);
}

void paintBeatLine (const Pen& pen, const skin::Row& row, int frame)
{
    const bool anchor = frame == 1, phrase = row.frames == 2;
    const auto colour = anchor   ? palette::anchorNumber
                        : phrase ? palette::label
                                 : palette::label.darker (0.25f);
    pen.fill (colour.withAlpha (anchor ? 0.95f : phrase ? 0.75f : 0.55f), pen.all());
}

void paintFlag (const Pen& pen, const skin::Row& row, int frame)
{
    const auto colour = flagColour (row, frame);
    if (row.material == skin::Material::deckFlag)
    {
        juce::Path flag;
        flag.addTriangle (0, 0, pen.width, pen.height / 2, 0, pen.height);
        pen.fill (colour, flag);
        return;
    }
    pen.fill (colour, pen.all());
    const char* digit = digits[frame];
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 3; ++x)
            if (digit[y * 3 + x] == 'X')
            {
                const auto left = static_cast<float> (x + 2), top = static_cast<float> (y + 3);
                pen.fill (palette::ink, pen.snap ({ left, top, 1, 1 }));
            }
}

void paintFlagLine (const Pen& pen, const skin::Row& row, int frame)
{
    pen.fill (flagColour (row, frame), pen.all());
}

void paintLoopMark (const Pen& pen, const skin::Row& row, int frame)
{
    const bool in = row.material == skin::Material::loopIn;
    juce::Path mark; // a bracket that opens into the loop
    if (in)
        mark.addTriangle (0, 0, pen.width, 0, 0, pen.height);
    else
        mark.addTriangle (0, 0, pen.width, 0, pen.width, pen.height);
    pen.fill (flagColour (row, frame), mark);
}

void paintPlayhead (const Pen& pen, const skin::Row& row, int)
{
    // Dark flanks keep the line apart from a loud wave.
    const float left = pen.snap (1), right = pen.snap (3);
    pen.fill (palette::edgeDark.withAlpha (0.8f), pen.all());
    pen.fill (colourOf (row.hue), { left, 0, right - left, pen.height });
}
