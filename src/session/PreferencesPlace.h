#pragma once

#include "settings/Folders.h"

/** The file of the preferences that are no settings of the engine. */
inline juce::File preferencesFileOf (const Folders& folders)
{
    return folders.setup().getChildFile ("preferences.txt");
}
