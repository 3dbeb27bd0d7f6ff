#pragma once

#include "ui/widgets/PXImageRotarySlider.h"

/** The knob of an effect slot's parameter. It takes its name and its text from the effect in the slot.

    Where it is higher than its knob, the value stands below it, and the effect's name above if there is room for both. */
class PXFxSlider : public PXImageRotarySlider
{
public:
    static constexpr int slotCount = 3;

    explicit PXFxSlider (const juce::String& name = {});

    /** @param group   0 to 3, the deck's
        @param slot    0 to 2 */
    void bindSlot (CPlatterdex&, int group, int slot);

    void poll() override;

    const juce::String& effectName() const noexcept { return shownName; }
    const juce::String& valueText() const noexcept { return shownText; }

    /** The word for what the effect in the slot lets the knob change: "TIME". */
    const char* parameterName() const noexcept;

    void paint (juce::Graphics&) override;

protected:
    juce::Rectangle<int> knobBounds() const override;
    juce::String valueWords() const override;

private:
    CommandBinding select;
    juce::String shownName, shownText;
};
