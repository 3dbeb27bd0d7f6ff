#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>
#include <span>

/** Decodes a picture that a stranger has made: PNG or JPEG, by its bytes.

    The codecs are called directly: the toolkit's readers go on after a fault in the file, and crash.
    @returns no image for a damaged PNG, for more than 40 million pixels, and for all else. Any thread but the audio
             thread. */
juce::Image decodePicture (std::span<const uint8_t>);
