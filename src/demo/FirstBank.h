#pragma once

#include <juce_core/juce_core.h>

/** The file of the first bank in a folder of samples. */
juce::File firstBankFile (const juce::File& samples);

/** Synthesises the sampler's first bank into a folder of samples: sixteen WAV files below "First Bank", and the bank. What is
    there already stays as it is. Takes some tenths of a second; any thread but the audio thread.
    @returns one sentence of what went wrong, or nothing */
juce::String writeFirstBank (const juce::File& samples);
