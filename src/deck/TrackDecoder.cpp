#include "deck/TrackDecoder.h"

#include "deck/SampleConversion.h"
#include "deck/TrackIngest.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <cmath>
#include <memory>
#include <vector>

namespace
{
constexpr int framesPerPause = 8192, framesToShow = 1'310'720;

/** Takes the frames of one job, and does what stands at fixed intervals of them. */
class JobProgress
{
public:
    JobProgress (DeckPlayer& d, DeckWorld& w) : deck (d), world (w), ingest (d) {}

    void append (const int16_t* left, const int16_t* right, int frames)
    {
        frames = ingest.append (left, right, frames);
        total += frames;
        sincePause += frames;
        if (sincePause >= framesPerPause)
        {
            sincePause = 0;
            world.pacing.pause();
        }
        if (!shown && total > framesToShow)
        {
            shown = true;
            world.listeners.post (EngineEvent::waveformReady, deck.index);
        }
    }

    bool mayGoOn() const
    {
        return deck.cancelLoad == 0 && deck.loadedFrames < PXAudioSampleBuffer::maxFrames;
    }

private:
    DeckPlayer& deck;
    DeckWorld& world;
    TrackIngest ingest;
    int total = 0, sincePause = 0;
    bool shown = false;
};

/** An open file of the decoder library with its chosen stream; everything is given back at the end. */
class AdecTrack
{
public:
    AdecTrack (const AdecSharedLibrary& library, const juce::File& path) : adec (library)
    {
        file = adec.adec_open_filename (path.getFullPathName().toRawUTF8());
        if (file == nullptr)
            return;
        AdecFileRecord info {};
        info.recordSize = sizeof (info);
        if (adec.adec_file_info (file, &info) != 0)
            return;
        for (int32_t i = 0; i < info.streamCount; ++i)
            chooseStream (i);
        if (stream == nullptr)
            return;
        bufferSize = adec.adec_get_audio_buffer_size();
        if (bufferSize > 0)
            buffer = static_cast<std::byte*> (adec.av_malloc (static_cast<size_t> (bufferSize)));
    }

    ~AdecTrack()
    {
        if (buffer != nullptr)
            adec.av_free (buffer);
        adec.adec_close_stream (stream);
        adec.adec_close_file (file);
    }

    AdecTrack (const AdecTrack&) = delete;
    AdecTrack& operator= (const AdecTrack&) = delete;

    bool isPlayable() const
    {
        return buffer != nullptr && chosen.sampleRate > 0 && bytesPerSample (chosen.sampleFormat) > 0
               && (chosen.channels == 1 || chosen.channels == 2);
    }

    double sampleRate() const { return chosen.sampleRate; }

    void decode (JobProgress& job)
    {
        const auto frameBytes = static_cast<size_t> (bytesPerSample (chosen.sampleFormat))
                                * static_cast<size_t> (chosen.channels);
        left.resize (static_cast<size_t> (bufferSize) / frameBytes);
        right.resize (left.size());

        AdecPacketRecord packet {};
        packet.recordSize = sizeof (packet);
        while (job.mayGoOn() && adec.adec_read (file, &packet) == 0)
            if (packet.streamIndex == streamIndex)
                decodePacket (packet, job);
    }

private:
    /** The last audio stream wins. */
    void chooseStream (int32_t index)
    {
        AdecStreamRecord info {};
        info.recordSize = sizeof (info);
        if (adec.adec_stream_info (file, index, &info) != 0 || info.type != adecStreamAudio)
            return;
        adec.adec_close_stream (stream);
        stream = adec.adec_open_stream (file, index);
        streamIndex = index;
        chosen = info;
    }

    void decodePacket (const AdecPacketRecord& packet, JobProgress& job)
    {
        const auto* data = packet.data;
        auto remaining = packet.dataSize;
        while (remaining > 0)
        {
            int32_t bytes = bufferSize;
            const auto used = adec.adec_decode_audio (stream, data, remaining, buffer, &bytes);
            if (used < 0 || (used == 0 && bytes <= 0))
                return; // what is left of the packet is lost
            data += used;
            remaining -= used;
            if (bytes <= 0 || bytes > bufferSize)
                continue;
            const auto frames = convertTo16Bit ({ buffer, static_cast<size_t> (bytes) }, chosen.sampleFormat,
                                                chosen.channels, left.data(), right.data());
            job.append (left.data(), right.data(), frames);
        }
    }

    const AdecSharedLibrary& adec;
    AdecFile* file = nullptr;
    AdecStream* stream = nullptr;
    int32_t streamIndex = -1;
    AdecStreamRecord chosen {};
    int32_t bufferSize = 0;
    std::byte* buffer = nullptr;
    std::vector<int16_t> left, right;
};

void decodeWithToolkit (const juce::File& file, DeckPlayer& deck, JobProgress& job)
{
    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    const std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (file));
    if (reader == nullptr || reader->numChannels < 1 || reader->numChannels > 2
        || !(reader->sampleRate > 0.0 && std::isfinite (reader->sampleRate)))
        return;
    deck.sampleRate = reader->sampleRate;

    constexpr int pieceFrames = 4096;
    juce::AudioBuffer<float> piece (2, pieceFrames);
    std::array<int16_t, pieceFrames> left, right;
    for (juce::int64 done = 0; done < reader->lengthInSamples && job.mayGoOn(); done += pieceFrames)
    {
        const auto frames =
            static_cast<int> (std::min<juce::int64> (pieceFrames, reader->lengthInSamples - done));
        if (!reader->read (&piece, 0, frames, done, true, true))
            return;
        const auto convert = [&] (int channel, int16_t* target)
        {
            std::array<int16_t, pieceFrames> unused;
            const std::span samples (piece.getReadPointer (channel), static_cast<size_t> (frames));
            convertTo16Bit (std::as_bytes (samples), adecSampleFloat, 1, target, unused.data());
        };
        convert (0, left.data());
        convert (1, right.data());
        job.append (left.data(), right.data(), frames);
    }
}
}

void decodeTrack (const juce::File& file, const AdecSharedLibrary& library, DeckPlayer& deck,
                  DeckWorld& world)
{
    assertMayBlock();
    JobProgress job (deck, world);
    {
        AdecTrack track (library, file);
        if (track.isPlayable())
        {
            deck.sampleRate = track.sampleRate();
            track.decode (job);
        }
    }
    if (deck.loadedFrames < 1 && job.mayGoOn())
        decodeWithToolkit (file, deck, job);
}
