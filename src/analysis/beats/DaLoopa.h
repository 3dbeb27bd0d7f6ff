#pragma once

#include <span>

/** The tempo of a short clip, by correlation of its onset functions in three bands, of frames of 2048 every 256. */
class CDaLoopa
{
public:
    /** Clips shorter than this have no tempo. */
    static constexpr int leastFrames = 4096;

    /** @param sampleRate   11025 Hz or more
        @returns BPM of 55 to 180; 0 for a clip without rhythm */
    static double tempoOf (std::span<const float> mono, int sampleRate);
};
