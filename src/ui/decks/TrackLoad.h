#pragma once

#include "ui/poll/DeckWatch.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <span>

/** Loads tracks for a hand. Message thread. */
namespace TrackLoad
{
/** Loads a track onto a deck. While the deck plays the user is asked first, unless the setting refuses such loads or nobody can
    be asked. @param asker   without it, when the answer comes, nothing is loaded */
void onto (CPlatterdex&, const DeckWatch&, const juce::File&, juce::Component& asker);

/** The deck that is free for a track: the first empty one, else the first that stands still. @returns -1 if all play */
int freeDeck (std::span<const DeckWatch> decks);
}
