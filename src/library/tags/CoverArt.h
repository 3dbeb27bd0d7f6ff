#pragma once

#include <juce_graphics/juce_graphics.h>

/** The picture in a file's tag: the first "APIC" of an MP3, "covr" of an MP4, picture of a FLAC, "WM/Picture" of a WMA.
    It is found out by its bytes, whatever type the tag states.
    @returns no image if there is none, it can't be decoded, or it has more than 64 million pixels. Any thread but the audio
             thread. */
juce::Image readCoverArt (const juce::String& path);
