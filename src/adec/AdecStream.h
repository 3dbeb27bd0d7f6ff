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

    /** The file is about to close: no packet can be decoded any more. */
    void forgetFile() { file = nullptr; }

    int32_t index() const { return streamIndex; }

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

    AdecFile* file = nullptr;
    int32_t streamIndex = -1;
    adec::AvPointer<AVCodecContext> codec;
    adec::AvPointer<AVFrame> frame { av_frame_alloc() };

    // What the stream record promised.
    AVSampleFormat packedFormat = AV_SAMPLE_FMT_NONE;
    int sampleRate = 0;
    int channels = 0;
    int32_t frameBytes = 0;

    AdecFile::Cut cut;
    int64_t position = 0; /**< frames that the decoder has given so far */

    // The part of `frame` that is still to be handed out, and where the caller goes on with the packet.
    int pendingAt = 0;
    int pendingEnd = 0;
    const uint8_t* continueAt = nullptr;
    int32_t continueSize = 0;
    int64_t continueNumber = 0;
};
