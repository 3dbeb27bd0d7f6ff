#pragma once

#include <juce_core/juce_core.h>

/** A file system's facts of a path. Every member is 0 or empty where it doesn't know. May block. */
struct FileFacts
{
    /** True if there is something and it is no folder. */
    bool present = false;

    int64_t bytes = 0;

    /** Seconds since 1970. Where no time of creation is kept, that of the last modification. */
    int64_t created = 0, modified = 0;

    /** True on a removable, optical, network or memory volume. */
    bool removable = false;

    juce::String volumeLabel;

    /** Only whether it is there. */
    static bool isPresent (const juce::String& path);
    static FileFacts of (const juce::String& path);
};
