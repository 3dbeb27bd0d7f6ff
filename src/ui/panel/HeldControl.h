#pragma once

#include "mixer/ChannelParameter.h"

#include <juce_graphics/juce_graphics.h>

#include <optional>

class CPlatterdex;

/** A control of the mixer or the rack whose parameter a SmartKnob can hold. */
struct HeldControl
{
    int deck = 0;
    ChannelParameter parameter = ChannelParameter::volume;

    /** The control of a command; nothing for one that no knob can hold. */
    static std::optional<HeldControl> of (int command);

    /** True while a knob moves it, and a hand has not taken it over. */
    bool isHeld (const CPlatterdex&) const noexcept;

    static constexpr int markSize = 6;

    /** The mark of a held control: a dot in its upper right corner. */
    static juce::Rectangle<int> markArea (juce::Rectangle<int> control) noexcept;
    static void paintMark (juce::Graphics&, juce::Rectangle<int> control);
};
