#pragma once

extern "C"
{
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <memory>

/** Owners of FFmpeg's objects. */
namespace adec
{
struct AvRelease
{
    void operator() (AVFormatContext* format) const { avformat_close_input (&format); }
    void operator() (AVCodecContext* codec) const { avcodec_free_context (&codec); }
    void operator() (AVPacket* packet) const { av_packet_free (&packet); }
    void operator() (AVFrame* frame) const { av_frame_free (&frame); }
    void operator() (AVDictionary* dictionary) const { av_dict_free (&dictionary); }
};

template <typename Object>
using AvPointer = std::unique_ptr<Object, AvRelease>;
}
