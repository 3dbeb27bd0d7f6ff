#include "ui/look/ButtonSkin.h"

#include "skin/Palette.h"

#include <algorithm>
#include <array>

namespace
{
constexpr std::array heights { 32, 24, 20 };
}

skin::Hue deckHue (int deck) noexcept
{
    return static_cast<skin::Hue> (static_cast<int> (skin::Hue::deckA) + juce::jlimit (0, 3, deck));
}

SkinPicture buttonPicture (int height, skin::Hue hue)
{
    const auto* fitting = std::find_if (heights.begin(), heights.end(), [=] (int h) { return h <= height; });
    auto name = "button_" + std::to_string (fitting == heights.end() ? heights.back() : *fitting);
    if (hue != skin::Hue::neutral)
        name += skin::hueSuffixes[static_cast<size_t> (hue)];
    return name;
}

int buttonFrame (bool isOn, bool over, bool down, bool enabled) noexcept
{
    const auto set = isOn ? skin::normalOn : skin::normalOff;
    return !enabled ? set : set + (down ? 2 : (over ? 1 : 0));
}

int knobFrame (double proportion, int frames) noexcept
{
    return static_cast<int> (juce::jlimit (0.0, 1.0, proportion) * juce::jmax (0, frames - 1) + 0.5);
}

juce::Colour textOfDisabled (bool isLit) noexcept
{
    return isLit ? juce::Colours::white : palette::disabledText;
}
