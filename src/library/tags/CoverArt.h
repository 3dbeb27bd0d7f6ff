#pragma once

#include <juce_graphics/juce_graphics.h>

/** The picture in a file's tag: the first "APIC" of an MP3, "covr" of an MP4, picture of a FLAC, "WM/Picture" of a WMA.
    Whatever type the tag states, decodePicture() decides.
    @param largestSide   as decodePicture() takes it
    @returns no image if there is none or it can't be decoded. Any thread but the audio thread; takes some milliseconds, so a
             view asks a CoverArtCache. */
juce::Image readCoverArt (const juce::String& path, int largestSide = 0);
