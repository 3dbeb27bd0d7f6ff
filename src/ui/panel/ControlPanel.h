#pragma once

#include "ui/command/CommandWidget.h"
#include "ui/panel/ControlSpec.h"
#include "ui/panel/HeldControl.h"
#include "ui/poll/PollingView.h"

#include <concepts>
#include <memory>
#include <span>
#include <vector>

class CPlatterdex;

/** A view made of controls that stand in tables. It makes them, polls them at each tick and paints their words; a command
    that has no function yet gets no control. */
class ControlPanel : public PollingView
{
public:
    explicit ControlPanel (CPlatterdex&);
    ~ControlPanel() override;

    /** A word as it is painted. */
    struct Label
    {
        juce::String text;
        juce::Rectangle<int> area;
        juce::Justification justification = juce::Justification::centred;
    };

    const std::vector<Label>& words() const noexcept { return labels; }

    void paint (juce::Graphics&) override;
    void paintOverChildren (juce::Graphics&) override;

protected:
    /** Makes a table's controls. @param deck   0 to 3, or -1 for controls that belong to none
        @param place   added to each area */
    void addControls (std::span<const PlacedControl>, int deck, juce::Point<int> place = {});

    /** Makes one control. @returns null if its command has no function yet */
    juce::Component* addControl (const ControlSpec&, int deck, juce::Rectangle<int> area);

    /** Takes a control that the panel shall own, show and, if it is a CommandWidget, poll. */
    template <std::derived_from<juce::Component> Control>
    Control& own (std::unique_ptr<Control> made)
    {
        auto& control = *made;
        addAndMakeVisible (control);
        controls.push_back (std::move (made));
        if constexpr (std::derived_from<Control, CommandWidget>)
            polled.push_back (&control);
        return control;
    }

    /** Lets a control show that a SmartKnob holds its parameter. Nothing happens for a command that no knob can hold. */
    void markWhenHeld (const juce::Component&, int command);

    void addLabel (const juce::String&, juce::Rectangle<int>,
                   juce::Justification = juce::Justification::centred);
    void clearLabels() { labels.clear(); }

    /** Lets every control read the engine. */
    void pollControls();

    void pollMoving() override { pollControls(); }

    CPlatterdex& engine;

private:
    std::vector<std::unique_ptr<juce::Component>> controls;
    std::vector<CommandWidget*> polled;
    std::vector<Label> labels;

    struct Markable
    {
        const juce::Component* control;
        HeldControl held;
        bool isMarked = false;
    };
    std::vector<Markable> markables;
};
