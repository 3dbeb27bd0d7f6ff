#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

class CPlatterdex;

/** A deck's pitch fader, upright as on a turntable: down is faster. A double click returns it to its centre. */
class PitchFader : public juce::Slider
{
public:
    /** @param deck   0 to 3 */
    PitchFader (CPlatterdex&, int deck);

    /** Follows the engine, unless a hand is on it. */
    void poll();

    void mouseDoubleClick (const juce::MouseEvent&) override;
    void paint (juce::Graphics&) override;

private:
    void valueChanged() override;

    CPlatterdex& engine;
    const int pitch, reset;
};
