#pragma once

#include <juce_core/juce_core.h>

#include <cstdint>
#include <optional>

/** The words of a WAV file about its loop: the chunks "acid" and "smpl". */
struct WavLoopFacts
{
    bool hasAcid = false;
    bool isOneShot = false; ///< a hit, no loop
    uint32_t beats = 0;     ///< 0 if not told
    float tempo = 0.0f;     ///< BPM, 0 if not told

    /** The first loop that goes forward, in frames, the second one past its end; 0, 0 if there is none. */
    uint32_t loopBegin = 0, loopEnd = 0;

    /** Reads RIFF WAVE bytes of any content, the two chunks alone; what is damaged or missing stays as it is above.
        @returns nothing if these are no WAV file. Any thread that may block. */
    static std::optional<WavLoopFacts> read (juce::InputStream&);
};
