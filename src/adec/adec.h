#pragma once

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

/** The decoding library `adec`: audio files to interleaved samples, over FFmpeg.

    The library is loaded at run time and its functions are found by name; besides the functions below, FFmpeg's
    allocators `av_malloc`, `av_mallocz`, `av_free`, `av_freep` and `av_fast_realloc` are found on the same handle.

    The order of calls: open a file, look at its streams, open one or more of them, then read packets and decode each
    with the stream it belongs to until reading fails; close the streams and the file.

        AdecPacketRecord packet = {};
        packet.recordSize = sizeof packet;
        while (adec_read (file, &packet) == 0)
        {
            const uint8_t* data = packet.data;
            int32_t left = packet.dataSize;
            while (left > 0)
            {
                int32_t bytes = bufferSize;
                const int32_t used = adec_decode_audio (stream, data, left, buffer, &bytes);
                if (used < 0)
                    break;
                ... `bytes` bytes of samples stand in `buffer`, perhaps none ...
                data += used;
                left -= used;
            }
        }

    The samples line up with what was encoded wherever the file says how: the encoder's delay and padding that are
    stated by an MP3's LAME tag, an MP4's edit list, sample table or "iTunSMPB" tag or an Ogg stream's positions are
    cut. Where a file says nothing, nothing is cut.

    Threads: a file handle and the streams opened from it belong to one thread at a time; different files may be used
    on different threads at once. No function throws. Every one of them may block on the file system. */

