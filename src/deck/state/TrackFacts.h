#pragma once

#include "support/Relaxed.h"

#include <cstdint>

/** The numbers of a deck's track. Written by its loader, read anywhere. */
struct TrackFacts
{
    Published<double> sampleRate { 44100.0 }; ///< of the file, in Hz
    Published<int32_t> loadedFrames;          ///< frames decoded so far; samples below them are complete
    Relaxed<int32_t> numBeats;                ///< of the beat table
    Relaxed<int8_t> isAnalysed;               ///< the grid is that of the track, even if it is empty
    Relaxed<double> autogain { 1.0 };
    Relaxed<float> peak { 1.0f };  ///< its greatest magnitude, of full scale; 1 until all of it is decoded
    Relaxed<int32_t> statedFrames; ///< that it is said to have, while it is decoded; 0 if nothing is said
    Relaxed<int32_t> key { -1 };   ///< as the similarity library heard it: SoundFacts::key; -1 if unknown

    bool operator== (const TrackFacts&) const noexcept = default;
};
