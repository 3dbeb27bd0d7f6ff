#include "ui/poll/DeckNews.h"

#include "engine/CPlatterdex.h"

DeckNews::DeckNews (CPlatterdex& e, int d, std::function<void (EngineEvent)> h)
    : engine (e),
      deck (d),
      heard (std::move (h))
{
    engine.listeners.add (*this);
}

DeckNews::~DeckNews()
{
    engine.listeners.remove (*this);
}

void DeckNews::engineEvent (EngineEvent event, int index)
{
    if (index == deck)
        heard (event);
}
