#include "AdecLibrary.h"

#include "adec/BuiltDecoder.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{
float toFloat (const uint8_t* at, int32_t format)
{
    const auto as = [&] (auto value)
    {
        std::memcpy (&value, at, sizeof (value));
        return value;
    };
    switch (format)
    {
    case adecSampleU8:
        return (static_cast<float> (*at) - 128.0f) / 128.0f;
    case adecSampleS16:
        return static_cast<float> (as (int16_t {})) / 32768.0f;
    case adecSampleS32:
        return static_cast<float> (as (int32_t {})) / 2147483648.0f;
    case adecSampleFloat:
        return as (float {});
    default:
        return static_cast<float> (as (double {}));
    }
}
}

AdecLibrary::AdecLibrary() : AdecSharedLibrary (juce::File (builtDecoder()))
{
    EXPECT_TRUE (isLoaded());
}

int AdecLibrary::Decoded::frames() const
{
    return hasAudio ? static_cast<int> (samples.size()) / (record.channels * record.bitsPerSample / 8) : 0;
}

std::vector<float> AdecLibrary::Decoded::channel (int index) const
{
    const auto sampleBytes = static_cast<size_t> (record.bitsPerSample / 8);
    const auto channels = static_cast<size_t> (record.channels);
    std::vector<float> values (static_cast<size_t> (frames()));
    for (size_t i = 0; i < values.size(); ++i)
        values[i] = toFloat (samples.data() + (i * channels + static_cast<size_t> (index)) * sampleBytes,
                             record.sampleFormat);
    return values;
}

AdecLibrary::Decoded AdecLibrary::decode (const juce::File& path, int32_t bufferBytes) const
{
    Decoded decoded;
    auto* const file = adec_open_filename (path.getFullPathName().toRawUTF8());
    if (file == nullptr)
        return decoded;
    decoded.isOpen = true;

    auto fileRecord = emptyRecord<AdecFileRecord>();
    EXPECT_EQ (adec_file_info (file, &fileRecord), 0);
    decoded.streamCount = fileRecord.streamCount;

    int32_t chosen = -1;
    for (int32_t i = 0; i < fileRecord.streamCount; ++i)
    {
        auto record = emptyRecord<AdecStreamRecord>();
        if (adec_stream_info (file, i, &record) != 0 || record.type != adecStreamAudio)
            continue;
        decoded.record = record;
        decoded.hasAudio = true;
        chosen = i;
    }

    auto* const stream = adec_open_stream (file, chosen);
    decoded.isDecoding = stream != nullptr;
    if (bufferBytes == 0)
        bufferBytes = adec_get_audio_buffer_size();
    std::vector<uint8_t> buffer (static_cast<size_t> (bufferBytes));

    auto packet = emptyRecord<AdecPacketRecord>();
    while (stream != nullptr && adec_read (file, &packet) == 0)
    {
        EXPECT_EQ (packet.streamIndex, chosen);
        const uint8_t* data = packet.data;
        int32_t left = packet.dataSize;
        EXPECT_GT (left, 0);
        while (left > 0)
        {
            int32_t bytes = bufferBytes;
            const auto used = adec_decode_audio (stream, data, left, buffer.data(), &bytes);
            if (used < 0)
            {
                ++decoded.lostPackets;
                break;
            }
            EXPECT_TRUE (used > 0 || bytes > 0) << "a call that does nothing would be repeated for ever";
            EXPECT_LE (used, left);
            EXPECT_LE (bytes, bufferBytes);
            if (used > left || bytes > bufferBytes || (used == 0 && bytes == 0))
                break;
            decoded.samples.insert (decoded.samples.end(), buffer.begin(), buffer.begin() + bytes);
            data += used;
            left -= used;
        }
    }
    adec_close_stream (stream);
    adec_close_file (file);
    return decoded;
}

juce::File AdecTest::noise (int frames, int channels) const
{
    return EncodedFiles::writeWav (EncodedFiles::makeNoise (channels, frames, 44100), 44100,
                                   folder.file ("source.wav"));
}

juce::File AdecTest::encoded (const juce::String& name, const juce::StringArray& options, int frames,
                              int channels) const
{
    return EncodedFiles::encode (noise (frames, channels), folder.file (name), options);
}
