#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A label of 50 by 30 pixels that follows the pointer and says the level and the time of the point that is edited. */
class GraphEnvInfoComponent : public juce::Component
{
public:
    static constexpr int width = 50, height = 30;

    GraphEnvInfoComponent();

    /** Shows two lines beside a place of the parent, inside of it. */
    void show (const juce::String& upper, const juce::String& lower, juce::Point<int> beside);

    const juce::String& text() const noexcept { return upperLine; }

    void paint (juce::Graphics&) override;

private:
    juce::String upperLine, lowerLine;
};