#ifdef __cplusplus
extern "C"
{
#endif

    /** An open file. */
    typedef struct AdecFile AdecFile;

    /** A stream of an open file that is being decoded. */
    typedef struct AdecStream AdecStream;

    /** The values of AdecStreamRecord::type. */
    enum AdecStreamType
    {
        adecStreamUnknown = 0,
        adecStreamVideo = 1, /**< a cover picture is one too */
        adecStreamAudio = 2,
        adecStreamOther = 3
    };

    /** The values of AdecStreamRecord::sampleFormat; samples are in the machine's byte order. */
    enum AdecSampleFormat
    {
        adecSampleU8 = 0,    /**< unsigned 8 bit, silence is 128 */
        adecSampleS16 = 1,   /**< signed 16 bit */
        adecSampleS32 = 2,   /**< signed 32 bit; 24-bit sources stand in the upper bits */
        adecSampleFloat = 3, /**< 32-bit float, full scale is 1 */
        adecSampleDouble = 4 /**< 64-bit float, full scale is 1 */
    };

/* Four bytes: the packet record's pointer follows its numbers without a gap. */
#pragma pack(push, 4)

    /** The contents of a file. The caller writes `recordSize` before the call. */
    typedef struct AdecFileRecord
    {
        int32_t recordSize;
        int32_t streamCount;
        uint8_t reserved[2616]; /**< zeros */
    } AdecFileRecord;

    /** The contents of a stream. The caller writes `recordSize` before the call. */
    typedef struct AdecStreamRecord
    {
        int32_t recordSize;
        int32_t type;          /**< an AdecStreamType; the fields below are 0 for any but audio */
        int32_t sampleFormat;  /**< an AdecSampleFormat: the form of the decoded samples */
        uint32_t sampleRate;   /**< Hz */
        int32_t bitsPerSample; /**< of a decoded sample: 8, 16, 32 or 64 */
        int32_t channels;
        uint8_t reserved[8]; /**< zeros */
    } AdecStreamRecord;

    /** A packet of a stream. The caller writes `recordSize` before the call. */
    typedef struct AdecPacketRecord
    {
        int32_t recordSize;
        uint8_t reserved[12]; /**< zeros */
        int32_t streamIndex;
        const uint8_t* data; /**< valid until the next adec_read or adec_close_file of the file */
        int32_t dataSize;    /**< bytes, above 0 */
    } AdecPacketRecord;

#pragma pack(pop)

    static_assert (sizeof (AdecFileRecord) == 2624, "callers rely on the size");
    static_assert (offsetof (AdecFileRecord, streamCount) == 4, "callers rely on the place");
    static_assert (sizeof (AdecStreamRecord) == 32, "callers rely on the size");
    static_assert (offsetof (AdecStreamRecord, type) == 4 && offsetof (AdecStreamRecord, sampleFormat) == 8
                       && offsetof (AdecStreamRecord, sampleRate) == 12
                       && offsetof (AdecStreamRecord, bitsPerSample) == 16
                       && offsetof (AdecStreamRecord, channels) == 20,
                   "callers rely on the places");
    static_assert (sizeof (void*) == 8, "the packet record carries a pointer of 8 bytes");
    static_assert (sizeof (AdecPacketRecord) == 32, "callers rely on the size");
    static_assert (offsetof (AdecPacketRecord, streamIndex) == 16 && offsetof (AdecPacketRecord, data) == 20
                       && offsetof (AdecPacketRecord, dataSize) == 28,
                   "callers rely on the places");

    /** The library's version: major in the upper 16 bits, minor in the lower. A new major version changes a record or
    the meaning of a function. */
    int32_t adec_get_version (void);

    /** The version of libavcodec in use: major, minor and micro in bits 16 and up, 8 to 15, 0 to 7. */
    int32_t adec_get_ffmpeg_revision (void);

    /** Bytes of a decode buffer that takes any usual packet in one call. */
    int32_t adec_get_audio_buffer_size (void);

    /** Silences FFmpeg's log for the process. To be called before the first file is opened; any thread, any number of
    times. */
    void adec_init (void);

    /** Opens a local file.
    @param utf8Path  a path, never a URL; null is refused
    @returns a handle to be closed with adec_close_file, or null if the file can't be read, is no audio file of a
             known kind or is protected as a whole. */
    AdecFile* adec_open_filename (const char* utf8Path);

    /** Closes a file. Streams of it that are still open only fail from then on and are still to be closed. Null is
    ignored. */
    void adec_close_file (AdecFile* file);

    /** Fills the file record. @returns 0, or -1 on a null pointer or too small a record, which stays untouched. */
    int32_t adec_file_info (AdecFile* file, AdecFileRecord* record);

    /** Fills the stream record of stream `index`, from 0 on.
    @returns 0, or -1 on a null pointer, an index out of range, too small a record, or an audio stream that can't be
             decoded: unknown, protected, or without a rate or channels. The record stays untouched then. */
    int32_t adec_stream_info (AdecFile* file, int32_t index, AdecStreamRecord* record);

    /** Opens an audio stream for decoding, before the first adec_read of the file if its start is not to be missed.
    @returns a handle to be closed with adec_close_stream; null if adec_stream_info fails on it, it is no audio, or
             it is open already. */
    AdecStream* adec_open_stream (AdecFile* file, int32_t index);

    /** Closes a stream, before or after its file. Null is ignored. */
    void adec_close_stream (AdecStream* stream);

    /** Gives the next packet of the open streams; packets of others are passed over. After the last one of the file, each
    open stream gets one small packet more, whose decoding gives what the decoder still holds.
    @returns 0, or -1 at the end of the file, on a null pointer or too small a record. */
    int32_t adec_read (AdecFile* file, AdecPacketRecord* record);

    /** Decodes a packet, or goes on with it.
    @param data       `data` of the last packet read, advanced by what earlier calls returned
    @param dataSize   bytes left of that packet
    @param output     receives interleaved samples in the stream record's format; aligned to a sample
    @param outputSize in: bytes of room in `output`; out: bytes written, whole frames only and never more than the
                      room. 0 where a packet gives no samples
    @returns bytes used up. Samples that find no room wait for the next call: then one byte is used up, or none if
             only one is left, and samples were written. Negative if the packet is damaged, holds another format,
             rate or channel count than the stream record says, is not of this stream or not the last one read, or
             not even one frame fits; the rest of the packet is lost then, the next can be decoded. */
    int32_t adec_decode_audio (AdecStream* stream, const uint8_t* data, int32_t dataSize, void* output,
                               int32_t* outputSize);

    /** The types to look the functions up with. */
    typedef int32_t (*AdecGetVersion) (void);
    typedef int32_t (*AdecGetFfmpegRevision) (void);
    typedef int32_t (*AdecGetAudioBufferSize) (void);
    typedef void (*AdecInit) (void);
    typedef AdecFile* (*AdecOpenFilename) (const char*);
    typedef void (*AdecCloseFile) (AdecFile*);
    typedef int32_t (*AdecFileInfo) (AdecFile*, AdecFileRecord*);
    typedef int32_t (*AdecStreamInfo) (AdecFile*, int32_t, AdecStreamRecord*);
    typedef AdecStream* (*AdecOpenStream) (AdecFile*, int32_t);
    typedef void (*AdecCloseStream) (AdecStream*);
    typedef int32_t (*AdecRead) (AdecFile*, AdecPacketRecord*);
    typedef int32_t (*AdecDecodeAudio) (AdecStream*, const uint8_t*, int32_t, void*, int32_t*);

    /** The types of FFmpeg's allocators on the same handle. */
    typedef void* (*AvMalloc) (size_t);
    typedef void* (*AvMallocz) (size_t);
    typedef void (*AvFree) (void*);
    typedef void (*AvFreep) (void*);
    typedef void* (*AvFastRealloc) (void*, unsigned int*, size_t);

#ifdef __cplusplus
}
#endif
