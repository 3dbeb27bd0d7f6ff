#pragma once

#include "demo/Shot.h"

#include <cstdint>

/** A pitched sound: detuned saws, a square, a sine an octave below and a two-operator FM pair, through a resonant
    24 dB low-pass filter with an envelope of its own. Times are in seconds; gains are linear. */
struct TonePatch
{
    int saws; ///< 0 to 7, spread evenly over the detuning
    double sawGain, detuneCents;
    double squareGain, subGain;
    double fmGain, fmRatio, fmIndex, fmSeconds; ///< the modulator's depth falls to 1/e in fmSeconds

    double cutoffHz, envelopeOctaves, filterSeconds, resonance,
        keyTrack; ///< keyTrack 0 to 1, around middle C

    double attack, decay, sustain, release; ///< decay and release to 1/e
    double width;                           ///< 0 mono, 1 wide: the channels have oscillators of their own
    double drive;                           ///< after the filter; 1 is clean
};

/** Renders a note.
    @param gateFrames   until the release starts
    @param seed         of the oscillators' starting phases */
Shot renderTone (const TonePatch&, int note, int gateFrames, int32_t seed);
