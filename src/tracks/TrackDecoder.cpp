#include "tracks/TrackDecoder.h"

#include "support/files/RegularFile.h"
#include "tracks/AdecTrack.h"
#include "tracks/SampleConversion.h"
#include "tracks/TrackIngest.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>
#include <optional>
#include <vector>

namespace
{
constexpr int framesPerPause = 8192, framesToShow = 1'310'720;

/** Takes the frames of one job, and does what stands at fixed intervals of them. */
class JobProgress
{
public:
    JobProgress (const TrackTarget& t, const DecodeJob& j) : target (t), job (j) {}

    void append (double rate, const int16_t* left, const int16_t* right, int frames)
    {
        if (frames < 1)
            return;
        if (!ingest)
        {
            job.begun (rate);
            target.sampleRate = rate;
            ingest.emplace (target);
        }
        frames = ingest->append (left, right, frames);
        total += frames;
        sincePause += frames;
        if (sincePause >= framesPerPause)
        {
            sincePause = 0;
            job.pacing.pause();
        }
        if (!shown && total > framesToShow)
        {
            shown = true;
            job.enoughToShow();
        }
    }

    bool hasBegun() const { return ingest.has_value(); }
    bool mayGoOn() const { return job.mayGoOn() && total < PXAudioSampleBuffer::maxFrames; }

private:
    const TrackTarget& target;
    const DecodeJob& job;
    std::optional<TrackIngest> ingest;
    int total = 0, sincePause = 0;
    bool shown = false;
};

/** @returns null for a file that JUCE can't read, or that no deck takes */
std::unique_ptr<juce::AudioFormatReader> openWithJuce (const juce::File& file)
{
    if (!isRegularFile (file))
        return {};
    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (file));
    if (reader == nullptr || reader->numChannels < 1 || reader->numChannels > 2
        || !(reader->sampleRate > 0.0 && reader->sampleRate <= AdecTrack::highestRate))
        return {};
    return reader;
}

void decodeWithJuce (const juce::File& file, JobProgress& job)
{
    const auto reader = openWithJuce (file);
    if (reader == nullptr)
        return;
    constexpr int pieceFrames = 4096;
    juce::AudioBuffer<float> piece (2, pieceFrames);
    std::array<int16_t, pieceFrames> left, right;
    for (juce::int64 done = 0; done < reader->lengthInSamples && job.mayGoOn(); done += pieceFrames)
    {
        const auto frames =
            static_cast<int> (std::min<juce::int64> (pieceFrames, reader->lengthInSamples - done));
        if (!reader->read (&piece, 0, frames, done, true, true))
            return;
        const auto convert = [&] (int channel, int16_t* side)
        {
            std::array<int16_t, pieceFrames> unused;
            const std::span samples (piece.getReadPointer (channel), static_cast<size_t> (frames));
            convertTo16Bit (std::as_bytes (samples), adecSampleFloat, 1, side, unused.data());
        };
        convert (0, left.data());
        convert (1, right.data());
        job.append (reader->sampleRate, left.data(), right.data(), frames);
    }
}
}

bool decodeTrack (const juce::File& file, const AdecSharedLibrary& library, const TrackTarget& target,
                  const DecodeJob& decodeJob)
{
    assertMayBlock();
    JobProgress job (target, decodeJob);
    if (AdecTrack track (library, file); track.isPlayable() && job.mayGoOn())
    {
        std::vector<int16_t> left (track.mostFrames()), right (track.mostFrames());
        track.decode (
            [&] (std::span<const std::byte> samples)
            {
                const auto frames = convertTo16Bit (samples, track.sampleFormat(), track.channels(),
                                                    left.data(), right.data());
                job.append (track.sampleRate(), left.data(), right.data(), frames);
                return job.mayGoOn();
            });
    }
    if (!job.hasBegun() && job.mayGoOn())
        decodeWithJuce (file, job);
    return job.hasBegun();
}

bool hasAudio (const juce::File& file, const AdecSharedLibrary& library)
{
    assertMayBlock();
    auto isFound = false;
    if (AdecTrack track (library, file); track.isPlayable())
        track.decode (
            [&isFound] (std::span<const std::byte> samples)
            {
                isFound = !samples.empty();
                return !isFound;
            });
    if (isFound)
        return true;
    const auto reader = openWithJuce (file);
    return reader != nullptr && reader->lengthInSamples > 0;
}
