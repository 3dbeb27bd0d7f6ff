#include "ui/panel/PanelPaint.h"

#include "skin/Palette.h"
#include "ui/poll/DeckView.h"

namespace PanelPaint
{
void label (juce::Graphics& g, const juce::String& text, juce::Rectangle<int> area, juce::Justification where)
{
    g.setFont (SMLookAndFeel::labelFont());
    g.setColour (palette::label);
    // A word of another language may be longer.
    if (text.length() > 4)
        g.drawFittedText (text, area, where, 1, 0.75f);
    else
        g.drawText (text, area, where, false);
}

void value (juce::Graphics& g, const juce::String& text, juce::Rectangle<int> area, juce::Justification where,
            float size)
{
    g.setFont (SMLookAndFeel::font (size));
    g.setColour (palette::value);
    g.drawText (text, area, where, true);
}

void badge (juce::Graphics& g, juce::Rectangle<int> area, int deck, bool filled)
{
    const auto hue = palette::decks[static_cast<size_t> (deck)];
    g.setColour (filled ? hue : palette::well);
    g.fillRoundedRectangle (area.toFloat(), 2.0f);
    g.setColour (filled ? palette::textOn (hue) : hue);
    g.setFont (SMLookAndFeel::font (static_cast<float> (area.getHeight()) * 0.8f));
    g.drawText (letterOf (deck), area, juce::Justification::centred, false);
}

juce::String letterOf (int deck)
{
    return juce::String::charToString (static_cast<juce::juce_wchar> ('A' + deck));
}

juce::String dash()
{
    return juce::String::charToString (0x2013);
}

juce::String bpm (const GridNumbers& grid, double tempoBpm)
{
    return grid.isKnown() ? juce::String (tempoBpm, 2) : dash();
}
}
