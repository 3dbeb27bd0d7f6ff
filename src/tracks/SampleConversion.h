#pragma once

#include <cstdint>
#include <span>

/** The sample formats that the decoder gives. */
enum class SampleFormat
{
    unsigned8 = 0,
    signed16 = 1,
    signed32 = 2,
    float32 = 3,
    float64 = 4
};

/** Bytes of one sample; 0 for a number that is no format. */
int bytesPerSample (int format) noexcept;

/** Converts interleaved samples to a stereo pair of 16 bits: 8-bit values are centred and widened, of 32-bit ones the
    upper 16 bits are taken, floating-point ones are multiplied by 32767, limited and rounded to the nearest; NaN is 0.
    Mono goes to both sides.
    @param format     one of SampleFormat
    @param channels   1 or 2
    @param left, right   room for data.size() / (bytes per sample * channels) frames
    @returns frames written; 0 for another format or channel count */
int convertTo16Bit (std::span<const std::byte> data, int format, int channels, int16_t* left,
                    int16_t* right) noexcept;

/** The same to floats, full scale 1: integers are divided by their greatest magnitude, floats stay what they are. */
int convertToFloat (std::span<const std::byte> data, int format, int channels, float* left,
                    float* right) noexcept;
