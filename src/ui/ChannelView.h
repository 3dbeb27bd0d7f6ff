#pragma once

#include "ui/CommandButton.h"
#include "ui/CommandSlider.h"
#include "ui/LevelMeter.h"
#include "ui/PollingView.h"

#include <array>
#include <memory>

/** A deck's strip of the mixer: gain and three bands with their kills, cue to the headphones, the crossfader's side,
    Punch and Cut, fader and level. */
class ChannelView : public PollingView
{
public:
    static constexpr int width = 252, minimumHeight = 108;
    static constexpr size_t columns = 4;

    /** @param deck   0 to 3 */
    ChannelView (CPlatterdex&, int deck);

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    struct Layout
    {
        explicit Layout (juce::Rectangle<int>);
        std::array<juce::Rectangle<int>, columns> labels, knobs, upperButtons, lowerButtons;
        juce::Rectangle<int> fader, meter;
    };

    void pollMoving() override;

    std::array<std::unique_ptr<CommandSlider>, columns> knobs;
    std::array<std::unique_ptr<CommandButton>, columns> upperButtons, lowerButtons;
    CommandSlider fader;
    LevelMeter meter;
};
