#pragma once

#include <juce_core/juce_core.h>

/** The user's library.
    @param userData   the user's application data folder */
inline juce::File libraryFile (
    const juce::File& userData = juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory))
{
    return userData.getChildFile ("SongManager").getChildFile ("px_music_library.sqlite");
}
