#pragma once

#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"
#include "tracks/AdecSharedLibrary.h"

#include <gtest/gtest.h>

#include <vector>

/** A record as a caller hands it to the library. */
template <typename Record>
Record emptyRecord()
{
    Record record {};
    record.recordSize = sizeof (Record);
    return record;
}

/** The decoding library as a program finds it at run time. */
class AdecLibrary : public AdecSharedLibrary
{
public:
    AdecLibrary();

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
};

/** A folder for encoded noise, and the library. */
class AdecTest : public testing::Test
{
protected:
    juce::File noise (int frames = 44100, int channels = 2) const;
    juce::File encoded (const juce::String& name, const juce::StringArray& options = {}, int frames = 44100,
                        int channels = 2) const;

    const TemporaryFolder folder;
    const AdecLibrary library;
};
