#pragma once

#include "settings/SettingsText.h"

/** The folder that a text of the settings names, or another one while there is no such folder. */
inline juce::File folderOf (const SettingsText& text, const juce::File& otherwise)
{
    const auto path = text.get();
    return juce::File::isAbsolutePath (path) && juce::File (path).isDirectory() ? juce::File (path)
                                                                                : otherwise;
}
