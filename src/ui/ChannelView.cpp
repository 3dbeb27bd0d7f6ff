#include "ui/ChannelView.h"

#include "ui/DeckCommands.h"
#include "ui/Look.h"

namespace
{
constexpr int gap = 4, group = 12, labelHeight = 12, buttonHeight = 24, columnWidth = 46, faderWidth = 30,
              meterWidth = 8;

/** A knob and the buttons below it; the constants of commands without the deck's letter. */
struct Column
{
    const char *label, *knob;
    const char *upperText, *upper;
    const char *lowerText, *lower;
};

constexpr Column table[] {
    { "GAIN", "GAIN_", "PFL", "PFL_", "Cut", "CUT_" },
    { "HIGH", "EQ_HIGH_", "Kill", "EQ_HIGH_KILL_", "Punch", "PUNCH_" },
    { "MID", "EQ_MID_", "Kill", "EQ_MID_KILL_", "X L", "CROSSFADER_ASSIGN_LEFT_" },
    { "LOW", "EQ_LOW_", "Kill", "EQ_LOW_KILL_", "X R", "CROSSFADER_ASSIGN_RIGHT_" },
};
static_assert (std::size (table) == ChannelView::columns);
constexpr int firstDeckLevel = 1001;
}

ChannelView::Layout::Layout (juce::Rectangle<int> area)
{
    meter = area.removeFromRight (meterWidth);
    area.removeFromRight (gap);
    fader = area.removeFromRight (faderWidth);
    area.removeFromRight (group);
    for (size_t i = 0; i < columns; ++i)
    {
        auto column = area.removeFromLeft (columnWidth);
        area.removeFromLeft (gap);
        lowerButtons[i] = column.removeFromBottom (buttonHeight);
        column.removeFromBottom (gap);
        upperButtons[i] = column.removeFromBottom (buttonHeight);
        column.removeFromBottom (gap);
        labels[i] = column.removeFromTop (labelHeight);
        knobs[i] = column;
    }
}

ChannelView::ChannelView (CPlatterdex& engine, int deck)
    : PollingView (Pace::moving),
      fader (engine, commandOfDeck ("VOLUME_", deck), CommandSlider::Shape::upright, 1.0),
      meter (engine, { firstDeckLevel + deck }, Look::deckHue (deck))
{
    const auto button = [&engine, deck] (const char* command, const char* text)
    { return std::make_unique<CommandButton> (engine, commandOfDeck (command, deck), text); };
    for (size_t i = 0; i < columns; ++i)
    {
        const auto& column = table[i];
        knobs[i] = std::make_unique<CommandSlider> (engine, commandOfDeck (column.knob, deck),
                                                    CommandSlider::Shape::knob, 0.5);
        upperButtons[i] = button (column.upper, column.upperText);
        lowerButtons[i] = button (column.lower, column.lowerText);
        addAndMakeVisible (*knobs[i]);
        addAndMakeVisible (*upperButtons[i]);
        addAndMakeVisible (*lowerButtons[i]);
    }
    addAndMakeVisible (fader);
    addAndMakeVisible (meter);
}

void ChannelView::resized()
{
    const Layout layout (getLocalBounds());
    for (size_t i = 0; i < columns; ++i)
    {
        knobs[i]->setBounds (layout.knobs[i]);
        upperButtons[i]->setBounds (layout.upperButtons[i]);
        lowerButtons[i]->setBounds (layout.lowerButtons[i]);
    }
    fader.setBounds (layout.fader);
    meter.setBounds (layout.meter);
}

void ChannelView::pollMoving()
{
    for (size_t i = 0; i < columns; ++i)
    {
        knobs[i]->poll();
        upperButtons[i]->poll();
        lowerButtons[i]->poll();
    }
    fader.poll();
    meter.poll();
}

void ChannelView::paint (juce::Graphics& g)
{
    const Layout layout (getLocalBounds());
    g.setColour (Look::label);
    g.setFont (Look::labelFont());
    for (size_t i = 0; i < columns; ++i)
        g.drawText (table[i].label, layout.labels[i], juce::Justification::centred, false);
}
