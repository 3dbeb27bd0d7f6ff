#include "AdecLibrary.h"

#include "adec/BuiltDecoder.h"
#include "tracks/SampleConversion.h"

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
    std::vector<float> left (static_cast<size_t> (frames())), right (left.size());
    convertToFloat (std::as_bytes (std::span (samples)), record.sampleFormat, record.channels, left.data(),
                    right.data());
    return index == 0 ? left : right;
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
