#include "ui/EditorScale.h"

#include "ui/layout/EditorLayout.h"

#include <algorithm>

EditorScale::EditorScale (const juce::File& setupFolder)
    : file (setupFolder.getChildFile ("interface_size.txt"))
{
    if (const auto kept = file.loadFileAsString().getIntValue(); kept >= least && kept <= most)
        value = kept;
}

void EditorScale::set (int percent)
{
    value = std::clamp (percent, least, most);
    file.replaceWithText (juce::String (value) + "\n");
}

float EditorScale::factorFor (int width, int height) const noexcept
{
    const auto across = static_cast<float> (width), down = static_cast<float> (height);
    const auto largest = std::min (across / EditorLayout::minimumWidth, down / EditorLayout::minimumHeight);
    const auto smallest = std::max (across, down) / EditorLayout::maximum;
    return std::max (0.01f, std::min (std::max (static_cast<float> (value) / 100.0f, smallest), largest));
}
