#pragma once

#include "fx/EffectRack.h"
#include "ui/panel/ControlPanel.h"
#include "ui/panel/DeckBadge.h"
#include "ui/widgets/MenuButton.h"
#include "ui/widgets/PXFxSlider.h"

#include <array>

/** A deck's effects: the bands that they hear, filter and dry/wet for all of them, and three slots, a row each: its switch,
    what is in it, the knob and the knob's value in the effect's own words. */
class Fx1DeckComponent : public ControlPanel
{
public:
    static constexpr size_t slotCount = EffectRack::slotCount;

    /** @param deck   0 to 3 */
    Fx1DeckComponent (CPlatterdex&, int deck);

    /** Puts a kind of effect into a slot. @param kind   0 to 9, in the selector's order */
    void choose (size_t slot, int kind);

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;

    DeckBadge badge;
    std::array<int, slotCount> selectors {};     ///< commands
    std::array<MenuButton*, slotCount> names {}; ///< what is in the slot; opens the list of all
    std::array<PXFxSlider*, slotCount> knobs {};
    std::array<juce::String, slotCount> shown; ///< the knobs' values
};
