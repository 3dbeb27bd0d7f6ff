#include "measure/PlainDecode.h"

extern "C"
{
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <memory>

namespace
{
struct Release
{
    void operator() (AVFormatContext* format) const { avformat_close_input (&format); }
    void operator() (AVCodecContext* codec) const { avcodec_free_context (&codec); }
    void operator() (AVPacket* packet) const { av_packet_free (&packet); }
    void operator() (AVFrame* frame) const { av_frame_free (&frame); }
};

template <typename Object>
using Owned = std::unique_ptr<Object, Release>;
}

int64_t plainDecode (const juce::File& file)
{
    av_log_set_level (AV_LOG_QUIET);
    AVFormatContext* opened = nullptr;
    if (avformat_open_input (&opened, file.getFullPathName().toRawUTF8(), nullptr, nullptr) < 0)
        return 0;
    const Owned<AVFormatContext> format (opened);
    if (avformat_find_stream_info (opened, nullptr) < 0)
        return 0;
    const AVCodec* decoder = nullptr;
    const auto stream = av_find_best_stream (opened, AVMEDIA_TYPE_AUDIO, -1, -1, &decoder, 0);
    if (stream < 0)
        return 0;

    const Owned<AVCodecContext> codec (avcodec_alloc_context3 (decoder));
    avcodec_parameters_to_context (codec.get(), opened->streams[stream]->codecpar);
    codec->pkt_timebase = opened->streams[stream]->time_base;
    codec->thread_count = 1;
    if (avcodec_open2 (codec.get(), decoder, nullptr) < 0)
        return 0;

    const Owned<AVPacket> packet (av_packet_alloc());
    const Owned<AVFrame> frame (av_frame_alloc());
    int64_t frames = 0;
    const auto drain = [&]
    {
        while (avcodec_receive_frame (codec.get(), frame.get()) >= 0)
            frames += frame->nb_samples;
    };
    while (av_read_frame (opened, packet.get()) >= 0)
    {
        if (packet->stream_index == stream && avcodec_send_packet (codec.get(), packet.get()) >= 0)
            drain();
        av_packet_unref (packet.get());
    }
    avcodec_send_packet (codec.get(), nullptr);
    drain();
    return frames;
}
