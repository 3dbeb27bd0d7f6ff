#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Draws one line, centred, in the current font and colour, in which every figure takes the same room, so that a clock does
    not tremble. */
void drawFigures (juce::Graphics&, const juce::String&, juce::Rectangle<int> area);
