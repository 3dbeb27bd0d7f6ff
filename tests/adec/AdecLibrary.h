#pragma once

#include "adec/adec.h"

#include <juce_core/juce_core.h>

#include <vector>

/** A record as a caller hands it to the library. */
template <typename Record>
Record emptyRecord()
{
    Record record {};
    record.recordSize = sizeof (Record);
    return record;
}

/** The decoding library as a program sees it: found by name, loaded at run time. */
class AdecLibrary
{
public:
    AdecLibrary();
    ~AdecLibrary();
    AdecLibrary (const AdecLibrary&) = delete;
    AdecLibrary& operator= (const AdecLibrary&) = delete;

    /** @returns null if the library has no such function. */
    void* find (const char* name) const;

    /** A file as it was decoded. */
    struct Decoded
    {
        bool isOpen = false;
        int streamCount = 0;
        bool hasAudio = false;   /**< a stream record of an audio stream was filled, see `record` */
        bool isDecoding = false; /**< the stream was opened */
        AdecStreamRecord record {};
        int lostPackets = 0;
        std::vector<uint8_t> samples;

        int frames() const;

        /** A channel's samples, full scale 1. */
        std::vector<float> channel (int index) const;
    };

    /** Decodes the last audio stream of a file whole, the way a deck does.
        @param bufferBytes  the room that each call is given; 0 for what the library asks for */
    Decoded decode (const juce::File&, int32_t bufferBytes = 0) const;

    AdecGetVersion getVersion {};
    AdecGetFfmpegRevision getFfmpegRevision {};
    AdecGetAudioBufferSize getAudioBufferSize {};
    AdecInit init {};
    AdecOpenFilename openFilename {};
    AdecCloseFile closeFile {};
    AdecFileInfo fileInfo {};
    AdecStreamInfo streamInfo {};
    AdecOpenStream openStream {};
    AdecCloseStream closeStream {};
    AdecRead read {};
    AdecDecodeAudio decodeAudio {};
    AvMalloc avMalloc {};
    AvMallocz avMallocz {};
    AvFree avFree {};
    AvFreep avFreep {};
    AvFastRealloc avFastRealloc {};

private:
    void* handle;
};
