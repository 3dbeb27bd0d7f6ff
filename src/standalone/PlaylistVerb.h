#pragma once

#include <juce_core/juce_core.h>

/** The verb "playlist": makes, fills, renames, deletes and shows playlists. */
int runPlaylist (const juce::StringArray& arguments);
