#include "ui/deckviews/TrackPlaces.h"

#include <cmath>

namespace
{
constexpr int beatLoop = 1, manualLoop = 2;

/** The length of a beat loop in frames: 2 to the power of (size - 5) beats. */
double beatLoopFrames (const DeckPlayer& deck)
{
    return deck.bpm > 0.0 ? std::ldexp (deck.sampleRate * 1.875 / deck.bpm, deck.loopSize) : 0.0;
}
}

TrackPlaces TrackPlaces::of (const DeckPlayer& deck)
{
    TrackPlaces places;
    if (deck.loadedFrames < 1)
    {
        places.cues.fill (emptyCue);
        return places;
    }
    for (size_t slot = 0; slot < places.cues.size(); ++slot)
        places.cues[slot] = deck.cues[slot];
    places.currentCue = deck.currentCue;
    if (deck.startPointOn != 0)
        places.startPoint = deck.startPoint.get();
    if (deck.loopInSet != 0)
        places.loopIn = deck.loopIn.get();
    if (deck.loopOutSet != 0)
        places.loopOut = deck.loopOut.get();

    if (deck.loopMode == beatLoop)
        places.loop = Loop { deck.loopStart, deck.loopStart + beatLoopFrames (deck), true };
    else if (places.loopIn.has_value() && places.loopOut.has_value())
        places.loop = Loop { *places.loopIn, *places.loopOut, deck.loopMode == manualLoop };
    return places;
}
