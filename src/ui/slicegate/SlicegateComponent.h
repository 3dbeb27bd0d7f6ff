#pragma once

#include "ui/panel/ControlPanel.h"
#include "ui/panel/DeckBadge.h"
#include "ui/slicegate/SlicegatePad.h"

#include <array>

/** A deck's eight Slicegate pads, and the name of the one that runs. */
class SlicegateComponent : public ControlPanel
{
public:
    /** @param deck   0 to 3 */
    SlicegateComponent (CPlatterdex&, int deck);

    SlicegatePad& pad (int index) noexcept { return *pads[static_cast<size_t> (index)]; }

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;

    const int deck;
    DeckBadge badge;
    std::array<SlicegatePad*, padCount> pads {};
    juce::String running;
};
