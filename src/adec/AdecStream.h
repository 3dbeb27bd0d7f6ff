#pragma once

#include "adec/AdecFile.h"

/** One stream being decoded. */
struct AdecStream
{
    /** @returns null if the stream's decoder can't be opened. */
    static std::unique_ptr<AdecStream> open (AdecFile&, const AVStream&);

    ~AdecStream();
    AdecStream() = default;
    AdecStream (const AdecStream&) = delete;
    AdecStream& operator= (const AdecStream&) = delete;

    /** See adec_decode_audio. */
    int32_t decode (const uint8_t* data, int32_t dataSize, uint8_t* output, int32_t& outputSize);

private:
    enum class Step
    {
        frame, /**< a frame is pending */
        empty, /**< the packet gives no more */
        damaged
    };

    bool send (const uint8_t* data, int32_t dataSize);
    Step receive();
    bool keepsFormat() const;

    /** Frames at the start of the decoded audio that lie before the stream's time 0, where nothing is to be heard;
        libavcodec doesn't cut them. */
    int64_t framesBeforeZero() const;

    AdecFile::Link link; ///< its file is null once that has closed: no packet can be decoded any more
    adec::AvPointer<AVCodecContext> codec;
    adec::AvPointer<AVFrame> frame { av_frame_alloc() };

    // The format that the stream record promised.
    AVSampleFormat packedFormat = AV_SAMPLE_FMT_NONE;
    int sampleRate = 0;
    int channels = 0;
    int32_t frameBytes = 0;

    AdecFile::Cut cut;
    int64_t position = 0;  /**< frames that the decoder has given so far */
    bool isDrained = true; /**< the decoder has given all of the packet sent last */

    // The part of `frame` that is still to be handed out, and where the caller goes on with the packet.
    int pendingAt = 0;
    int pendingEnd = 0;
    const uint8_t* continueAt = nullptr;
    int32_t continueSize = 0;
    int64_t continueNumber = 0;
};
