#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>
#include <span>

/** Decodes a picture that a stranger has made: PNG or JPEG, by its bytes.

    The codecs are called directly: JUCE's readers go on after a fault in the file, and crash.
    @param largestSide   pixels of the longer side, to which a larger picture is scaled while it is decoded; 0 for none
    @returns no image for a damaged PNG, for more than 40 million pixels, and for all else. Any thread but the audio
             thread. */
juce::Image decodePicture (std::span<const uint8_t>, int largestSide = 0);
