#include "ui/EditorScale.h"

#include "skin/SkinTable.h"
#include "ui/layout/EditorLayout.h"

#include <algorithm>

namespace
{
constexpr const char* name = "interface size";
}

EditorScale::EditorScale (PreferencesFile& p) : preferences (p)
{
    if (const auto kept = preferences.get (name).getIntValue(); kept >= least && kept <= most)
        value = kept;
}

void EditorScale::set (int percent)
{
    value = std::clamp (percent, least, most);
    preferences.set (name, juce::String (value));
}

float EditorScale::factorFor (int width, int height) const noexcept
{
    const auto across = static_cast<float> (width), down = static_cast<float> (height);
    const auto largest = std::min (across / EditorLayout::minimumWidth, down / EditorLayout::minimumHeight);
    const auto smallest = std::max (across, down) / EditorLayout::maximum;
    const auto wanted = static_cast<float> (value) / 100.0f;
    const auto nearest = std::max (0.01f, std::min (std::max (wanted, smallest), largest));
    if (nearest == wanted)
        return wanted;
    // Sharp pictures rather than the last pixel of room: up for a window that is too large, else down.
    auto sharp = nearest;
    for (const auto scale : skin::scales)
        if (scale >= smallest && scale <= largest
            && (smallest > wanted ? sharp == nearest : scale <= nearest))
            sharp = scale;
    return sharp;
}
