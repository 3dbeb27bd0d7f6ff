#include "tracks/formats/AdecAudioFormat.h"

#include "library/tags/SoundLength.h"
#include "support/files/AudioFileTypes.h"
#include "tracks/AdecTrack.h"
#include "tracks/SampleConversion.h"

#include <algorithm>
#include <array>
#include <vector>

namespace
{
juce::StringArray extensions()
{
    auto all = juce::StringArray::fromTokens (juce::String (AudioFileTypes::wildcard).removeCharacters ("*"),
                                              ";", {});
    all.removeEmptyStrings();
    return all;
}

class AdecReader : public juce::AudioFormatReader
{
public:
    /** @param in   of the same file; goes with this, as JUCE has it */
    AdecReader (juce::FileInputStream* in, std::shared_ptr<const AdecSharedLibrary> adec)
        : AudioFormatReader (in, "Decoder library"),
          library (std::move (adec)),
          path (in->getFile())
    {
        begin();
        if (!track->isPlayable())
            return;
        sampleRate = track->sampleRate();
        numChannels = 2;
        bitsPerSample = 32;
        usesFloatingPointData = true;
        lengthInSamples = static_cast<juce::int64> (statedSeconds (path) * sampleRate);
    }

    bool isPlayable() const { return track->isPlayable() && lengthInSamples > 0; }

    /** Lets go of the stream, which stays its giver's. */
    void leaveStream() { input = nullptr; }

    bool readSamples (int* const* channels, int channelCount, int offset, juce::int64 from,
                      int frames) override
    {
        if (from < firstFrame)
            begin();
        for (auto done = 0; done < frames;)
        {
            const auto wanted = from + done;
            const auto there = static_cast<int> (
                std::clamp<juce::int64> (endFrame() - wanted, 0, static_cast<juce::int64> (frames - done)));
            if (there == 0)
            {
                if (decodeUpTo (wanted))
                    continue;
                // A file may be shorter than it says.
                for (auto channel = 0; channel < channelCount; ++channel)
                    if (channels[channel] != nullptr)
                        std::fill_n (channels[channel] + offset + done, frames - done, 0);
                return true;
            }
            const auto at = static_cast<size_t> (wanted - firstFrame);
            for (auto channel = 0; channel < std::min (channelCount, 2); ++channel)
                if (channels[channel] != nullptr)
                    std::copy_n (samples[static_cast<size_t> (channel)].data() + at, there,
                                 reinterpret_cast<float*> (channels[channel]) + offset + done);
            done += there;
        }
        return true;
    }

private:
    void begin()
    {
        track = std::make_unique<AdecTrack> (*library, path);
        firstFrame = 0;
        for (auto& channel : samples)
            channel.clear();
    }

    juce::int64 endFrame() const { return firstFrame + static_cast<juce::int64> (samples[0].size()); }

    /** Decodes until a frame is there, and keeps what came with it. @returns false if the file ends before */
    bool decodeUpTo (juce::int64 wanted)
    {
        firstFrame = endFrame();
        for (auto& channel : samples)
            channel.clear();
        const auto take = [this, wanted] (std::span<const std::byte> data)
        {
            const auto frames = data.size()
                                / (static_cast<size_t> (bytesPerSample (track->sampleFormat()))
                                   * static_cast<size_t> (track->channels()));
            if (endFrame() + static_cast<juce::int64> (frames) <= wanted)
            {
                firstFrame += static_cast<juce::int64> (frames); // on the way to the place
                return true;
            }
            const auto before = samples[0].size();
            for (auto& channel : samples)
                channel.resize (before + frames);
            convertToFloat (data, track->sampleFormat(), track->channels(), samples[0].data() + before,
                            samples[1].data() + before);
            return true;
        };
        while (endFrame() <= wanted)
            if (!track->decodeNext (take))
                return endFrame() > wanted;
        return true;
    }

    const std::shared_ptr<const AdecSharedLibrary> library;
    const juce::File path;
    std::unique_ptr<AdecTrack> track;
    juce::int64 firstFrame = 0; ///< of those that are kept
    std::array<std::vector<float>, 2> samples;
};
}

AdecAudioFormat::AdecAudioFormat (const juce::File& decoderLibrary)
    : AudioFormat ("Decoder library", extensions()),
      libraryFile (decoderLibrary)
{
}

std::shared_ptr<const AdecSharedLibrary> AdecAudioFormat::library()
{
    const std::scoped_lock scope (lock);
    if (loaded == nullptr)
        loaded = std::make_shared<const AdecSharedLibrary> (libraryFile);
    return loaded;
}

juce::AudioFormatReader* AdecAudioFormat::createReaderFor (juce::InputStream* stream,
                                                           bool deleteStreamIfOpeningFails)
{
    if (auto* file = dynamic_cast<juce::FileInputStream*> (stream))
    {
        auto reader = std::make_unique<AdecReader> (file, library());
        if (reader->isPlayable())
            return reader.release();
        reader->leaveStream();
    }
    if (deleteStreamIfOpeningFails)
        delete stream;
    return nullptr;
}
