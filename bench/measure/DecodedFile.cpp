#include "measure/DecodedFile.h"

#include <juce_audio_formats/juce_audio_formats.h>

DecodedFile DecodedFile::read (const juce::File& file)
{
    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    const std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (file));
    if (reader == nullptr)
        return {};
    DecodedFile made;
    made.sampleRate = juce::roundToInt (reader->sampleRate);
    made.channels.assign (reader->numChannels,
                          std::vector<float> (static_cast<size_t> (reader->lengthInSamples)));
    std::vector<float*> pointers;
    for (auto& channel : made.channels)
        pointers.push_back (channel.data());
    reader->read (pointers.data(), static_cast<int> (pointers.size()), 0,
                  static_cast<int> (reader->lengthInSamples));
    return made;
}
