#include "ui/BrowserSeat.h"

#include "engine/CommandTable.h"
#include "skin/Palette.h"
#include "ui/KeyboardCommands.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int margin = 16, lineHeight = 20, keyHeight = 16, keyWidth = 84, columnWidth = 236,
              introWidth = 372, gap = 8;

constexpr const char* beginning[] {
    "Drop a track on a deck, or press the deck's letter.",
    "Play starts it, Cue keeps the place to come back to.",
    "The waveform is a record: hold it, drag it, let it go.",
    "A click on the thin wave below it jumps through the track.",
    "Double click brings any knob back to its rest.",
    "The right button knows more about most controls.",
};
}

BrowserSeat::BrowserSeat()
{
    setOpaque (true);
    for (int deck = -1; deck < 4; ++deck)
    {
        std::vector<Line> lines {
            { deck < 0 ? juce::String ("DESK") : "DECK " + PanelPaint::letterOf (deck), {}, deck }
        };
        for (const auto& binding : keyBindings())
            if (const auto deckOf = binding.deck(); deckOf == deck)
                lines.push_back ({ binding.keyName, binding.text, deck });
        if (lines.size() > 1)
            groups.push_back (std::move (lines));
    }
    std::rotate (groups.begin(), groups.begin() + 1, groups.end()); // the decks first
}

void BrowserSeat::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    auto area = getLocalBounds().reduced (margin, gap);
    if (area.getHeight() < 4 * lineHeight)
        return;

    const auto left = juce::Justification::centredLeft;
    auto column = area.removeFromLeft (introWidth);
    PanelPaint::value (g, "Ready to play", column.removeFromTop (lineHeight + 4), left,
                       SMLookAndFeel::titleSize);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.setColour (palette::label);
    for (const auto* sentence : beginning)
        if (column.getHeight() >= lineHeight)
            g.drawText (sentence, column.removeFromTop (lineHeight), left, false);
    area.removeFromLeft (margin);

    column = {};
    for (size_t i = 0; i < groups.size(); ++i)
    {
        // Side by side if there is room for all; else a group stays together below the one before it, if it can.
        const auto& group = groups[i];
        const auto remaining = static_cast<int> (groups.size() - i);
        if (area.getWidth() >= remaining * columnWidth
            || column.getHeight() < lineHeight * static_cast<int> (group.size()) + gap)
            column = area.removeFromLeft (columnWidth);
        else
            column.removeFromTop (gap);
        for (const auto& line : group)
        {
            if (column.getHeight() < lineHeight)
                column = area.removeFromLeft (columnWidth);
            if (column.getWidth() < columnWidth)
                return;
            paintLine (g, line, column.removeFromTop (lineHeight));
        }
    }
}

void BrowserSeat::paintLine (juce::Graphics& g, const Line& line, juce::Rectangle<int> row)
{
    const auto left = juce::Justification::centredLeft;
    if (line.text.isEmpty())
    {
        if (line.deck >= 0)
        {
            PanelPaint::badge (g, row.removeFromLeft (keyHeight).withSizeKeepingCentre (keyHeight, keyHeight),
                               line.deck, false);
            row.removeFromLeft (gap);
        }
        return PanelPaint::label (g, line.key, row, left);
    }
    const auto key = row.removeFromLeft (keyWidth).withSizeKeepingCentre (keyWidth, keyHeight);
    g.setColour (palette::well);
    g.fillRoundedRectangle (key.toFloat(), 2.0f);
    PanelPaint::label (g, line.key, key);
    row.removeFromLeft (gap);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.setColour (palette::label);
    g.drawText (line.text, row, left, false);
}
