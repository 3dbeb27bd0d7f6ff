#include "Materials.h"

namespace
{
/** The colour of a flag and its line: that of the cue, the deck or the loop. */
juce::Colour flagColour (const skin::Row& row, int frame)
{
    using skin::Material;
    if (row.material == Material::cueFlag || row.material == Material::cueLine)
        return palette::cues[static_cast<size_t> (frame)];
    if (row.material == Material::deckFlag || row.material == Material::deckLine)
        return skin::colourOf (row.hue);
    return frame == 0 ? palette::label : palette::selected; // a loop's: waiting, then turning
}
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
    const bool bar = row.name() == "line_8";
    const auto colour = anchor ? palette::anchorNumber : phrase ? palette::label : palette::value;
    pen.fill (colour.withAlpha (anchor || phrase ? 0.95f : bar ? 0.5f : 1.0f), pen.all());
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
    auto number = wordPath (juce::String (frame + 1), 7);
    const auto place = number.getBounds();
    number.applyTransform (
        juce::AffineTransform::translation (pen.width / 2 - place.getCentreX(), pen.snap (9)));
    pen.fill (palette::ink, number);
}

void paintFlagLine (const Pen& pen, const skin::Row& row, int frame)
{
    const float left = pen.snap (1), right = pen.snap (2);
    pen.fill (palette::ink.withAlpha (0.85f), pen.all());
    pen.fill (flagColour (row, frame), { left, 0, right - left, pen.height });
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
    pen.fill (skin::colourOf (row.hue), { left, 0, right - left, pen.height });
}
