#pragma once

#include "timecode/deckmode/ScopeImage.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** Shows the phase picture of a deck's input: left across, right upwards. */
class TimecodeCalibrationScope : public juce::Component, public juce::SettableTooltipClient
{
public:
    TimecodeCalibrationScope();

    void show (const ScopeImage&);
    void paint (juce::Graphics&) override;

private:
    ScopeImage shown;
};
