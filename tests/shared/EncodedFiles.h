#pragma once

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_core/juce_core.h>

/** Audio files for tests, made on the spot; the encoded ones with the ffmpeg command line. */
namespace EncodedFiles
{
enum class WavSamples
{
    int16,
    float32
};

/** Deterministic noise that lossy codecs keep well: most of its energy lies below 1.5 kHz, each channel is another, and
    a click of one frame stands at every half second. Peaks stay within +-0.9.
    @param sampleRate in Hz; sets the filter and the place of the clicks */
juce::AudioBuffer<float> makeNoise (int channels, int frames, double sampleRate);

/** Writes a WAV file over what is there. @returns the target; a failure fails the test. */
juce::File writeWav (const juce::AudioBuffer<float>& audio, double sampleRate, const juce::File& target,
                     WavSamples samples = WavSamples::int16);

/** Encodes a WAV file into the kind that the target's extension names.
    @param ffmpegOptions  between input and output, such as { "-c:a", "libmp3lame", "-b:a", "320k" }
    @returns the target; a failure fails the test with ffmpeg's words. */
juce::File encode (const juce::File& sourceWav, const juce::File& target,
                   const juce::StringArray& ffmpegOptions = {});

/** Runs ffmpeg with any arguments, quietly and overwriting; the last argument is the target, which is returned. */
juce::File runFfmpeg (const juce::StringArray& arguments);
}
