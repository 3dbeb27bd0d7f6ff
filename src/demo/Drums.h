#pragma once

#include "demo/Shot.h"

#include <cstdint>

/** A percussion sound: a sine with a falling pitch, a click, filtered noise and a cluster of inharmonic squares,
    as analogue drum machines make them. Times are in seconds, to 1/e; gains are linear. */
struct DrumPatch
{
    double seconds; ///< length

    double bodyGain, bodyHz, sweepHz, sweepSeconds, bodySeconds;
    double clickGain;

    double noiseGain, noiseLowHz, noiseHighHz, noiseSeconds;
    int bursts; ///< extra attacks 11 ms apart before the noise decays: a clap has 2 to 3

    double metalGain, metalHz, metalSeconds;

    double drive; ///< into the saturation; 1 is clean
};

/** Renders a stroke. The sound starts on its first sample. @param seed   of the noise: strokes with different
    seeds are different hits of the same instrument */
Shot renderDrum (const DrumPatch&, int32_t seed);

/** Stereo noise under a band-pass filter that rises from 250 Hz to 9 kHz and swells, for the bars before a change. */
Shot renderRiser (double seconds, int32_t seed);

/** A stereo crash cymbal, with a sub-bass fall below it that is gone after a second. */
Shot renderCrash (double seconds, int32_t seed);
