#pragma once

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>

/** A WAV file that feeds the engine's inputs. */
class WavInput
{
public:
    /** @param sampleRate    the rate that it must have, in Hz
        @param maxChannels   as many as it may have. A fault is in error(). */
    WavInput (const juce::File&, double sampleRate, int maxChannels);

    /** Fills the first channels with the frames from one on; silence after the end. The other channels stay. */
    void read (juce::AudioBuffer<float>&, juce::int64 firstFrame);

    /** One sentence, or empty. */
    const juce::String& error() const noexcept { return fault; }

private:
    std::unique_ptr<juce::AudioFormatReader> reader;
    juce::String fault;
};
