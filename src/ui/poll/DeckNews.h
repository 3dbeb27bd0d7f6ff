#pragma once

#include "support/EngineListener.h"

#include <functional>

class CPlatterdex;

/** Hears what becomes of the track of one deck, for as long as it lives. Message thread. */
class DeckNews : private EngineListener
{
public:
    /** @param deck    0 to 3
        @param heard   called with each event of this deck */
    DeckNews (CPlatterdex&, int deck, std::function<void (EngineEvent)> heard);
    ~DeckNews() override;

    DeckNews (const DeckNews&) = delete;
    DeckNews& operator= (const DeckNews&) = delete;

private:
    void engineEvent (EngineEvent, int index) override;
    void engineMessage (const juce::String&, int) override {}

    CPlatterdex& engine;
    const int deck;
    const std::function<void (EngineEvent)> heard;
};
