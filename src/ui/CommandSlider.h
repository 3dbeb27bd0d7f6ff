#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

class CPlatterdex;

/** A knob or fader of a command of values from 0 to 1. A double click returns it to its rest. */
class CommandSlider : public juce::Slider
{
public:
    enum class Shape
    {
        knob,
        upright,
        level
    };

    /** @param number   of the command
        @param rest     the value a double click returns to, and knobs are drawn from */
    CommandSlider (CPlatterdex&, int number, Shape, double rest);

    /** Follows the engine, unless a hand is on it. */
    void poll();

    int commandNumber() const noexcept { return number; }

private:
    void valueChanged() override;

    CPlatterdex& engine;
    const int number;
};
