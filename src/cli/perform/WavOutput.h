#pragma once

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>

/** A WAV file of 32-bit floats that is written while it is rendered. It stands beside its place under another name until
    finish(); without that nothing is left of it. Above 4 GB it becomes an RF64 file. */
class WavOutput
{
public:
    /** @param target   replaced at the end. A fault is in error(). */
    WavOutput (const juce::File& target, double sampleRate, int numChannels);

    /** @param channels   at least as many as the file has. @returns false, with error() set, when the disk is full */
    bool write (const float* const* channels, int frames);

    /** Completes the file and puts it in its place. @returns false with error() set */
    bool finish();

    /** One sentence, or empty. */
    const juce::String& error() const noexcept { return fault; }

private:
    bool fail (const juce::String& reason);

    const juce::File target;
    std::unique_ptr<juce::TemporaryFile> part;
    std::unique_ptr<juce::AudioFormatWriter> writer;
    juce::FileOutputStream* stream = nullptr; ///< the writer's
    juce::String fault;
};
