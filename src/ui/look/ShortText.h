#pragma once

#include <juce_graphics/juce_graphics.h>

/** A text that fits a width: itself, or as much of its beginning as there is room for, and dots. Measures: not for paint. */
juce::String shortText (const juce::String&, const juce::Font&, int width);
