#include "ui/poll/TrackPlaces.h"

TrackPlaces TrackPlaces::of (const DeckPlayer& deck)
{
    TrackPlaces places;
    if (deck.track.loadedFrames < 1)
    {
        places.cues.fill (emptyCue);
        return places;
    }
    for (size_t slot = 0; slot < places.cues.size(); ++slot)
        places.cues[slot] = deck.marks.cues[slot];
    places.currentCue = deck.play.currentCue;
    if (deck.marks.startPointOn != 0)
        places.startPoint = deck.marks.startPoint.get();
    if (deck.loops.inSet != 0)
        places.loopIn = deck.loops.in.get();
    if (deck.loops.outSet != 0)
        places.loopOut = deck.loops.out.get();

    if (deck.loops.mode == beatLoop)
        places.loop = Loop { deck.loops.start, deck.loops.start + deck.beatLoopFrames(), true };
    else if (places.loopIn.has_value() && places.loopOut.has_value())
        places.loop = Loop { *places.loopIn, *places.loopOut, deck.loops.mode == manualLoop };
    return places;
}
