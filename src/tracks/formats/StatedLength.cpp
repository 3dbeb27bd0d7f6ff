#include "tracks/formats/StatedLength.h"

#include <juce_audio_formats/juce_audio_formats.h>

namespace
{
/** Bytes from which a size is no statement but the place of one. */
constexpr double unstatedBytes = 2147418112.0;

template <typename Format>
double secondsBy (const juce::File& file)
{
    auto input = file.createInputStream();
    if (input == nullptr)
        return 0.0;
    const std::unique_ptr<juce::AudioFormatReader> reader (Format().createReaderFor (input.release(), true));
    if (reader == nullptr || !(reader->sampleRate > 0.0))
        return 0.0;
    const auto frames = static_cast<double> (reader->lengthInSamples);
    const auto bytes = frames * reader->numChannels * reader->bitsPerSample / 8.0;
    return bytes < unstatedBytes ? frames / reader->sampleRate : 0.0;
}
}

double statedSeconds (const juce::File& file, double tagged)
{
    if (file.hasFileExtension ("wav"))
        return secondsBy<juce::WavAudioFormat> (file);
    if (file.hasFileExtension ("aif;aiff"))
        return secondsBy<juce::AiffAudioFormat> (file);
    return file.hasFileExtension ("flac") ? tagged : 0.0;
}
