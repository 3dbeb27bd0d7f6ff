#pragma once

#include "shared/EncodedFiles.h"

#include <cmath>
#include <random>

/** Short noises on every beat, and softer ones between them, in a WAV file: a tempo that any tracker finds. */
inline juce::File writeDrums (const juce::File& target, double seconds, double bpm, int channels = 2,
                              double rate = 44100.0)
{
    juce::AudioBuffer<float> audio (channels, static_cast<int> (seconds * rate));
    std::mt19937 random (3);
    for (int i = 0; i < audio.getNumSamples(); ++i)
    {
        const auto half = i / rate * bpm / 30.0;
        const auto strength = static_cast<int> (half) % 2 == 0 ? 0.5 : 0.12;
        const auto since = (half - std::floor (half)) * 30.0 / bpm;
        const auto value = strength * std::exp (-since / 0.02) * (random() / 2147483648.0 - 1.0);
        for (int c = 0; c < channels; ++c)
            audio.setSample (c, i, static_cast<float> (value));
    }
    return EncodedFiles::writeWav (audio, rate, target);
}
