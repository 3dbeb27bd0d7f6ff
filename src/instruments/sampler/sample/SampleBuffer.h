#pragma once

#include <cstdint>

/** The memory of one sample: 2 channels of floats, full scale 1, room for 1,440,000 frames (32 s at 44.1 kHz).

    The address space is taken at construction; the system commits a page when it is first written, so an empty pad costs no
    memory. Written by the import thread alone, while the slot that owns it states no frames. */
class SampleBuffer
{
public:
    static constexpr int32_t capacity = 1'440'000;

    SampleBuffer();
    ~SampleBuffer();
    SampleBuffer (const SampleBuffer&) = delete;
    SampleBuffer& operator= (const SampleBuffer&) = delete;

    float* left() noexcept { return samples; }
    float* right() noexcept { return samples + channelStride; }
    const float* left() const noexcept { return samples; }
    const float* right() const noexcept { return samples + channelStride; }

    /** Gives the memory back to the system; both channels read as silence. Import thread. */
    void release() noexcept;

private:
    static constexpr int32_t channelStride = 1'441'792; // both channels start on a page's border
    static_assert (channelStride >= capacity);

    float* samples;
};
