#pragma once

#include "ui/look/SMLookAndFeel.h"

struct GridNumbers;

/** Type and grounds as every panel draws them. */
namespace PanelPaint
{
void label (juce::Graphics&, const juce::String&, juce::Rectangle<int>,
            juce::Justification = juce::Justification::centred);
void value (juce::Graphics&, const juce::String&, juce::Rectangle<int>,
            juce::Justification = juce::Justification::centred, float size = SMLookAndFeel::valueSize);

/** A deck's letter on a ground of its hue. @param deck   0 to 3 */
void badge (juce::Graphics&, juce::Rectangle<int>, int deck, bool filled);

juce::String letterOf (int deck);

/** Stands for a value that nobody knows. */
juce::String dash();

/** A tempo with two decimals, or a dash: without a grid nobody knows how fast the music is. */
juce::String bpm (const GridNumbers&, double tempoBpm);
}
