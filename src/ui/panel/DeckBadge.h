#pragma once

#include "ui/poll/DeckWatch.h"
#include "ui/poll/PollingView.h"

/** A deck's letter on a ground of its hue, which is filled while the deck plays. */
class DeckBadge : public PollingView
{
public:
    static constexpr int size = 20;

    /** @param deck   0 to 3 */
    DeckBadge (CPlatterdex&, int deck);

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;

    const DeckWatch watch;
    bool filled = false;
};
