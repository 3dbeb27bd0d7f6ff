#include "ui/poll/TrackPlaces.h"

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
        places.loop = Loop { deck.loopStart, deck.loopStart + deck.beatLoopFrames(), true };
    else if (places.loopIn.has_value() && places.loopOut.has_value())
        places.loop = Loop { *places.loopIn, *places.loopOut, deck.loopMode == manualLoop };
    return places;
}
