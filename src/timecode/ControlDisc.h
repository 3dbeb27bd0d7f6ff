#pragma once

#include "timecode/ControlMedium.h"

#include <array>

/** The system's own control disc: 44,100 Hz, a carrier of 48 samples in quadrature, six slots of 8 samples in each
    cycle, six cycles in a frame that carries its 20-bit number. */
namespace controlDisc
{
constexpr int samplesPerCycle = 48;
constexpr int cyclesPerFrame = 6;
constexpr int samplesPerFrame = samplesPerCycle * cyclesPerFrame;
constexpr int sampleRate = 44100;
constexpr int frameCount = 244800;
constexpr double carrierHz = static_cast<double> (sampleRate) / samplesPerCycle;

/** Six slots of a cycle of a frame, slot 0 in bit 5: all ones in cycle 0, then the number's nibbles, the highest
    first, between a 0 and a bit that makes the sum of the five odd. */
constexpr unsigned symbolAt (unsigned frameNumber, int cycle) noexcept
{
    if (cycle == 0)
        return 0x3f;
    const auto nibble = frameNumber >> (20 - 4 * cycle) & 15;
    const auto odd = (nibble ^ nibble >> 1 ^ nibble >> 2 ^ nibble >> 3) & 1;
    return nibble << 1 | (odd ^ 1);
}

/** Fills one frame of the signal.
    @param frameNumber  20 bits
    @returns the samples written to each channel: 288 */
int generateFrame (unsigned frameNumber, float* left, float* right) noexcept;
} // namespace controlDisc

/** Symbols of the disc, six bits a cycle, slot 0 in bit 0. */
class ControlDiscCode final : public GrooveCode
{
public:
    PX_AUDIO_THREAD int bitsPerCycle() const noexcept override { return 6; }
    PX_AUDIO_THREAD unsigned bitsAt (std::int64_t cycle) const noexcept override;
    PX_AUDIO_THREAD int cyclesToLocate() const noexcept override { return 6; }
    PX_AUDIO_THREAD int cyclesToBelieve() const noexcept override { return 6; }
    PX_AUDIO_THREAD std::optional<std::int64_t>
    locate (std::span<const unsigned> cycles) const noexcept override;
    PX_AUDIO_THREAD std::int64_t length() const noexcept override;
};
