#pragma once

#include <juce_core/juce_core.h>

/** The one list of audio files that the system takes. */
namespace AudioFileTypes
{
inline constexpr const char* wildcard = "*.mp3;*.m4a;*.wav;*.aif;*.aiff;*.wma;*.flac;*.ogg;";

/** Begins the names of the copies in which tags are written; a killed program leaves one behind. */
inline constexpr const char* workingCopyPrefix = ".platterdex-";

/** Begins the names of files in which some systems keep the attributes of a file with the rest of the name. */
inline constexpr const char* attributesPrefix = "._";

/** True if the name ends in one of the extensions, whatever its case, and begins with none of the prefixes above. Says nothing of
    the content. */
inline bool matches (const juce::File& file)
{
    const auto name = file.getFileName();
    return !name.startsWith (attributesPrefix) && !name.startsWith (workingCopyPrefix)
           && juce::WildcardFileFilter (wildcard, {}, {}).isFileSuitable (file);
}
}
