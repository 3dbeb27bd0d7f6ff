#pragma once

#include "tracks/AdecSharedLibrary.h"

/** One sentence of why a file gives no audio, without its name: it is missing, empty, protected, damaged and so on.
    For a file that was tried in vain. Reads its ends; any thread that may block. */
juce::String faultOfTrack (const juce::File&, const AdecSharedLibrary&);
