#include "ui/panel/ControlPanel.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "ui/panel/PanelPaint.h"
#include "ui/widgets/ButtonSkin.h"
#include "ui/widgets/PXImageButton.h"
#include "ui/widgets/PXImageLinearSlider.h"
#include "ui/widgets/PXImageRotarySlider.h"
#include "ui/widgets/PXTextButton.h"

namespace
{
constexpr int knobLabelHeight = 12, smallKnob = 28, largeKnob = 40;
constexpr int knobLabelReach = 8; // a knob's word may be wider than the knob

skin::Hue hueOf (ControlRow::Lit lit, int deck)
{
    switch (lit)
    {
    case ControlRow::Lit::deck:
        return deckHue (deck);
    case ControlRow::Lit::selected:
        return skin::Hue::lime;
    case ControlRow::Lit::danger:
        return skin::Hue::red;
    case ControlRow::Lit::plain:
    case ControlRow::Lit::never:
        break;
    }
    return skin::Hue::accent;
}

juce::Rectangle<int> areaOf (const std::array<int, 4>& area, juce::Point<int> place)
{
    return juce::Rectangle<int> (area[0], area[1], area[2], area[3]) + place;
}

std::unique_ptr<PXSlider> makeSlider (const ControlRow& row)
{
    if (row.kind == ControlRow::Kind::knob)
    {
        auto knob = std::make_unique<PXImageRotarySlider> (row.name);
        knob->setKnob (row.area[2] >= largeKnob ? largeKnob : smallKnob, row.centred);
        return knob;
    }
    const auto upright = row.kind == ControlRow::Kind::fader;
    auto fader = std::make_unique<PXImageLinearSlider> (row.name, upright ? juce::Slider::LinearVertical
                                                                          : juce::Slider::LinearHorizontal);
    // A track without ticks fits any length.
    const auto track = std::string_view (row.face).ends_with ("_track")
                           ? PXImageLinearSlider::Track::stretched
                           : PXImageLinearSlider::Track::asItIs;
    fader->setImages (row.face, upright ? "fader_cap" : "crossfader_cap", track);
    return fader;
}
}

ControlPanel::ControlPanel (CPlatterdex& e, Pace pace) : PollingView (pace), engine (e), panelPace (pace) {}

ControlPanel::~ControlPanel() = default;

void ControlPanel::addControls (std::span<const ControlRow> table, int deck, juce::Point<int> place)
{
    for (const auto& row : table)
        addControl (row, deck, place);
}

juce::Component* ControlPanel::addControl (const ControlRow& row, int deck, juce::Point<int> place)
{
    using Kind = ControlRow::Kind;
    const auto number = CommandTable::numberOf (row.command, deck);
    jassert (number != 0);
    if (CommandTable::isUnbuilt (number))
        return nullptr;

    auto area = areaOf (row.area, place);
    auto tip = juce::String (row.tooltip);
    if (tip.isEmpty())
        tip = CommandTable::name (number);

    const auto dress = [&] (auto& control)
    {
        control.setTooltip (tip);
        control.bind (engine, number);
        control.setBounds (area);
        return &control;
    };
    const auto dressButton = [&] (auto& button)
    {
        if (*row.right != 0)
            button.setAlternative (engine, CommandTable::numberOf (row.right, deck));
        return dress (button);
    };

    if (row.kind == Kind::text)
    {
        auto& button = own (std::make_unique<PXTextButton> (row.face));
        button.setComponentID (row.name);
        button.setHue (hueOf (row.lit, deck));
        dressButton (button);
        if (row.lit == ControlRow::Lit::never)
        {
            polled.pop_back();
            button.setToggleState (false, juce::dontSendNotification);
        }
        return &button;
    }
    if (row.kind == Kind::sign)
    {
        auto& button = own (std::make_unique<PXImageButton> (row.name));
        button.setStrip (row.lit == ControlRow::Lit::deck ? skin::deckName (row.face, deck) : row.face);
        return dressButton (button);
    }
    if (row.kind == Kind::knob && *row.face != 0)
        addLabel (row.face, area.removeFromBottom (knobLabelHeight).expanded (knobLabelReach, 0));
    tip << ". Double click to reset.";
    return dress (own (makeSlider (row)));
}

void ControlPanel::addLabel (const juce::String& text, juce::Rectangle<int> area, juce::Justification where)
{
    labels.push_back ({ text, area, where });
}

void ControlPanel::pollControls()
{
    for (auto* widget : polled)
        widget->poll();
}

void ControlPanel::pollCalm()
{
    if (panelPace == Pace::calm)
        pollControls();
}

void ControlPanel::paint (juce::Graphics& g)
{
    for (const auto& label : labels)
        if (g.clipRegionIntersects (label.area))
            PanelPaint::label (g, label.text, label.area, label.justification);
}
