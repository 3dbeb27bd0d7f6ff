#pragma once

#include <juce_core/juce_core.h>

/** A question for the end of a refusal: " Did you mean perform?" with the candidate that is nearest to a mistyped word.
    @returns nothing if none is near */
juce::String didYouMean (const juce::String& word, const juce::StringArray& candidates);
