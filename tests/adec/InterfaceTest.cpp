#include "AdecLibrary.h"
#include "adec/BuiltDecoder.h"

#include <array>
#include <cstring>
#include <thread>

namespace
{
class Interface : public AdecTest
{
protected:
    AdecFile* open (const juce::File& file)
    {
        return library.adec_open_filename (file.getFullPathName().toRawUTF8());
    }
};
}

TEST_F (Interface, AllocatorsOfTheSameHandleWork)
{
    EXPECT_NE (library.adec_get_version(), 0);
    EXPECT_EQ (library.adec_get_ffmpeg_revision() >> 16, 59);

    const auto size = static_cast<size_t> (library.adec_get_audio_buffer_size());
    auto* buffer = static_cast<uint8_t*> (library.av_malloc (size));
    ASSERT_NE (buffer, nullptr);
    EXPECT_EQ (reinterpret_cast<uintptr_t> (buffer) % 16, 0u);
    std::memset (buffer, 1, size);
    library.av_free (buffer);

    buffer = static_cast<uint8_t*> (library.av_mallocz (16));
    EXPECT_EQ (buffer[15], 0);
    unsigned int room = 16;
    buffer = static_cast<uint8_t*> (library.av_fast_realloc (buffer, &room, 1000));
    EXPECT_GE (room, 1000u);
    library.av_freep (&buffer);
    EXPECT_EQ (buffer, nullptr);
}

TEST_F (Interface, OnlyTheLibrarysNamesAreExported)
{
    juce::DynamicLibrary handle (builtDecoder());
    EXPECT_NE (handle.getFunction ("adec_read"), nullptr);
    for (const auto* name : { "_ZN8AdecFile4openEPKc", "juce_isRunningUnderDebugger" })
        EXPECT_EQ (handle.getFunction (name), nullptr);
}

TEST_F (Interface, RecordsThatAreTooSmallStayUntouched)
{
    auto* const file = open (encoded ("a.flac"));
    ASSERT_NE (file, nullptr);
    auto* const stream = library.adec_open_stream (file, 0);

    const auto refuses = [] (auto record, int32_t size, auto&& call)
    {
        std::memset (&record, 0x55, sizeof (record));
        record.recordSize = size;
        const auto before = record;
        EXPECT_EQ (call (&record), -1);
        EXPECT_EQ (std::memcmp (&record, &before, sizeof (record)), 0);
    };
    for (const int32_t size : { 0, -1, 31, INT32_MIN })
    {
        refuses (AdecStreamRecord {}, size,
                 [&] (auto* record) { return library.adec_stream_info (file, 0, record); });
        refuses (AdecPacketRecord {}, size, [&] (auto* record) { return library.adec_read (file, record); });
        refuses (AdecFileRecord {}, size,
                 [&] (auto* record) { return library.adec_file_info (file, record); });
    }
    refuses (AdecFileRecord {}, 2623, [&] (auto* record) { return library.adec_file_info (file, record); });
    library.adec_close_stream (stream);
    library.adec_close_file (file);
}

TEST_F (Interface, NothingIsWrittenBehindARecord)
{
    auto* const file = open (encoded ("a.flac"));
    std::array<AdecStreamRecord, 2> records {};
    std::memset (records.data(), 0x55, sizeof (records));
    const auto second = records[1];
    records[0].recordSize = sizeof (records); // a caller with a longer record of its own
    EXPECT_EQ (library.adec_stream_info (file, 0, records.data()), 0);
    EXPECT_EQ (records[0].type, adecStreamAudio);
    EXPECT_EQ (std::memcmp (&records[1], &second, sizeof (second)), 0);
    library.adec_close_file (file);
}

