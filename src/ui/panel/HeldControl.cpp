#include "ui/panel/HeldControl.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "skin/Palette.h"

#include <map>

namespace
{
using enum ChannelParameter;

struct Family
{
    const char* constant;
    ChannelParameter parameter;
};

constexpr Family families[] {
    { "EQ_LOW_", eqLow },
    { "EQ_MID_", eqMid },
    { "EQ_HIGH_", eqHigh },
    { "FILTER_", filter },
    { "VOLUME_", volumeFactor },
    { "FX_DRY_WET_GROUP_", fxDryWet },
    { "EFFECT_SELECT_1_GROUP_", fxSelect1 },
    { "EFFECT_SELECT_2_GROUP_", fxSelect2 },
    { "EFFECT_SELECT_3_GROUP_", fxSelect3 },
    { "EFFECT_PARAM_1_GROUP_", fxStep1 },
    { "EFFECT_PARAM_2_GROUP_", fxStep2 },
    { "EFFECT_PARAM_3_GROUP_", fxStep3 },
    { "EFFECT_ON_1_GROUP_", fxOn1 },
    { "EFFECT_ON_2_GROUP_", fxOn2 },
    { "EFFECT_ON_3_GROUP_", fxOn3 },
};
}

std::optional<HeldControl> HeldControl::of (int command)
{
    static const auto controls = []
    {
        std::map<int, HeldControl> made;
        for (const auto& family : families)
            for (int deck = 0; deck < deckCount; ++deck)
                made[CommandTable::numberOf (family.constant, deck)] = { deck, family.parameter };
        return made;
    }();
    const auto found = controls.find (command);
    return found != controls.end() ? std::optional (found->second) : std::nullopt;
}

bool HeldControl::isHeld (const CPlatterdex& engine) const noexcept
{
    return engine.smartKnobs.holds (deck, parameter);
}

juce::Rectangle<int> HeldControl::markArea (juce::Rectangle<int> control) noexcept
{
    return control.removeFromTop (markSize).removeFromRight (markSize);
}

void HeldControl::paintMark (juce::Graphics& g, juce::Rectangle<int> control)
{
    const auto dot = markArea (control).toFloat();
    g.setColour (palette::edgeDark);
    g.fillEllipse (dot);
    g.setColour (palette::accent);
    g.fillEllipse (dot.reduced (1.0f));
}
