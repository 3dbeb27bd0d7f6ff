#include "shared/EncodedFiles.h"

#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>

namespace EncodedFiles
{
juce::AudioBuffer<float> makeNoise (int channels, int frames, double sampleRate)
{
    constexpr double cornerHz = 1500.0;
    constexpr float noiseGain = 1.5f, noisePeak = 0.7f, click = 0.2f;
    const auto smoothing =
        static_cast<float> (std::exp (-juce::MathConstants<double>::twoPi * cornerHz / sampleRate));
    const auto clickSpacing = static_cast<int> (sampleRate / 2);

    juce::AudioBuffer<float> audio (channels, frames);
    for (int channel = 0; channel < channels; ++channel)
    {
        juce::Random random (1000 + channel);
        auto* const samples = audio.getWritePointer (channel);
        float once = 0.0f, twice = 0.0f;
        for (int i = 0; i < frames; ++i)
        {
            once += (1.0f - smoothing) * (random.nextFloat() * 2.0f - 1.0f - once);
            twice += (1.0f - smoothing) * (once - twice);
            const bool isClick = i % clickSpacing == clickSpacing / 2;
            samples[i] = juce::jlimit (-noisePeak, noisePeak, noiseGain * twice) + (isClick ? click : 0.0f);
        }
    }
    return audio;
}

juce::File writeWav (const juce::AudioBuffer<float>& audio, double sampleRate, const juce::File& target,
                     WavSamples samples)
{
    target.deleteFile();
    auto stream = target.createOutputStream();
    if (stream == nullptr)
    {
        ADD_FAILURE() << "Can't write " << target.getFullPathName();
        return target;
    }

    const auto bits = samples == WavSamples::int16 ? 16 : 32;
    juce::WavAudioFormat format;
    const std::unique_ptr<juce::AudioFormatWriter> writer (format.createWriterFor (
        stream.get(), sampleRate, static_cast<unsigned int> (audio.getNumChannels()), bits, {}, 0));
    if (writer != nullptr)
        stream.release(); // the writer owns it now
    EXPECT_TRUE (writer != nullptr && writer->writeFromAudioSampleBuffer (audio, 0, audio.getNumSamples()))
        << target.getFullPathName();
    return target;
}

juce::File encode (const juce::File& sourceWav, const juce::File& target,
                   const juce::StringArray& ffmpegOptions)
{
    juce::StringArray arguments { "-i", sourceWav.getFullPathName() };
    arguments.addArray (ffmpegOptions);
    arguments.add (target.getFullPathName());
    return runFfmpeg (arguments);
}

juce::File runFfmpeg (const juce::StringArray& arguments)
{
    // Nothing that differs from run to run goes into the file, and nobody is asked.
    juce::StringArray line { "ffmpeg", "-nostdin", "-v", "error", "-y" };
    line.addArray (arguments);
    line.insert (line.size() - 1, "-bitexact");

    const juce::File target (arguments[arguments.size() - 1]);
    juce::ChildProcess process;
    const bool isStarted = process.start (line);
    const auto words = isStarted ? process.readAllProcessOutput() : juce::String ("ffmpeg can't be run");
    process.waitForProcessToFinish (60000);
    EXPECT_TRUE (isStarted && process.getExitCode() == 0 && target.getSize() > 0)
        << line.joinIntoString (" ") << "\n"
        << words;
    return target;
}
}
