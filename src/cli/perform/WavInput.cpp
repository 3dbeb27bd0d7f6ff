#include "cli/perform/WavInput.h"

WavInput::WavInput (const juce::File& file, double sampleRate, int maxChannels)
{
    const auto path = file.getFullPathName();
    if (file.isDirectory())
        fault = path + " can't be read: it is a folder.";
    else if (!file.existsAsFile())
        fault = path + " does not exist.";
    if (fault.isNotEmpty())
        return;

    auto stream = file.createInputStream();
    if (stream != nullptr)
        reader.reset (juce::WavAudioFormat().createReaderFor (stream.release(), true));
    if (reader == nullptr || reader->numChannels < 1)
        fault = path + " is not a WAV file.";
    else if (static_cast<int> (reader->numChannels) > maxChannels)
        fault = path + " has " + juce::String (reader->numChannels) + " channels, more than the "
                + juce::String (maxChannels) + " inputs.";
    else if (reader->sampleRate != sampleRate)
        fault = path + " has a rate of " + juce::String (reader->sampleRate) + " Hz, the run has "
                + juce::String (sampleRate) + " Hz.";
}

void WavInput::read (juce::AudioBuffer<float>& inputs, juce::int64 firstFrame)
{
    if (firstFrame >= reader->lengthInSamples)
        return;
    juce::AudioBuffer<float> filled (inputs.getArrayOfWritePointers(), static_cast<int> (reader->numChannels),
                                     inputs.getNumSamples());
    reader->read (&filled, 0, filled.getNumSamples(), firstFrame, true, true);
}
