#pragma once

#include "ui/panel/ControlPanel.h"
#include "ui/smartknob/SmartKnobMenu.h"
#include "ui/widgets/MenuButton.h"

#include <array>

class PXImageRotarySlider;

/** The two SmartKnobs of a deck: what is in them, their position, their switch and their editor. A utility panel of 100 by 166. */
class DeckSmartKnobPanel : public ControlPanel
{
public:
    static constexpr size_t knobs = 2;

    /** @param deck   0 to 3 */
    DeckSmartKnobPanel (CPlatterdex&, int deck);

    SmartKnobMenu& menu (size_t knob) noexcept { return menus[knob]; }

private:
    void pollMoving() override;
    void pollCalm() override;

    const int deck;
    std::array<SmartKnobMenu, knobs> menus;
    std::array<MenuButton*, knobs> names {};
    std::array<PXImageRotarySlider*, knobs> sliders {};
    std::array<bool, knobs> lit {}; ///< knobs that are shown as on
    std::array<juce::String, knobs> shownNames;
};
