#pragma once

#include <juce_core/juce_core.h>

/** Gives a file new content in one step: the bytes are written beside it, brought to the disk and renamed over it, so that
    a full disk, the end of the process or a power cut leaves the old file or the new one and nothing in between. Makes
    no folder. Any thread but the audio thread.
    @returns false if that failed, which leaves the old file as it was */
bool replaceFile (const juce::File& target, const void* bytes, size_t size);
