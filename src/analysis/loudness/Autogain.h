#pragma once

#include "analysis/loudness/LoudnessMeter.h"

#include "support/Pacing.h"
#include "support/Relaxed.h"

#include <cstdint>
#include <optional>

/** From a track's loudness to the linear factor of its channel strip. */
namespace Autogain
{
/** Frames that are taken at a time; the pauses of a whole track come every eighth time. */
inline constexpr int pieceFrames = 4096, framesBetweenPauses = 32768;

/** Added to ReplayGain's 89 dB: club music is mixed with less headroom than its reference leaves. */
inline constexpr double raiseDb = 6.0;

/** The factor for a gain of LoudnessMeter: 10^((gain, at most 24, + 6) / 20). */
double factorFor (double gainDb) noexcept;

/** Measures a whole track in memory, and rests on the way. A worker thread.
    @param rate     of the file, in Hz
    @param cancel   looked at before every piece; anything but 0 stops
    @returns the factor; nothing if cancelled or if there is nothing to measure: the deck then keeps the neutral 1 */
std::optional<double> measure (const int16_t* left, const int16_t* right, int frames, double rate, Pacing&,
                               const Relaxed<int32_t>& cancel);
std::optional<double> measure (const float* left, const float* right, int frames, double rate, Pacing&,
                               const Relaxed<int32_t>& cancel);
}
