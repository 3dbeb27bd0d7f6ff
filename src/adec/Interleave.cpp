#include "adec/Interleave.h"

#include "adec/AvPointers.h"

#include <cstring>

namespace adec
{
namespace
{
template <typename Sample>
void weave (const AVFrame& decoded, int first, int count, uint8_t* target)
{
    auto* __restrict out = reinterpret_cast<Sample*> (target);
    const auto channels = decoded.ch_layout.nb_channels;
    const auto plane = [&] (int channel)
    { return reinterpret_cast<const Sample*> (decoded.extended_data[channel]) + first; };

    if (channels == 2)
    {
        const auto* __restrict left = plane (0);
        const auto* __restrict right = plane (1);
        for (int i = 0; i < count; ++i)
        {
            out[2 * i] = left[i];
            out[2 * i + 1] = right[i];
        }
        return;
    }

    for (int channel = 0; channel < channels; ++channel)
    {
        const auto* in = plane (channel);
        for (int i = 0; i < count; ++i)
            out[i * channels + channel] = in[i];
    }
}
}

void interleave (const AVFrame& decoded, int first, int count, uint8_t* target)
{
    const auto format = static_cast<AVSampleFormat> (decoded.format);
    const auto sampleBytes = av_get_bytes_per_sample (format);
    const auto channels = decoded.ch_layout.nb_channels;

    if (!av_sample_fmt_is_planar (format) || channels == 1)
    {
        const auto frameBytes = static_cast<size_t> (sampleBytes) * static_cast<size_t> (channels);
        std::memcpy (target, decoded.extended_data[0] + static_cast<size_t> (first) * frameBytes,
                     static_cast<size_t> (count) * frameBytes);
        return;
    }

    switch (sampleBytes)
    {
    case 1:
        return weave<uint8_t> (decoded, first, count, target);
    case 2:
        return weave<uint16_t> (decoded, first, count, target);
    case 4:
        return weave<uint32_t> (decoded, first, count, target);
    default:
        return weave<uint64_t> (decoded, first, count, target);
    }
}
}
