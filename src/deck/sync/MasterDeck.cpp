#include "deck/sync/MasterDeck.h"

void MasterDeck::choose (DeckWorld& world, const DeckPlayer& changed) noexcept
{
    if (world.isStandalone == 0)
        return;

    const DeckPlayer* otherRunning = nullptr;
    for (const auto& deck : world.decks)
        if (deck != nullptr && deck.get() != &changed && deck->isPlaying() && !deck->isAtEnd()
            && otherRunning == nullptr)
            otherRunning = deck.get();

    if (changed.play.on == 0)
    {
        if (otherRunning != nullptr)
            world.settings.masterDeck = static_cast<int8_t> (otherRunning->index);
    }
    else if (otherRunning == nullptr && !changed.isEmpty())
    {
        world.settings.masterDeck = static_cast<int8_t> (changed.index);
    }
}
