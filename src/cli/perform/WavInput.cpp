#include "cli/perform/WavInput.h"

#include "support/language/Translate.h"

WavInput::WavInput (const juce::File& file, double sampleRate, int maxChannels)
{
    const auto path = file.getFullPathName();
    if (file.isDirectory())
        fault = tr ("%1 can't be read: it is a folder.", path);
    else if (!file.existsAsFile())
        fault = tr ("%1 does not exist.", path);
    if (fault.isNotEmpty())
        return;

    auto stream = file.createInputStream();
    if (stream != nullptr)
        reader.reset (juce::WavAudioFormat().createReaderFor (stream.release(), true));
    if (reader == nullptr || reader->numChannels < 1)
        fault = tr ("%1 is not a WAV file.", path);
    else if (static_cast<int> (reader->numChannels) > maxChannels)
        fault = tr ("%1 has %2 channels, more than the %3 inputs.", path, reader->numChannels, maxChannels);
    else if (reader->sampleRate != sampleRate)
        fault = tr ("%1 has a rate of %2 Hz, the run has %3 Hz.", path, reader->sampleRate, sampleRate);
}

void WavInput::read (juce::AudioBuffer<float>& inputs, juce::int64 firstFrame)
{
    if (firstFrame >= reader->lengthInSamples)
        return;
    juce::AudioBuffer<float> filled (inputs.getArrayOfWritePointers(), static_cast<int> (reader->numChannels),
                                     inputs.getNumSamples());
    reader->read (&filled, 0, filled.getNumSamples(), firstFrame, true, true);
}
