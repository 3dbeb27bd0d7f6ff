#include "demo/DemoFiles.h"

#include "support/AudioThread.h"
#include "support/RandGeneratorLCG.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <algorithm>
#include <array>
#include <vector>

namespace
{
constexpr int quality = 3;
constexpr int blockFrames = 8192;

/** Rounds to 16 bits with triangular dither of two steps' width, which sits in the upper half of a 32-bit word.
    Consecutive draws share a value, which gives the noise a gentle rise towards the treble. */
class Dither
{
public:
    explicit Dither (int32_t seed) noexcept : random (seed) {}

    int process (float sample) noexcept
    {
        const auto draw = random.nextDouble();
        // Shifted into the positive numbers, where cutting the fraction off rounds down.
        const auto shifted = static_cast<double> (sample) * 32767.0 + draw - last + 32768.5;
        last = draw;
        return (static_cast<int> (std::clamp (shifted, 0.0, 65535.0)) - 32768) * 65536;
    }

private:
    RandGeneratorLCG random;
    double last = 0.5;
};

/** @returns why it failed, or an empty text */
juce::String writeWhole (const juce::MemoryBlock& bytes, const juce::File& target)
{
    const auto part = target.getSiblingFile (target.getFileName() + ".part");
    part.deleteFile();
    {
        juce::FileOutputStream stream (part);
        if (stream.openedOk())
            stream.write (bytes.getData(), bytes.getSize());
        stream.flush();
        if (stream.getStatus().failed())
        {
            auto reason = stream.getStatus().getErrorMessage();
            part.deleteFile();
            return reason;
        }
    }
    // Moving replaces: somebody may have put a file of this name here while the track was rendered.
    if (target.exists())
    {
        part.deleteFile();
        return "a file of this name appeared";
    }
    if (!part.moveFileTo (target))
    {
        part.deleteFile();
        return "it could not be renamed";
    }
    return {};
}
}

juce::MemoryBlock encodeDemoTrack (const juce::AudioBuffer<float>& audio)
{
    juce::MemoryBlock bytes;
    {
        auto stream = std::make_unique<juce::MemoryOutputStream> (bytes, false);
        juce::FlacAudioFormat format;
        const std::unique_ptr<juce::AudioFormatWriter> writer (
            format.createWriterFor (stream.get(), DemoTrack::sampleRate, 2, 16, {}, quality));
        if (writer == nullptr)
            return {};
        juce::ignoreUnused (stream.release()); // the writer's now

        std::array dithers { Dither (16), Dither (61) };
        std::array<std::vector<int>, 2> words { std::vector<int> (blockFrames),
                                                std::vector<int> (blockFrames) };
        const std::array<const int*, 3> channels { words[0].data(), words[1].data(), nullptr };
        for (int start = 0; start < audio.getNumSamples(); start += blockFrames)
        {
            const auto count = std::min (blockFrames, audio.getNumSamples() - start);
            for (int channel = 0; channel < 2; ++channel)
            {
                const auto c = static_cast<size_t> (channel);
                const auto* from = audio.getReadPointer (channel, start);
                for (int i = 0; i < count; ++i)
                    words[c][static_cast<size_t> (i)] = dithers[c].process (from[i]);
            }
            if (!writer->write (const_cast<const int**> (channels.data()), count))
                return {};
        }
    }
    return bytes;
}

DemoFilesWritten writeDemoTracks (const juce::File& folder, const std::function<bool()>& shouldStop)
{
    assertMayBlock();
    DemoFilesWritten result;
    if (const auto made = folder.createDirectory(); made.failed())
    {
        result.error = "The demo tracks could not be written: the folder " + folder.getFullPathName()
                       + " can not be made.";
        return result;
    }
    for (const auto& track : demoTracks())
    {
        const auto target = folder.getChildFile (track.fileName);
        if (target.exists())
            continue;
        if (shouldStop != nullptr && shouldStop())
            break;
        const auto bytes = encodeDemoTrack (renderDemoTrack (track));
        const auto reason =
            bytes.isEmpty() ? juce::String ("the encoder failed") : writeWhole (bytes, target);
        if (reason.isNotEmpty())
        {
            result.error =
                "The demo track " + target.getFullPathName() + " could not be written: " + reason + ".";
            return result;
        }
        ++result.written;
    }
    return result;
}
