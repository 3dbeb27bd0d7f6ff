#pragma once

#include <juce_core/juce_core.h>

#include <cstdint>

/** The least that a decoder of the same libraries can do: opens the file, decodes its audio stream to the end on one
    thread and drops it; no conversion, no copy.
    @returns frames decoded, 0 if the file can't be */
int64_t plainDecode (const juce::File&);
