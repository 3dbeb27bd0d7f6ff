#include "ui/smartknob/SmartKnobEditorComponent.h"

#include "engine/CPlatterdex.h"
#include "instruments/presets/SmartKnobLibrary.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"
#include "ui/smartknob/SmartKnobMenu.h"
#include "ui/window/ToolWindows.h"

namespace
{
constexpr int columnsWidth = 264;

/** Twenty hues that neighbours in the table tell apart: eight, then lighter and paler ones. */
juce::Colour colourOf (int row)
{
    const auto base = palette::cues[static_cast<size_t> (row) % palette::cues.size()];
    const auto round = row / static_cast<int> (palette::cues.size());
    return round == 0   ? base
           : round == 1 ? base.withMultipliedSaturation (0.5f).brighter (0.4f)
                        : base.darker (0.4f);
}

juce::String percent (double share)
{
    return juce::String (juce::roundToInt (100.0 * share)) + " %";
}

std::function<juce::String (double)> wordsOf (int row)
{
    using enum SmartKnobRow;
    switch (static_cast<SmartKnobRow> (row))
    {
    case fx1Select:
    case fx2Select:
    case fx3Select:
        return [] (double level)
        {
            return juce::String (
                FxType::name (juce::jlimit (0, FxType::count - 1, static_cast<int> (level * FxType::count))));
        };
    case fx1On:
    case fx2On:
    case fx3On:
        return [] (double level) { return juce::String (level > 0.5 ? tr ("ON") : tr ("OFF")); };
    case pluginOn:
        return [] (double level) { return juce::String (level < 0.5 ? tr ("ON") : tr ("OFF")); };
    default:
        return percent;
    }
}

EnvLanes lanesOf (CPlatterdex& engine, int deck, int knob)
{
    EnvLanes lanes;
    for (int row = 0; row < SmartKnobRows::count; ++row)
        lanes.push_back ({ &engine.smartKnobs.bank (deck, knob), row,
                           juce::String (std::string (SmartKnobRows::row (row).name)), colourOf (row),
                           wordsOf (row) });
    return lanes;
}

CurveEditorPane::Files filesOf (CPlatterdex& engine, int deck, int knob)
{
    return { SmartKnobMenu::files (engine),
             [&engine, deck, knob] { return SmartKnobMenu::nameOf (engine, deck, knob); },
             [&engine, deck, knob] (const juce::File& file) {
                 return SmartKnobLibrary::loadFile (engine.smartKnobs, deck, knob, file,
                                                    SmartKnobRows::count);
             },
             [&engine, deck, knob] (const juce::File& file)
             { return SmartKnobLibrary::saveFile (engine.smartKnobs, deck, knob, file); } };
}
}

SmartKnobEditorComponent::SmartKnobEditorComponent (CPlatterdex& engine, int deck, int knob)
    : CurveEditorPane (lanesOf (engine, deck, knob), filesOf (engine, deck, knob),
                       engine.environment.prompts.get(), columnsWidth)
{
    setName (title (deck, knob));
    curves().playColour = palette::decks[static_cast<size_t> (deck)];
    curves().playTime = [&engine, deck, knob]
    { return std::optional (4.0 * engine.smartKnobs.value (deck, knob)); };
    curves().timeWords = [] (double time) { return percent (0.25 * time); };
    setSize (width, height);
}

juce::String SmartKnobEditorComponent::title (int deck, int knob)
{
    return tr ("Deck %1 SmartKnob #%2 Editor", PanelPaint::letterOf (deck), knob + 1);
}

void SmartKnobEditorComponent::open (CPlatterdex& engine, int deck, int knob, juce::Component& opener)
{
    if (auto* windows = ToolWindows::of (opener))
        windows->open (title (deck, knob), opener,
                       [&engine, deck, knob] (std::function<void()> close)
                       {
                           auto made = std::make_unique<SmartKnobEditorComponent> (engine, deck, knob);
                           made->onClose = std::move (close);
                           return made;
                       });
}
