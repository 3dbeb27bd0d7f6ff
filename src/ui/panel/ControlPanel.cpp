#include "ui/panel/ControlPanel.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "engine/CommandTitle.h"
#include "support/language/Translate.h"
#include "ui/look/ButtonSkin.h"
#include "ui/panel/PanelPaint.h"
#include "ui/poll/DeckWatch.h"
#include "ui/widgets/PXImageButton.h"
#include "ui/widgets/PXImageLinearSlider.h"
#include "ui/widgets/PXImageRotarySlider.h"
#include "ui/widgets/PXTextButton.h"

namespace
{
constexpr int knobLabelHeight = 12, smallKnob = 28, largeKnob = 40;
constexpr double pitchStep = 0.001, finePitchStep = 0.0002; // of the speed, for a click of the wheel
constexpr int knobLabelReach = 8;                           // a knob's word may be wider than the knob

skin::Hue hueOf (ControlSpec::Lit lit, int deck)
{
    switch (lit)
    {
    case ControlSpec::Lit::deck:
        return deckHue (deck);
    case ControlSpec::Lit::selected:
        return skin::Hue::lime;
    case ControlSpec::Lit::danger:
        return skin::Hue::red;
    case ControlSpec::Lit::notice:
    case ControlSpec::Lit::absent:
        return skin::Hue::accent;
    case ControlSpec::Lit::plain:
    case ControlSpec::Lit::never:
        break;
    }
    return skin::Hue::neutral;
}

std::unique_ptr<PXSlider> makeSlider (const ControlSpec& spec, int width)
{
    if (spec.kind == ControlSpec::Kind::knob)
    {
        auto knob = std::make_unique<PXImageRotarySlider> (spec.name);
        knob->setKnob (width >= largeKnob ? largeKnob : smallKnob, spec.centred);
        return knob;
    }
    const auto upright = spec.kind == ControlSpec::Kind::fader;
    auto fader = std::make_unique<PXImageLinearSlider> (spec.name, upright ? juce::Slider::LinearVertical
                                                                           : juce::Slider::LinearHorizontal);
    // A track without ticks fits any length.
    const auto track = std::string_view (spec.face).ends_with ("_track")
                           ? PXImageLinearSlider::Track::stretched
                           : PXImageLinearSlider::Track::asItIs;
    fader->setImages (spec.face, upright ? "fader_cap" : "crossfader_cap", track);
    return fader;
}
}

ControlPanel::ControlPanel (CPlatterdex& e) : PollingView (Pace::moving), engine (e) {}

ControlPanel::~ControlPanel() = default;

void ControlPanel::addControls (std::span<const PlacedControl> table, int deck, juce::Point<int> place)
{
    for (const auto& [control, area] : table)
        addControl (control, deck, juce::Rectangle<int> (area[0], area[1], area[2], area[3]) + place);
}

juce::Component* ControlPanel::addControl (const ControlSpec& spec, int deck, juce::Rectangle<int> area)
{
    using Kind = ControlSpec::Kind;
    const auto number = CommandTable::numberOf (spec.command, deck);
    jassert (number != 0);
    if (CommandTable::isUnbuilt (number))
        return nullptr;

    const auto tip = *spec.tooltip != 0 ? tr (spec.tooltip) : commandTitle (number);

    const auto dress = [&] (auto& control)
    {
        control.setTooltip (tip);
        control.bind (engine, number);
        control.setBounds (area);
        markWhenHeld (control, number);
        return &control;
    };
    const auto dressButton = [&] (auto& button)
    {
        if (*spec.right != 0)
            button.setAlternative (engine, CommandTable::numberOf (spec.right, deck));
        return dress (button);
    };

    if (spec.kind == Kind::text)
    {
        auto& button = own (std::make_unique<PXTextButton> (tr (spec.face)));
        button.setComponentID (spec.name);
        button.setHue (hueOf (spec.lit, deck));
        if (spec.lit == ControlSpec::Lit::absent)
            button.setLitWhenOff();
        dressButton (button);
        if (spec.lit == ControlSpec::Lit::never)
        {
            polled.pop_back();
            button.setToggleState (false, juce::dontSendNotification);
        }
        return &button;
    }
    if (spec.kind == Kind::sign)
    {
        auto& button = own (std::make_unique<PXImageButton> (spec.name));
        button.setStrip (spec.lit == ControlSpec::Lit::deck ? skin::deckName (spec.face, deck) : spec.face);
        return dressButton (button);
    }
    if (spec.kind == Kind::knob && *spec.face != 0)
        addLabel (tr (spec.face), area.removeFromBottom (knobLabelHeight).expanded (knobLabelReach, 0));
    auto& slider = own (makeSlider (spec, area.getWidth()));
    dress (slider);
    slider.setTooltip (tr ("%1. Double click to reset.", tip));
    if (spec.words == ControlSpec::Words::decibels)
        slider.setWords (ValueWords::decibels());
    else if (spec.words == ControlSpec::Words::semitones)
        slider.setWords (ValueWords::semitones());
    else if (spec.words == ControlSpec::Words::pitch)
    {
        const DeckWatch watch (engine, deck);
        slider.setWords (ValueWords::pitch (watch));
        slider.wheelStepOf = [watch] (bool isFine)
        { return (isFine ? finePitchStep : pitchStep) / std::max (0.01, watch->pitchRange); };
    }
    return &slider;
}

void ControlPanel::addLabel (const juce::String& text, juce::Rectangle<int> area, juce::Justification where)
{
    labels.push_back ({ text, area, where });
}

void ControlPanel::pollControls()
{
    for (auto* widget : polled)
        widget->poll();
    for (auto& each : markables)
        if (const auto isHeld = each.held.isHeld (engine); std::exchange (each.isMarked, isHeld) != isHeld)
            repaint (HeldControl::markArea (each.control->getBounds()));
}

void ControlPanel::markWhenHeld (const juce::Component& control, int command)
{
    if (const auto held = HeldControl::of (command))
        markables.push_back ({ &control, *held });
}

void ControlPanel::paintOverChildren (juce::Graphics& g)
{
    for (const auto& each : markables)
        if (each.isMarked)
            HeldControl::paintMark (g, each.control->getBounds());
}

void ControlPanel::paint (juce::Graphics& g)
{
    for (const auto& label : labels)
        if (g.clipRegionIntersects (label.area))
            PanelPaint::label (g, label.text, label.area, label.justification);
}
