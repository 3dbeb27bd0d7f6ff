#pragma once

#include "support/Relaxed.h"
#include "tracks/PXAudioSampleBuffer.h"

#include <array>
#include <cstdint>

/** Frames per entry of the waveform data. */
inline constexpr int framesPerOverviewEntry = 512;

/** The waveform data of a track: one entry per 512 frames, written by its loader while views read it.
    A view may see an entry half done; it draws it again later. */
struct TrackOverview
{
    static constexpr int32_t entries = 62'016;
    static_assert (entries * framesPerOverviewEntry >= PXAudioSampleBuffer::maxFrames);

    template <typename T>
    using Array = std::array<Relaxed<T>, entries>;

    Array<int8_t> overviewMax {};    ///< greatest sample of the entry, shifted right by 10 bits: -32 to 31
    Array<int8_t> overviewMin {};    ///< smallest, on the same scale
    Array<uint8_t> overviewLevel {}; ///< root of the mean square, on the same scale
    Array<uint8_t> overviewLow {};   ///< red: the low band
    Array<uint8_t> overviewMid {};   ///< green: the mid band
    Array<uint8_t> overviewHigh {};  ///< blue: the high band
    Relaxed<float> peak;             ///< the greatest magnitude so far, 0 to 1 for full scale

    void clear() noexcept
    {
        peak = 0.0f;
        for (int32_t i = 0; i < entries; ++i)
        {
            const auto entry = static_cast<size_t> (i);
            overviewMax[entry] = overviewMin[entry] = 0;
            overviewLevel[entry] = overviewLow[entry] = overviewMid[entry] = overviewHigh[entry] = 0;
        }
    }
};
