#pragma once

#include "ui/CommandButton.h"
#include "ui/CommandSlider.h"
#include "ui/LevelMeter.h"
#include "ui/PollingView.h"

#include <array>
#include <memory>

/** The mixer's buses in one line below the decks: headphones, crossfader, master. */
class MixerBar : public PollingView
{
public:
    static constexpr int height = 48;
    static constexpr size_t controlCount = 8;

    explicit MixerBar (CPlatterdex&);

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    struct Layout
    {
        explicit Layout (juce::Rectangle<int> bar);
        std::array<juce::Rectangle<int>, controlCount> labels,
            controls; ///< a control without a label has none
        juce::Rectangle<int> meter;
    };

    void pollMoving() override;

    std::array<std::unique_ptr<CommandSlider>, controlCount> sliders; ///< null where there is a button
    std::array<std::unique_ptr<CommandButton>, controlCount> buttons;
    LevelMeter meter;
};
