#include "adec/adec.h"

#include "adec/AdecStream.h"

#define PX_ADEC_EXPORT extern "C" __attribute__ ((visibility ("default")))

namespace
{
constexpr int32_t version = 1 << 16;

/** Holds the largest block of the lossless formats, 65535 frames, with four channels of 32 bits. */
constexpr int32_t audioBufferBytes = 1 << 20;

template <typename Record>
bool isFillable (const Record* record)
{
    return record != nullptr && record->recordSize >= static_cast<int32_t> (sizeof (Record));
}

/** Starts a record over, with the caller's size kept. */
template <typename Record>
void clear (Record& record)
{
    const auto size = record.recordSize;
    record = {};
    record.recordSize = size;
}

int32_t typeOf (const AVStream& stream)
{
    switch (stream.codecpar->codec_type)
    {
    case AVMEDIA_TYPE_AUDIO:
        return adecStreamAudio;
    case AVMEDIA_TYPE_VIDEO:
        return adecStreamVideo;
    case AVMEDIA_TYPE_UNKNOWN:
        return adecStreamUnknown;
    default:
        return adecStreamOther;
    }
}
}

PX_ADEC_EXPORT int32_t adec_get_version()
{
    return version;
}

PX_ADEC_EXPORT int32_t adec_get_ffmpeg_revision()
{
    return static_cast<int32_t> (avcodec_version());
}

PX_ADEC_EXPORT int32_t adec_get_audio_buffer_size()
{
    return audioBufferBytes;
}

PX_ADEC_EXPORT void adec_init()
{
    av_log_set_level (AV_LOG_QUIET);
}

PX_ADEC_EXPORT AdecFile* adec_open_filename (const char* utf8Path)
try
{
    return AdecFile::open (utf8Path).release();
}
catch (...)
{
    return nullptr;
}

PX_ADEC_EXPORT void adec_close_file (AdecFile* file)
{
    delete file;
}

PX_ADEC_EXPORT int32_t adec_file_info (AdecFile* file, AdecFileRecord* record)
{
    if (file == nullptr || !isFillable (record))
        return -1;
    clear (*record);
    record->streamCount = file->streamCount();
    return 0;
}

PX_ADEC_EXPORT int32_t adec_stream_info (AdecFile* file, int32_t index, AdecStreamRecord* record)
{
    if (file == nullptr || !isFillable (record))
        return -1;
    const auto* const stream = file->stream (index);
    if (stream == nullptr)
        return -1;

    const bool isAudio = typeOf (*stream) == adecStreamAudio;
    if (isAudio && !AdecFile::isDecodable (*stream))
        return -1;
    clear (*record);
    record->type = typeOf (*stream);
    if (!isAudio)
        return 0;

    const auto& parameters = *stream->codecpar;
    const auto format = av_get_packed_sample_fmt (static_cast<AVSampleFormat> (parameters.format));
    record->sampleFormat = format;
    record->sampleRate = static_cast<uint32_t> (parameters.sample_rate);
    record->bitsPerSample = 8 * av_get_bytes_per_sample (format);
    record->channels = parameters.ch_layout.nb_channels;
    return 0;
}

PX_ADEC_EXPORT AdecStream* adec_open_stream (AdecFile* file, int32_t index)
try
{
    const auto* const source = file != nullptr ? file->stream (index) : nullptr;
    if (source == nullptr || !AdecFile::isDecodable (*source) || file->isAttached (index))
        return nullptr;
    return AdecStream::open (*file, *source).release();
}
catch (...)
{
    return nullptr;
}

PX_ADEC_EXPORT void adec_close_stream (AdecStream* stream)
{
    delete stream;
}

PX_ADEC_EXPORT int32_t adec_read (AdecFile* file, AdecPacketRecord* record)
{
    if (file == nullptr || !isFillable (record))
        return -1;
    clear (*record);
    return file->read (*record) ? 0 : -1;
}

PX_ADEC_EXPORT int32_t adec_decode_audio (AdecStream* stream, const uint8_t* data, int32_t dataSize,
                                          void* output, int32_t* outputSize)
{
    if (outputSize == nullptr)
        return -1;
    if (stream == nullptr || data == nullptr || dataSize <= 0 || output == nullptr || *outputSize < 0)
    {
        *outputSize = 0;
        return -1;
    }
    return stream->decode (data, dataSize, static_cast<uint8_t*> (output), *outputSize);
}
