#pragma once

#include "adec/AvPointers.h"
#include "adec/Mp4Timing.h"
#include "adec/adec.h"

#include <optional>
#include <vector>

/** An open file: its demuxer, the packet read last and the ties to the streams being decoded. */
struct AdecFile
{
    /** The part of a stream's decoded audio that is to be heard, in frames; `end` is behind the last one. */
    struct Cut
    {
        int64_t start = 0;
        int64_t end = INT64_MAX;
    };

    /** @returns null if the file can't be read as audio. */
    static std::unique_ptr<AdecFile> open (const char* utf8Path);

    AdecFile() = default;
    ~AdecFile();
    AdecFile (const AdecFile&) = delete;
    AdecFile& operator= (const AdecFile&) = delete;

    int32_t streamCount() const { return static_cast<int32_t> (format->nb_streams); }

    /** @returns the stream, or null if the index is out of range. */
    AVStream* stream (int32_t index) const;

    /** True for an audio stream that the library can decode and express. */
    static bool isDecodable (const AVStream&);

    /** The cut that the file's tables state for a stream and the demuxer leaves to us; nothing if it leaves none. */
    std::optional<Cut> cutOf (const AVStream&) const;

    /** Ties a decoded stream to its file. The file cuts it when it closes. */
    struct Link
    {
        AdecFile* file = nullptr;
        int32_t streamIndex = -1;
    };

    /** Starts handing out the packets of a stream, and stops. */
    void attach (Link&);
    void detach (Link&);
    bool isAttached (int32_t index) const;

    /** Reads the next packet of an attached stream, then one flush packet for each.
        @returns false at the end. */
    bool read (AdecPacketRecord&);

    /** The packet read last, with all that the demuxer said about it; empty before the first and for a flush. */
    const AVPacket& currentPacket() const { return *packet; }

    /** Counts the packets read, flushes too. */
    int64_t packetNumber() const { return packetCount; }

    /** True if `data` is what read() gave to flush a stream. */
    bool isFlush (const uint8_t* data) const { return isAtEnd && data == flushBytes; }

private:
    bool readPacket();
    bool readFlush (AdecPacketRecord&);

    static constexpr uint8_t flushBytes[16] = {};

    adec::AvPointer<AVFormatContext> format;
    adec::AvPointer<AVPacket> packet { av_packet_alloc() };
    std::vector<adec::Mp4Timing> timings;
    std::vector<Link*> links;
    size_t flushed = 0;
    int64_t packetCount = 0;
    bool isAtEnd = false;
};
