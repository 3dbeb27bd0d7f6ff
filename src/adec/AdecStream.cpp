#include "adec/AdecStream.h"

#include "adec/Interleave.h"

#include <algorithm>

std::unique_ptr<AdecStream> AdecStream::open (AdecFile& file, const AVStream& source)
{
    auto stream = std::make_unique<AdecStream>();
    if (stream->frame == nullptr)
        return nullptr;

    const auto& parameters = *source.codecpar;
    const auto* const decoder = avcodec_find_decoder (parameters.codec_id);
    stream->codec.reset (avcodec_alloc_context3 (decoder));
    auto* const codec = stream->codec.get();
    if (codec == nullptr || avcodec_parameters_to_context (codec, &parameters) < 0)
        return nullptr;

    codec->pkt_timebase = source.time_base;
    codec->thread_count = 1; // four decks decode at once, beside a thread that must not wait for them
    if (const auto cut = file.cutOf (source))
    {
        stream->cut = *cut;
        codec->flags2 |= AV_CODEC_FLAG2_SKIP_MANUAL;
    }
    if (avcodec_open2 (codec, decoder, nullptr) < 0)
        return nullptr;

    stream->packedFormat = av_get_packed_sample_fmt (static_cast<AVSampleFormat> (parameters.format));
    stream->sampleRate = parameters.sample_rate;
    stream->channels = parameters.ch_layout.nb_channels;
    stream->frameBytes = stream->channels * av_get_bytes_per_sample (stream->packedFormat);
    stream->link.streamIndex = source.index;
    file.attach (stream->link);
    return stream;
}

AdecStream::~AdecStream()
{
    if (link.file != nullptr)
        link.file->detach (link);
}

bool AdecStream::send (const uint8_t* data, int32_t dataSize)
{
    // Samples of the packet before that the caller didn't fetch are lost with it.
    pendingAt = pendingEnd = 0;
    while (!isDrained && avcodec_receive_frame (codec.get(), frame.get()) >= 0)
        position += frame->nb_samples;
    isDrained = false;

    if (link.file->isFlush (data))
        return avcodec_send_packet (codec.get(), nullptr) >= 0;

    const auto& packet = link.file->currentPacket();
    return data == packet.data && dataSize == packet.size && packet.stream_index == link.streamIndex
           && avcodec_send_packet (codec.get(), &packet) >= 0;
}

bool AdecStream::keepsFormat() const
{
    return av_get_packed_sample_fmt (static_cast<AVSampleFormat> (frame->format)) == packedFormat
           && frame->sample_rate == sampleRate && frame->ch_layout.nb_channels == channels;
}

int64_t AdecStream::framesBeforeZero() const
{
    if (frame->pts == AV_NOPTS_VALUE || frame->pts >= 0)
        return 0;
    // An Ogg stream that was cut out of another one starts within a page; more than that is damage.
    constexpr int mostSeconds = 5;
    const auto inFrames = av_make_q (1, sampleRate);
    const auto early =
        av_rescale_q (-std::max<int64_t> (frame->pts, -INT64_MAX), codec->pkt_timebase, inFrames);
    return early > 0 && early <= int64_t { mostSeconds } * sampleRate ? early : 0;
}

AdecStream::Step AdecStream::receive()
{
    const auto error = avcodec_receive_frame (codec.get(), frame.get());
    isDrained = error == AVERROR (EAGAIN) || error == AVERROR_EOF;
    if (isDrained)
        return Step::empty;
    if (error < 0)
        return Step::damaged;

    if (position == 0 && (codec->flags2 & AV_CODEC_FLAG2_SKIP_MANUAL) == 0)
        cut.start = framesBeforeZero();

    const int64_t count = frame->nb_samples;
    pendingAt = static_cast<int> (std::clamp<int64_t> (cut.start - position, 0, count));
    pendingEnd = static_cast<int> (std::clamp<int64_t> (cut.end - position, pendingAt, count));
    position += count;
    if (keepsFormat())
        return Step::frame;
    pendingAt = pendingEnd = 0;
    return Step::damaged;
}

int32_t AdecStream::decode (const uint8_t* data, int32_t dataSize, uint8_t* output, int32_t& outputSize)
{
    const auto room = outputSize;
    outputSize = 0;
    if (link.file == nullptr)
        return -1;

    const bool isContinued =
        data == continueAt && dataSize == continueSize && link.file->packetNumber() == continueNumber;
    continueAt = nullptr;
    if (!isContinued && !send (data, dataSize))
        return -1;

    for (;;)
    {
        const auto count = std::min (pendingEnd - pendingAt, (room - outputSize) / frameBytes);
        if (count > 0)
            adec::interleave (*frame, pendingAt, count, output + outputSize);
        pendingAt += count;
        outputSize += count * frameBytes;

        if (pendingAt < pendingEnd)
        {
            if (outputSize == 0)
                return -1;
            const int32_t used = dataSize > 1 ? 1 : 0;
            continueAt = data + used;
            continueSize = dataSize - used;
            continueNumber = link.file->packetNumber();
            return used;
        }

        const auto step = receive();
        if (step == Step::empty || (step == Step::damaged && outputSize > 0))
            return dataSize;
        if (step == Step::damaged)
            return -1;
    }
}
