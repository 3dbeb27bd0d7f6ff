#pragma once

#include "support/Pacing.h"
#include "tracks/AdecSharedLibrary.h"
#include "tracks/TrackIngest.h"

#include <functional>

/** The needs of a load besides file and memory. The functions are called on the loading thread. */
struct DecodeJob
{
    Pacing& pacing;
    std::function<bool()> mayGoOn; ///< asked after each piece
    std::function<void (double)>
        begun; ///< called before the first frame is written, with the file's rate in Hz
    std::function<void()> enoughToShow; ///< called once, when half a minute is there
};

/** Decodes a whole file into a track's memory, waveform data on the way, until its end, the end of the memory or until
    the job may not go on. The decoder library is asked first; where it gives no frame, JUCE's readers are. A file that
    gives no frame leaves the target as it is. Any thread that may block.
    @returns true if there was a frame */
bool decodeTrack (const juce::File&, const AdecSharedLibrary&, const TrackTarget&, const DecodeJob&);

/** True if decodeTrack() would find a frame in a file. Decodes no more than the first. Any thread that may block. */
bool hasAudio (const juce::File&, const AdecSharedLibrary&);
