#pragma once

#include "analysis/signal/Fft.h"
#include "support/Relaxed.h"
#include "tracks/PXAudioSampleBuffer.h"
#include "tracks/TrackOverview.h"

#include <array>
#include <memory>

/** References to the memory that a loader fills while others read it. */
struct TrackTarget
{
    PXAudioSampleBuffer& samples;
    TrackOverview& overview;
    Published<int32_t>& frames;    ///< frames that are there; what lies below them is complete
    Published<double>& sampleRate; ///< of the file, in Hz
};

/** Writes decoded frames into a track's memory and, on the way, the waveform data that views draw.
    One per load, on its thread. */
class TrackIngest
{
public:
    /** Goes on after the target's frames, at the start of an entry: a load begins with an emptied target. */
    explicit TrackIngest (const TrackTarget&);

    /** Appends frames and publishes them to the audio thread. Frames beyond the memory are dropped.
        @returns frames written */
    int append (const int16_t* left, const int16_t* right, int frames);

private:
    /** The three band colours of one entry, smoothed from entry to entry. */
    struct Colours
    {
        uint8_t low = 0, mid = 0, high = 0;
    };

    void accumulate (const int16_t* left, const int16_t* right, int frames);
    void closeLevel();
    void closeEntry();

    const TrackTarget target;
    int32_t written;

    // The entry that is being filled
    int entryFrames = 0;
    int greatest = 0, smallest = 0;
    std::array<float, framesPerOverviewEntry> mono;

    // The level runs over 511 frames, so it drifts against the entries.
    int levelFrames = 0;
    int64_t levelSum = 0;

    std::unique_ptr<CFFT> fft;
    std::array<float, framesPerOverviewEntry> spectrum;
    Colours colours;
};
