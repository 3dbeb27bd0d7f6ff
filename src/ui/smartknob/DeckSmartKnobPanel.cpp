#include "ui/smartknob/DeckSmartKnobPanel.h"

#include "engine/CPlatterdex.h"
#include "support/language/Translate.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/look/ShortText.h"
#include "ui/smartknob/SmartKnobEditorComponent.h"
#include "ui/widgets/PXImageRotarySlider.h"

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;

constexpr int margin = 4, height = 83, knobSize = 40, buttonWidth = 44, buttonHeight = 24;
const juce::Rectangle<int> nameArea { margin, 0, 92, 20 }, knobArea { 6, 28, knobSize, knobSize },
    onArea { 52, 24, buttonWidth, buttonHeight }, editArea { 52, 52, buttonWidth, buttonHeight };
}

DeckSmartKnobPanel::DeckSmartKnobPanel (CPlatterdex& e, int d)
    : ControlPanel (e),
      deck (d),
      menus { SmartKnobMenu (e, d, 0), SmartKnobMenu (e, d, 1) }
{
    for (size_t knob = 0; knob < knobs; ++knob)
    {
        const auto number = std::to_string (knob + 1);
        const juce::Point<int> place (0, static_cast<int> (knob) * height);
        const auto value = "SMARTKNOB_" + number + "_", on = "SMARTKNOB_" + number + "_ON_";
        const auto tip = tr ("SmartKnob %1: moves all the parameters of its preset", number);
        sliders[knob] = dynamic_cast<PXImageRotarySlider*> (addControl (
            { Kind::knob, "_smartKnobSlider", value.c_str(), "", tip.toRawUTF8() }, deck, knobArea + place));
        addControl ({ Kind::text, "_smartKnobOnButton", on.c_str(), N_ ("ON"),
                      N_ ("Switches the knob on; off again, it puts everything back as it was"), Lit::deck },
                    deck, onArea + place);

        auto& edit = own (std::make_unique<PXTextButton> (tr ("EDIT")));
        edit.setComponentID ("_smartKnobEditButton");
        edit.setTooltip (tr ("Opens the editor of the knob's curves"));
        edit.onClick = [this, knob]
        { SmartKnobEditorComponent::open (engine, deck, static_cast<int> (knob), *this); };
        edit.setBounds (editArea + place);

        auto& name = own (std::make_unique<MenuButton>());
        names[knob] = &name;
        name.setComponentID ("_smartKnobPresetButton");
        name.onFillMenu = [this, knob] (juce::PopupMenu& menu) { menus[knob].fill (menu); };
        name.onMenuChoice = [this, knob] (int id)
        {
            menus[knob].choose (id, *this);
            refresh();
        };
        name.setBounds (nameArea + place);
    }
    pollCalm();
}

void DeckSmartKnobPanel::pollMoving()
{
    pollControls();
    for (size_t knob = 0; knob < knobs; ++knob)
    {
        const auto isOn = engine.smartKnobs.isOn (deck, static_cast<int> (knob));
        if (sliders[knob] != nullptr && std::exchange (lit[knob], isOn) != isOn)
            sliders[knob]->setKnob (knobSize, false, isOn ? deck : -1);
    }
}

void DeckSmartKnobPanel::pollCalm()
{
    for (size_t knob = 0; knob < knobs; ++knob)
    {
        const auto full = SmartKnobMenu::nameOf (engine, deck, static_cast<int> (knob));
        names[knob]->setTooltip (tr ("SmartKnob preset: %1. Opens presets, files and the editor", full));
        if (std::exchange (shownNames[knob], full) != full)
            names[knob]->setButtonText (shortText (full, SMLookAndFeel::buttonFont (nameArea.getHeight()),
                                                   names[knob]->textArea().getWidth()));
    }
}
