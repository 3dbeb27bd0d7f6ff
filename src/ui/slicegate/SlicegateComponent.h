#pragma once

#include "ui/panel/ControlPanel.h"
#include "ui/panel/DeckBadge.h"
#include "ui/slicegate/SlicegatePad.h"
#include "ui/widgets/MenuButton.h"

#include <array>

/** A deck's eight Slicegate pads, the name of the one that runs, and the menu that loads and saves all eight. */
class SlicegateComponent : public ControlPanel
{
public:
    /** @param deck   0 to 3 */
    SlicegateComponent (CPlatterdex&, int deck);

    SlicegatePad& pad (int index) noexcept { return *pads[static_cast<size_t> (index)]; }

    void paint (juce::Graphics&) override;

    enum BankItem
    {
        loadAll = 1,
        saveAll,
        clearAll
    };
    void chooseBank (int item);

private:
    void pollMoving() override;

    const int deck;
    DeckBadge badge;
    const PresetFiles bankFiles;
    std::array<SlicegatePad*, padCount> pads {};
    juce::String running;
};
