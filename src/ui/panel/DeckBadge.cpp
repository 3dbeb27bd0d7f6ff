#include "ui/panel/DeckBadge.h"

#include "ui/panel/PanelPaint.h"

DeckBadge::DeckBadge (CPlatterdex& engine, int deck) : PollingView (Pace::moving), watch (engine, deck)
{
    setInterceptsMouseClicks (false, false);
    setSize (size, size);
}

void DeckBadge::pollMoving()
{
    if (std::exchange (filled, watch->playing) != filled)
        repaint();
}

void DeckBadge::paint (juce::Graphics& g)
{
    PanelPaint::badge (g, getLocalBounds(), watch.deck(), filled);
}
