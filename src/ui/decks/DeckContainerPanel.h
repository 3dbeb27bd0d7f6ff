#pragma once

#include "support/Relaxed.h"
#include "ui/poll/PollingView.h"
#include "ui/widgets/MenuButton.h"

#include <memory>

class CPlatterdex;

/** A seat for a utility panel: its name, which opens the list of all, and the panel below. */
class DeckContainerPanel : public PollingView
{
public:
    static constexpr int contentTop = 24;

    enum class Side
    {
        left,
        right
    };

    /** @param deck   0 to 3
        @param seat   0 to 3, counted from the outside */
    DeckContainerPanel (CPlatterdex&, int deck, Side, int seat);

    /** Changes what the seat shows, and remembers it. @param index   of UtilityPanels */
    void choose (int index);

    int shownPanel() const noexcept { return shown; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void pollCalm() override;
    Relaxed<int8_t>& choice() const;

    CPlatterdex& engine;
    const int deckIndex;
    const Side side;
    const int seat;
    MenuButton title;
    std::unique_ptr<juce::Component> content;
    int shown = -1;
};
