#include "ui/EditorScale.h"

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
    return std::max (0.01f, std::min (std::max (static_cast<float> (value) / 100.0f, smallest), largest));
}
