#include "ui/EffectRow.h"

#include "engine/CPlatterdex.h"
#include "ui/DeckCommands.h"
#include "ui/Look.h"

#include <string>

namespace
{
constexpr int gap = 2, group = 8, knobSize = 24;
constexpr int filterLabelWidth = 44, dryWetLabelWidth = 30, listWidth = 22, textWidth = 32, bandWidth = 22;
constexpr int widestName = 110;

struct Band
{
    const char *text, *constant;
};

/** From left to right, as the equaliser's knobs stand. */
constexpr Band bandTable[] {
    { "H", "FX_HIGH_BAND_GROUP_" },
    { "M", "FX_MID_BAND_GROUP_" },
    { "L", "FX_LOW_BAND_GROUP_" },
};
static_assert (std::size (bandTable) == EffectRow::bandCount);

/** A slot's command. @param family   EFFECT_ON and its like */
int commandOfSlot (const char* family, size_t slot, int deck)
{
    return commandOfDeck (std::string (family) + "_" + std::to_string (slot + 1) + "_GROUP_", deck);
}
}

EffectRow::Layout::Layout (juce::Rectangle<int> row)
{
    filterLabel = row.removeFromLeft (filterLabelWidth);
    filter = row.removeFromLeft (knobSize);
    row.removeFromLeft (group);

    for (size_t i = bands.size(); i-- > 0;)
    {
        bands[i] = row.removeFromRight (bandWidth);
        row.removeFromRight (i > 0 ? gap : group);
    }
    dryWet = row.removeFromRight (knobSize);
    dryWetLabel = row.removeFromRight (dryWetLabelWidth);

    const auto each = row.getWidth() / static_cast<int> (slotCount);
    for (auto& slot : slots)
    {
        auto area = row.removeFromLeft (each);
        area.removeFromRight (group);
        const auto others = gap + listWidth + gap + knobSize + gap + textWidth;
        slot.on = area.removeFromLeft (juce::jmin (widestName, area.getWidth() - others));
        area.removeFromLeft (gap);
        slot.list = area.removeFromLeft (listWidth);
        area.removeFromLeft (gap);
        slot.parameter = area.removeFromLeft (knobSize);
        area.removeFromLeft (gap);
        slot.text = area.removeFromLeft (textWidth);
    }
}

EffectRow::EffectRow (CPlatterdex& e, int deck)
    : PollingView (Pace::moving),
      engine (e),
      filter (e, commandOfDeck ("FILTER_", deck), CommandSlider::Shape::knob, 0.5),
      dryWet (e, commandOfDeck ("FX_DRY_WET_GROUP_", deck), CommandSlider::Shape::knob, 0.0)
{
    for (size_t i = 0; i < slotCount; ++i)
    {
        auto& slot = slots[i];
        slot.select = commandOfSlot ("EFFECT_SELECT", i, deck);
        slot.on = std::make_unique<CommandButton> (e, commandOfSlot ("EFFECT_ON", i, deck), "");
        slot.on->setLitColour (Look::deckHue (deck));
        slot.list = std::make_unique<juce::TextButton> (juce::String::fromUTF8 ("\xe2\x96\xbe"));
        slot.list->setTooltip ("Chooses the effect");
        slot.list->setWantsKeyboardFocus (false);
        slot.list->setMouseClickGrabsKeyboardFocus (false);
        slot.list->setTriggeredOnMouseDown (true);
        slot.list->onClick = [this, i] { openList (i); };
        slot.parameter = std::make_unique<CommandSlider> (e, commandOfSlot ("EFFECT_PARAM", i, deck),
                                                          CommandSlider::Shape::knob, 0.0);
        addAndMakeVisible (*slot.on);
        addAndMakeVisible (*slot.list);
        addAndMakeVisible (*slot.parameter);
    }
    for (size_t i = 0; i < bandCount; ++i)
    {
        bands[i] = std::make_unique<CommandButton> (e, commandOfDeck (bandTable[i].constant, deck),
                                                    bandTable[i].text);
        addAndMakeVisible (*bands[i]);
    }
    addAndMakeVisible (filter);
    addAndMakeVisible (dryWet);
}

void EffectRow::resized()
{
    const Layout layout (getLocalBounds());
    for (size_t i = 0; i < slotCount; ++i)
    {
        slots[i].on->setBounds (layout.slots[i].on);
        slots[i].list->setBounds (layout.slots[i].list);
        slots[i].parameter->setBounds (layout.slots[i].parameter);
    }
    for (size_t i = 0; i < bandCount; ++i)
        bands[i]->setBounds (layout.bands[i]);
    filter.setBounds (layout.filter);
    dryWet.setBounds (layout.dryWet);
}

void EffectRow::pollMoving()
{
    const Layout layout (getLocalBounds());
    for (size_t i = 0; i < slotCount; ++i)
    {
        auto& slot = slots[i];
        slot.on->poll();
        slot.parameter->poll();
        slot.on->setButtonText (engine.displayText (slot.select));
        const auto text = engine.displayText (slot.parameter->commandNumber());
        if (text == slot.shown)
            continue;
        slot.shown = text;
        repaint (layout.slots[i].text);
    }
    for (auto& band : bands)
        band->poll();
    filter.poll();
    dryWet.poll();
}

void EffectRow::choose (size_t slot, int kind)
{
    engine.setParameter (slots[slot].select, static_cast<float> (FxType::selectorValue (kind)));
    refresh();
}

void EffectRow::openList (size_t slot)
{
    juce::PopupMenu menu;
    menu.setLookAndFeel (&getLookAndFeel());
    for (int kind = 0; kind < FxType::count; ++kind)
    {
        const juce::String name (FxType::name (kind));
        menu.addItem (name, true, name == slots[slot].on->getButtonText(),
                      [this, slot, kind] { choose (slot, kind); });
    }
    menu.showMenuAsync (
        juce::PopupMenu::Options().withTargetComponent (*slots[slot].list).withDeletionCheck (*this));
}

void EffectRow::paint (juce::Graphics& g)
{
    const Layout layout (getLocalBounds());
    g.setColour (Look::label);
    g.setFont (Look::labelFont());
    g.drawText ("FILTER", layout.filterLabel, juce::Justification::centredLeft, false);
    g.drawText ("WET", layout.dryWetLabel, juce::Justification::centredLeft, false);
    g.setColour (Look::value);
    for (size_t i = 0; i < slotCount; ++i)
        g.drawText (slots[i].shown, layout.slots[i].text, juce::Justification::centredLeft, false);
}
