#pragma once

#include "ui/poll/DeckWatch.h"
#include "ui/poll/PollingView.h"

/** The lamp of a deck: its letter on a ground that is filled with its hue while the deck plays. The mouse goes through it. */
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
