#pragma once

#include "fx/EffectRack.h"
#include "ui/CommandButton.h"
#include "ui/CommandSlider.h"
#include "ui/PollingView.h"

#include <array>
#include <memory>

/** A deck's effects in one line: the filter, three slots, and what all three share: dry/wet and the bands they hear.

    A slot's wide button turns its effect on and off and bears its name; the narrow one beside it opens the list of all
    effects; the knob's value stands behind it in the effect's own words. */
class EffectRow : public PollingView
{
public:
    static constexpr int height = 24;
    static constexpr size_t slotCount = EffectRack::slotCount, bandCount = BandSplit::bandCount;

    /** @param deck   0 to 3 */
    EffectRow (CPlatterdex&, int deck);

    /** Puts a kind of effect into a slot. @param kind   0 to 9, in the selector's order */
    void choose (size_t slot, int kind);

    /** What stands behind a slot's knob. */
    const juce::String& parameterText (size_t slot) const { return slots[slot].shown; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    struct Layout
    {
        explicit Layout (juce::Rectangle<int>);
        struct Slot
        {
            juce::Rectangle<int> on, list, parameter, text;
        };
        std::array<Slot, slotCount> slots;
        std::array<juce::Rectangle<int>, bandCount> bands;
        juce::Rectangle<int> filterLabel, filter, dryWetLabel, dryWet;
    };

    struct Slot
    {
        int select = 0; ///< command
        std::unique_ptr<CommandButton> on;
        std::unique_ptr<juce::TextButton> list;
        std::unique_ptr<CommandSlider> parameter;
        juce::String shown;
    };

    void pollMoving() override;
    void openList (size_t slot);

    CPlatterdex& engine;
    CommandSlider filter, dryWet;
    std::array<Slot, slotCount> slots;
    std::array<std::unique_ptr<CommandButton>, bandCount> bands;
};
