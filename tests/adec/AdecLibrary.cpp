#include "AdecLibrary.h"

#include "adec/BuiltDecoder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>

namespace
{
template <typename Function>
void look (const AdecLibrary& library, const char* name, Function& function)
{
    function = reinterpret_cast<Function> (library.find (name));
    EXPECT_NE (function, nullptr) << name;
}

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

AdecLibrary::AdecLibrary() : handle (dlopen (builtDecoder(), RTLD_NOW | RTLD_LOCAL))
{
    EXPECT_NE (handle, nullptr) << dlerror();
    look (*this, "adec_get_version", getVersion);
    look (*this, "adec_get_ffmpeg_revision", getFfmpegRevision);
    look (*this, "adec_get_audio_buffer_size", getAudioBufferSize);
    look (*this, "adec_init", init);
    look (*this, "adec_open_filename", openFilename);
    look (*this, "adec_close_file", closeFile);
    look (*this, "adec_file_info", fileInfo);
    look (*this, "adec_stream_info", streamInfo);
    look (*this, "adec_open_stream", openStream);
    look (*this, "adec_close_stream", closeStream);
    look (*this, "adec_read", read);
    look (*this, "adec_decode_audio", decodeAudio);
    look (*this, "av_malloc", avMalloc);
    look (*this, "av_mallocz", avMallocz);
    look (*this, "av_free", avFree);
    look (*this, "av_freep", avFreep);
    look (*this, "av_fast_realloc", avFastRealloc);
    init();
}

AdecLibrary::~AdecLibrary()
{
    dlclose (handle);
}

void* AdecLibrary::find (const char* name) const
{
    return handle != nullptr ? dlsym (handle, name) : nullptr;
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
    auto* const file = openFilename (path.getFullPathName().toRawUTF8());
    if (file == nullptr)
        return decoded;
    decoded.isOpen = true;

    auto fileRecord = emptyRecord<AdecFileRecord>();
    EXPECT_EQ (fileInfo (file, &fileRecord), 0);
    decoded.streamCount = fileRecord.streamCount;

    int32_t chosen = -1;
    for (int32_t i = 0; i < fileRecord.streamCount; ++i)
    {
        auto record = emptyRecord<AdecStreamRecord>();
        if (streamInfo (file, i, &record) != 0 || record.type != adecStreamAudio)
            continue;
        decoded.record = record;
        decoded.hasAudio = true;
        chosen = i;
    }

    auto* const stream = openStream (file, chosen);
    decoded.isDecoding = stream != nullptr;
    if (bufferBytes == 0)
        bufferBytes = getAudioBufferSize();
    std::vector<uint8_t> buffer (static_cast<size_t> (bufferBytes));

    auto packet = emptyRecord<AdecPacketRecord>();
    while (stream != nullptr && read (file, &packet) == 0)
    {
        EXPECT_EQ (packet.streamIndex, chosen);
        const uint8_t* data = packet.data;
        int32_t left = packet.dataSize;
        EXPECT_GT (left, 0);
        while (left > 0)
        {
            int32_t bytes = bufferBytes;
            const auto used = decodeAudio (stream, data, left, buffer.data(), &bytes);
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
    closeStream (stream);
    closeFile (file);
    return decoded;
}
