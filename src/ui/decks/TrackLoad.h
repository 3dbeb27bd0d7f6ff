#pragma once

#include "ui/poll/DeckWatch.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <span>

/** Loads tracks for a hand. Message thread. */
namespace TrackLoad
{
/** The answer of a deck to a track that is about to be let go over it. */
enum class Consent
{
    given,  ///< the deck is free, or the hand holds Shift
    asked,  ///< the deck plays: the user is asked first
    refused ///< the deck plays, and the setting locks it or nobody can be asked
};

/** @param isHeld   Shift is held: a deck that plays is loaded at once */
Consent consentOf (const CPlatterdex&, const DeckWatch&, bool isHeld = false);

/** Loads a track onto a deck by its consent.
    @param asker    without it, when the answer comes, nothing is loaded
    @param isHeld   as for consentOf() */
void onto (CPlatterdex&, const DeckWatch&, const juce::File&, juce::Component& asker, bool isHeld = false);

/** Loads tracks onto decks in their order: the first one onto a deck by its consent, each further one onto the next deck that
    stands still, round from that one on. Files that are no tracks are passed over.
    @param first   0 to 3 @param isHeld   for the first
    @returns how many tracks found no deck */
int inOrder (CPlatterdex&, std::span<const DeckWatch> decks, const juce::Array<juce::File>&, int first,
             juce::Component& asker, bool isHeld = false);

/** The deck that is free for a track: the first empty one, else the first that stands still. @returns -1 if all play */
int freeDeck (std::span<const DeckWatch> decks);
}
