#include "ui/global/Fx1DeckComponent.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;

// clang-format off
constexpr PlacedControl table[] {
    { { Kind::text, "_fxHighButton",   "FX_HIGH_BAND_GROUP_", "H", N_ ("Keeps the high band out of the effects: lit, it is cut out of them"), Lit::absent }, {  28, 6, 22, 24 } },
    { { Kind::text, "_fxMidButton",    "FX_MID_BAND_GROUP_",  "M", N_ ("Keeps the mid band out of the effects: lit, it is cut out of them"), Lit::absent }, {  52, 6, 22, 24 } },
    { { Kind::text, "_fxLowButton",    "FX_LOW_BAND_GROUP_",  "L", N_ ("Keeps the low band out of the effects: lit, it is cut out of them"), Lit::absent }, {  76, 6, 22, 24 } },
    { { Kind::knob, "_fxFilterSlider", "FILTER_",             "", N_ ("Filter: low-pass to the left, high-pass to the right"), Lit::plain, "", true }, { 102, 4, 28, 28 } },
    { { Kind::knob, "_fxDryWetSlider", "FX_DRY_WET_GROUP_",   "", N_ ("Dry/wet balance of the effects") }, { 156, 4, 28, 28 } },
};
// clang-format on

constexpr juce::Point<int> badgePlace { 4, 8 };
const juce::Rectangle<int> filterWord { 130, 4, 26, 28 }, dryWetWord { 185, 4, 26, 28 };
constexpr int firstSlot = 36, slotHeight = 28, margin = 4, gap = 4;
constexpr int onWidth = 32, nameWidth = 92, knobSize = 28, buttonHeight = 24;

/** The parts of a slot's row. */
struct SlotAreas
{
    juce::Rectangle<int> on, name, knob, value;
};

SlotAreas areasOf (size_t slot)
{
    juce::Rectangle<int> row (margin, firstSlot + static_cast<int> (slot) * slotHeight, 208, slotHeight);
    const auto take = [&row] (int width, int height)
    {
        const auto area = row.removeFromLeft (width).withSizeKeepingCentre (width, height);
        row.removeFromLeft (gap);
        return area;
    };
    SlotAreas areas;
    areas.on = take (onWidth, buttonHeight);
    areas.name = take (nameWidth, buttonHeight);
    areas.knob = take (knobSize, knobSize);
    areas.value = row;
    return areas;
}

std::string slotFamily (const char* family, size_t slot)
{
    return std::string (family) + "_" + std::to_string (slot + 1) + "_GROUP_";
}
}

Fx1DeckComponent::Fx1DeckComponent (CPlatterdex& e, int deck) : ControlPanel (e), badge (e, deck)
{
    badge.setTopLeftPosition (badgePlace);
    addAndMakeVisible (badge);
    addControls (table, deck);
    addLabel (tr ("FILT"), filterWord, juce::Justification::centredLeft);
    addLabel (tr ("WET"), dryWetWord, juce::Justification::centredLeft);
    for (size_t slot = 0; slot < slotCount; ++slot)
    {
        const auto areas = areasOf (slot);
        selectors[slot] = CommandTable::numberOf (slotFamily ("EFFECT_SELECT", slot), deck);

        const auto on = slotFamily ("EFFECT_ON", slot);
        addControl ({ Kind::text, "_fxOnButton", on.c_str(), N_ ("ON"), N_ ("Switches the effect on or off"),
                      Lit::deck },
                    deck, areas.on);

        auto& name = own (std::make_unique<MenuButton>());
        names[slot] = &name;
        name.setComponentID ("_fxSelectButton");
        name.setTooltip (tr ("Selects the effect of slot %1", static_cast<int> (slot) + 1));
        name.onFillMenu = [this, slot] (juce::PopupMenu& menu)
        {
            for (int kind = 0; kind < FxType::count; ++kind)
                menu.addItem (kind + 1, FxType::name (kind), true,
                              engine.displayText (selectors[slot]) == FxType::name (kind));
        };
        name.onMenuChoice = [this, slot] (int id) { choose (slot, id - 1); };
        name.setBounds (areas.name);
        markWhenHeld (name, selectors[slot]);

        auto& knob = own (std::make_unique<PXFxSlider> ("_fxParameterSlider"));
        knobs[slot] = &knob;
        knob.setKnob (knobSize, false);
        knob.bindSlot (e, deck, static_cast<int> (slot));
        knob.setBounds (areas.knob);
        markWhenHeld (knob, knob.commandNumber());
    }
}

void Fx1DeckComponent::choose (size_t slot, int kind)
{
    engine.edit (selectors[slot], static_cast<float> (FxType::selectorValue (kind)));
    refresh();
}

void Fx1DeckComponent::pollMoving()
{
    pollControls();
    for (size_t slot = 0; slot < slotCount; ++slot)
    {
        names[slot]->setButtonText (engine.displayText (selectors[slot]));
        if (knobs[slot]->valueText() == shown[slot])
            continue;
        shown[slot] = knobs[slot]->valueText();
        repaint (areasOf (slot).value);
    }
}

void Fx1DeckComponent::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    for (size_t slot = 0; slot < slotCount; ++slot)
    {
        auto area = areasOf (slot).value;
        PanelPaint::label (g, knobs[slot]->parameterName(), area.removeFromTop (area.getHeight() / 2),
                           juce::Justification::centredLeft);
        PanelPaint::value (g, shown[slot], area, juce::Justification::centredLeft);
    }
    g.setColour (palette::edgeDark);
    g.fillRect (getLocalBounds().removeFromBottom (1));
}
