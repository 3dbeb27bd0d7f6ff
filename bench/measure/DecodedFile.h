#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** A file of plain samples, decoded whole, channels apart. */
struct DecodedFile
{
    int sampleRate = 0; ///< 0 if the file can't be read
    std::vector<std::vector<float>> channels;

    int frames() const { return channels.empty() ? 0 : static_cast<int> (channels.front().size()); }
    double seconds() const { return sampleRate > 0 ? static_cast<double> (frames()) / sampleRate : 0.0; }

    static DecodedFile read (const juce::File&);
};
