#pragma once

#include "deck/DeckWorld.h"
#include "instruments/smartknob/SmartKnobs.h"

/** Plays one track after the other on decks A and B, from one to the other by the automatic crossfader.

    The state is the deck on air and the fade that runs (`autoFadeState`). Near the end of the track on air the other deck
    starts and is on air from then on; when the crossfader has reached it, the one that was left stops and asks for its
    next track. */
class Automix
{
public:
    Automix (DeckWorld& w, SmartKnobs& k) noexcept : world (w), smartKnobs (k) {}

    /** Begins with what the decks hold. Message thread. */
    void start();

    /** Leaves the decks as they are; a fade that runs goes on. Message thread. */
    void stop();

    /** Moves a fade, the low bands and the list on by a block's length. Audio thread, before the decks. */
    PX_AUDIO_THREAD void advance (double milliseconds) noexcept;

    /** Starts the other deck near the end of the track on air, from the next block on. Audio thread, after the decks,
        when the block's resync requests have been cleared. */
    PX_AUDIO_THREAD void handOverNearEnd() noexcept;

    /** 0 or 1: the deck on air. */
    Relaxed<int32_t> automixDeck;

    /** Counts how often it went off since there was nothing to begin with. Message thread. */
    int timesWithoutTrack = 0;

private:
    DeckPlayer& deck (int index) noexcept { return *world.decks[static_cast<size_t> (index)]; }
    bool isOn() const noexcept { return world.settings.automixOn != 0; }

    PX_AUDIO_THREAD void moveFade (double milliseconds) noexcept;
    PX_AUDIO_THREAD void swapBass() noexcept;
    PX_AUDIO_THREAD void setSync() noexcept;
    PX_AUDIO_THREAD void keepOnAir() noexcept;
    PX_AUDIO_THREAD void askForTracks (double milliseconds) noexcept;
    PX_AUDIO_THREAD void putOnAir (DeckPlayer&) noexcept;

    DeckWorld& world;
    SmartKnobs& smartKnobs;
    std::array<double, 2> sinceAsked {}; ///< ms
};
