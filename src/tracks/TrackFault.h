#pragma once

#include "tracks/AdecSharedLibrary.h"

#include <functional>

/** One sentence of why a file gives no audio, without its name: it is missing, empty, protected, damaged and so on.
    For a file that was tried in vain. Reads its ends; any thread that may block. */
juce::String faultOfTrack (const juce::File&, const AdecSharedLibrary&);

/** Tells of a file in one sentence why no deck could load it; of one that a deck could load, and without a decoder, nothing.
    Decodes a little; any thread that may block. @param decoderLibrary   where the decoder's shared library lies */
std::function<juce::String (const juce::File&)> importJudge (const juce::File& decoderLibrary);
