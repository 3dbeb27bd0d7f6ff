#pragma once

#include "ui/poll/PollingView.h"

#include <memory>

class CPlatterdex;

/** One command in the list of all: number, name, value, and the control that fits its kind. */
class ParameterRow : public PollingView
{
public:
    explicit ParameterRow (CPlatterdex&);
    ~ParameterRow() override;

    /** Becomes the row of another command. */
    void show (int number);
    int shownCommand() const noexcept { return command; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    struct Layout
    {
        explicit Layout (juce::Rectangle<int> row);
        juce::Rectangle<int> number, name, value, control;
    };

    void pollCalm() override;
    void makeControls();
    void addPressButton (const juce::String& text);
    void addStepButton (const juce::String& text, float value);

    CPlatterdex& engine;
    int command = 0;
    juce::String value;
    std::vector<std::unique_ptr<juce::Component>> controls;
    juce::Slider* slider = nullptr;
};
