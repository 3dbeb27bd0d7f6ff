#pragma once

#include "demo/DemoTracks.h"

#include <functional>

/** Outcome of writing the demo tracks. */
struct DemoFilesWritten
{
    int written = 0;    ///< files that were not there before
    juce::String error; ///< one sentence for the user, or empty
};

/** Writes every demo track that is missing into a folder, as 16-bit FLAC under its `fileName`.

    A file of that name that is there already stays as it is, whatever it holds. Each track is written beside its
    place under a name that no library import takes, and moved when it is whole. The first failure ends the work;
    what was written before it stays.
    @param folder       made if it is missing
    @param shouldStop   asked before each track, may be empty
    Takes about half a second a track; any thread but the audio thread. */
DemoFilesWritten writeDemoTracks (const juce::File& folder, const std::function<bool()>& shouldStop = {});

/** One track as a FLAC file in memory, 16 bit with triangular dither, the same bytes each time.
    @returns an empty block when the encoder fails */
juce::MemoryBlock encodeDemoTrack (const juce::AudioBuffer<float>&);
