#include "ui/slicegate/SlicegateEditorComponent.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"
#include "ui/slicegate/PadMenu.h"
#include "ui/window/ToolWindows.h"

namespace
{
constexpr int columnsWidth = 208;
constexpr double windowBeats = 4.0, reachBeats = 8.0;

/** The place of the reading, in beats from where the deck would be. */
juce::String beatsBack (double level)
{
    return juce::String ((level - 1.0) * reachBeats, 2) + " b";
}

EnvLanes lanesOf (SlicegateDeckState& state, int pad)
{
    return { { &state.timeCurves(), pad, tr ("Time"), palette::padTime, beatsBack },
             { &state.volumeCurves(), pad, tr ("Volume"), palette::padVolume,
               [] (double level) { return juce::String (juce::roundToInt (100.0 * level)) + " %"; } } };
}

CurveEditorPane::Files filesOf (CPlatterdex& engine, int deck, int pad)
{
    auto& state = engine.slicegates[static_cast<size_t> (deck)];
    return { PadMenu::files (engine), [&engine, deck, pad] { return PadMenu::nameOf (engine, deck, pad); },
             [&state, pad] (const juce::File& file) { return state.importPreset (file, pad); },
             [&state, pad] (const juce::File& file) { return state.exportPreset (file, pad); } };
}
}

SlicegateEditorComponent::SlicegateEditorComponent (CPlatterdex& engine, int deck, int pad)
    : CurveEditorPane (lanesOf (engine.slicegates[static_cast<size_t> (deck)], pad),
                       filesOf (engine, deck, pad), engine.environment.prompts.get(), columnsWidth)
{
    setName (title (deck, pad));
    auto& state = engine.slicegates[static_cast<size_t> (deck)];
    curves().playColour = palette::decks[static_cast<size_t> (deck)];
    curves().playTime = [&state, pad]
    {
        return state.padState (pad) == PadState::running
                   ? std::optional (windowBeats * state.padProgress (pad))
                   : std::nullopt;
    };
    setSize (width, height);
}

juce::String SlicegateEditorComponent::title (int deck, int pad)
{
    return tr ("Slicegate Editor for pad %1.%2", PanelPaint::letterOf (deck), pad + 1);
}

void SlicegateEditorComponent::open (CPlatterdex& engine, int deck, int pad, juce::Component& opener)
{
    if (auto* windows = ToolWindows::of (opener))
        windows->open (title (deck, pad), opener,
                       [&engine, deck, pad] (std::function<void()> close)
                       {
                           auto made = std::make_unique<SlicegateEditorComponent> (engine, deck, pad);
                           made->onClose = std::move (close);
                           return made;
                       });
}
