#pragma once

#include <juce_core/juce_core.h>

/** A place in a track as minutes, seconds and tenths: "03:07.4". The tenths are cut, not rounded, so that the text
    never runs ahead of the sound. What is not a number is a dash. */
juce::String timeText (double seconds);

/** A speed as its difference from 1 in percent, signed: "+1.25 %". */
juce::String percentText (double speed);
