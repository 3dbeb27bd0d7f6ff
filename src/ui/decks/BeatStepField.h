#pragma once

#include "ui/command/CommandWidget.h"

/** The value of a command that steps through powers of two, in beats: "1/4", "4". The wheel steps it; a click opens the
    list of all. */
class BeatStepField : public juce::Component, public juce::SettableTooltipClient, public CommandWidget
{
public:
    explicit BeatStepField (const juce::String& name);

    static constexpr int steps = 11, oneBeat = 5; ///< the step of one beat

    /** A step, 0 to 10, in beats. */
    static juce::String textOf (int step);

    const juce::String& text() const noexcept { return shown; }

    /** Takes a step, 0 to 10, that was chosen. Set before the first look at the field. */
    std::function<void (int)> onChoose = [] (int) {};

    void poll() override;
    void paint (juce::Graphics&) override;
    void mouseDown (const juce::MouseEvent&) override { openList(); }
    bool keyPressed (const juce::KeyPress&) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;

private:
    void bound() override { poll(); }
    int current() const { return juce::roundToInt (command().value()); }
    void chooseStep (int);
    void stepBy (int);
    void openList();

    juce::String shown;
};
