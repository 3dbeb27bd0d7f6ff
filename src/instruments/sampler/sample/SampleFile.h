#pragma once

#include "instruments/sampler/sample/SampleFacts.h"

#include <juce_core/juce_core.h>

/** Samples as WAV files. Any thread that may block. */
namespace SampleFile
{
/** The rate of the files that the user saves, in Hz. */
constexpr double usualRate = 44100.0;

/** Writes a stereo WAV file of 16 bits with the sample's tempo in an "acid" chunk and its loop in a "smpl" chunk, so that it
    comes back as it was. The file is replaced in one step.
    @param left, right   facts.lengthFrames frames, full scale 1; what is beyond is limited
    @param rate          of the file in Hz, to which the sample is resampled; 0 for its own
    @returns false if it can't be written: then nothing has changed */
bool write (const juce::File&, const float* left, const float* right, const SampleFacts&, double rate);

/** A new file for a sample of a name in a folder: the name, as far as a file can bear it, and a time. */
juce::File nameFor (const juce::File& folder, const juce::String& name, juce::Time);
}
