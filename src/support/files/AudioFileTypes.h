#pragma once

#include <juce_core/juce_core.h>

/** The one list of audio files that the system takes. */
namespace AudioFileTypes
{
inline constexpr const char* wildcard = "*.mp3;*.m4a;*.wav;*.aif;*.aiff;*.wma;*.flac;*.ogg;";

/** True if the name ends in one of the extensions, whatever its case. Says nothing of the content. */
inline bool matches (const juce::File& file)
{
    return juce::WildcardFileFilter (wildcard, {}, {}).isFileSuitable (file);
}
}
