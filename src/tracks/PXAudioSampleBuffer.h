#pragma once

#include <cstddef>
#include <cstdint>

/** A track in memory: 2 channels of signed 16-bit samples, room for 720 seconds at 44.1 kHz.

    The address space is taken at construction; the system commits a page when it is first written, so an unused deck
    costs no memory and the audio thread, which reads only what has been written, never meets an uncommitted page. */
class PXAudioSampleBuffer
{
public:
    static constexpr int32_t maxFrames = 31'752'000;

    PXAudioSampleBuffer();
    ~PXAudioSampleBuffer();
    PXAudioSampleBuffer (const PXAudioSampleBuffer&) = delete;
    PXAudioSampleBuffer& operator= (const PXAudioSampleBuffer&) = delete;

    int16_t* left() noexcept { return samples; }
    int16_t* right() noexcept { return samples + channelStride; }
    const int16_t* left() const noexcept { return samples; }
    const int16_t* right() const noexcept { return samples + channelStride; }

private:
    // Both channels start on a large page's border.
    static constexpr size_t channelStride = 32u << 20;
    static_assert (channelStride >= maxFrames);

    int16_t* samples;
};
