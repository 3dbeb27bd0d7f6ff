#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

class CPlatterdex;

/** Bars of levels from 0 to 1, one for each of the engine's readable numbers, 60 dB long. Upright if it is higher than
    wide. A bar at full scale is red. */
class LevelMeter : public juce::Component
{
public:
    LevelMeter (CPlatterdex&, std::vector<int> numbers, juce::Colour);

    /** Reads the levels, and paints them if they look different. */
    void poll();

    void paint (juce::Graphics&) override;

    /** The lengths of the bars in pixels. */
    const std::vector<int>& lengths() const noexcept { return shown; }

private:
    CPlatterdex& engine;
    const std::vector<int> numbers;
    const juce::Colour colour;
    std::vector<int> shown;
};
