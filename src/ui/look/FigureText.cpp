#include "ui/look/FigureText.h"

#include <cmath>

void drawFigures (juce::Graphics& g, const juce::String& text, juce::Rectangle<int> area)
{
    const auto font = g.getCurrentFont();
    const auto figure = std::ceil (font.getStringWidthFloat ("0"));
    const auto advanceOf = [&] (juce::juce_wchar c)
    {
        return juce::CharacterFunctions::isDigit (c)
                   ? figure
                   : font.getStringWidthFloat (juce::String::charToString (c));
    };
    float width = 0.0f;
    for (auto c = text.getCharPointer(); !c.isEmpty();)
        width += advanceOf (c.getAndAdvance());

    const auto baseline = area.toFloat().getCentreY() + 0.5f * font.getAscent() - 0.5f * font.getDescent();
    auto x = std::floor (area.toFloat().getCentreX() - 0.5f * width);
    juce::GlyphArrangement line;
    for (auto c = text.getCharPointer(); !c.isEmpty();)
    {
        const auto character = c.getAndAdvance();
        const auto letter = juce::String::charToString (character);
        const auto slack = advanceOf (character) - font.getStringWidthFloat (letter);
        line.addLineOfText (font, letter, x + 0.5f * slack, std::round (baseline));
        x += advanceOf (character);
    }
    line.draw (g);
}
