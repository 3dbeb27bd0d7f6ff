#pragma once

#include <juce_core/juce_core.h>

#include <functional>

/** Writes the system's control disc, from its first frame on, as WAV of 16 bits: the same bytes each time. A background
    thread; a full disc takes a second or two and 282 MB.
    @param frames    how many of controlDisc::frameCount
    @param goesOn    told after each second of signal how many frames are done; false ends the file there, whole and shorter
    @returns one sentence if the file can't be written, else nothing */
juce::String writeControlDisc (const juce::File&, int frames,
                               const std::function<bool (int framesDone)>& goesOn);
