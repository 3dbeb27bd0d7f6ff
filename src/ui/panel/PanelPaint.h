#pragma once

#include "ui/look/SMLookAndFeel.h"

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

/** What stands for a value that nobody knows. */
juce::String dash();
}