TEST_F (Interface, NullAndOutOfRangeAreRefused)
{
    auto record = emptyRecord<AdecStreamRecord>();
    auto packet = emptyRecord<AdecPacketRecord>();
    auto info = emptyRecord<AdecFileRecord>();
    EXPECT_EQ (library.adec_open_filename (nullptr), nullptr);
    EXPECT_EQ (library.adec_file_info (nullptr, &info), -1);
    EXPECT_EQ (library.adec_stream_info (nullptr, 0, &record), -1);
    EXPECT_EQ (library.adec_open_stream (nullptr, 0), nullptr);
    EXPECT_EQ (library.adec_read (nullptr, &packet), -1);
    library.adec_close_stream (nullptr);
    library.adec_close_file (nullptr);

    auto* const file = open (encoded ("a.ogg"));
    ASSERT_NE (file, nullptr);
    EXPECT_EQ (library.adec_file_info (file, nullptr), -1);
    EXPECT_EQ (library.adec_read (file, &packet), -1) << "no stream is open";
    for (const int32_t index : { -1, 1, INT32_MAX, INT32_MIN })
    {
        EXPECT_EQ (library.adec_stream_info (file, index, &record), -1);
        EXPECT_EQ (library.adec_open_stream (file, index), nullptr);
    }

    auto* const stream = library.adec_open_stream (file, 0);
    EXPECT_EQ (library.adec_open_stream (file, 0), nullptr) << "it is open already";
    ASSERT_EQ (library.adec_read (file, &packet), 0);
    std::array<float, 64> output {};
    int32_t bytes = sizeof (output);
    EXPECT_LT (library.adec_decode_audio (nullptr, packet.data, packet.dataSize, output.data(), &bytes), 0);
    EXPECT_EQ (bytes, 0);
    bytes = sizeof (output);
    EXPECT_LT (library.adec_decode_audio (stream, nullptr, packet.dataSize, output.data(), &bytes), 0);
    EXPECT_LT (library.adec_decode_audio (stream, packet.data, packet.dataSize, output.data(), nullptr), 0);
    bytes = sizeof (output);
    EXPECT_LT (library.adec_decode_audio (stream, packet.data, packet.dataSize + 1, output.data(), &bytes),
               0);

    library.adec_close_file (file); // before its stream
    bytes = sizeof (output);
    const uint8_t other[4] {};
    EXPECT_LT (library.adec_decode_audio (stream, other, sizeof (other), output.data(), &bytes), 0);
    library.adec_close_stream (stream);
}

TEST_F (Interface, AnySizeOfBufferGivesTheSameSamples)
{
    for (const auto* name : { "a.mp3", "a.flac", "a.ogg", "a.m4a" })
    {
        const auto file = encoded (name);
        const auto whole = library.decode (file);
        EXPECT_EQ (whole.frames(), 44100) << name;
        for (const int32_t bufferBytes : { 1001, 4096, 9216 })
            EXPECT_EQ (library.decode (file, bufferBytes).samples, whole.samples)
                << name << " " << bufferBytes;

        const auto none = library.decode (file, 3); // less than a frame
        EXPECT_EQ (none.frames(), 0);
        EXPECT_GT (none.lostPackets, 0);
    }
}

TEST_F (Interface, EveryAudioStreamOfAFileDecodes)
{
    const auto wav = encoded ("a.flac");
    const auto file = EncodedFiles::runFfmpeg ({ "-i", wav.getFullPathName(), "-map", "0", "-map", "0",
                                                 "-c:a:0", "aac", "-c:a:1", "alac", "-ac:a:1", "1",
                                                 folder.file ("two.m4a").getFullPathName() });
    const auto decoded = library.decode (file);
    EXPECT_EQ (decoded.streamCount, 2);
    EXPECT_EQ (decoded.record.channels, 1) << "the last one wins";
    EXPECT_EQ (decoded.frames(), 44100);
}

TEST_F (Interface, FourFilesDecodeAtOnce)
{
    const juce::File files[] = { encoded ("a.mp3"), encoded ("b.m4a"), encoded ("c.ogg"), encoded ("d.wma") };
    std::array<AdecLibrary::Decoded, 4> alone, together;
    for (size_t i = 0; i < 4; ++i)
        alone[i] = library.decode (files[i]);

    std::vector<std::thread> threads;
    for (size_t i = 0; i < 4; ++i)
        threads.emplace_back ([&, i] { together[i] = AdecLibrary().decode (files[i]); });
    for (auto& thread : threads)
        thread.join();
    for (size_t i = 0; i < 4; ++i)
    {
        EXPECT_GT (alone[i].frames(), 40000);
        EXPECT_EQ (together[i].samples, alone[i].samples) << files[i].getFileName();
    }
}
