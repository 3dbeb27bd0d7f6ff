#pragma once

#include <juce_core/juce_core.h>

/** The engine's news for those who show it. A listener may miss one. */
enum class EngineEvent
{
    loadBegan,     ///< index: the deck
    trackLeft,     ///< index: the deck whose former track is gone
    waveformReady, ///< index: the deck has enough audio decoded to show
    trackLoaded,   ///< index: the deck
    loadFailed,    ///< index: the deck
};

/** The outcome of an analysis, or of a hand's work on a grid. */
struct FoundGrid
{
    juce::String path;   ///< of the track
    double bpm = 0.0;    ///< 30 to 250 if it was measured; what a hand has made of it may be beyond
    int confidence = -1; ///< in the grid, 0 to 100; -1 if nobody knows
};

/** Hears the engine's news. Called on the message thread, or on whichever thread pumps an engine that has no
    message loop; never on the audio thread. */
class EngineListener
{
public:
    virtual ~EngineListener() = default;

    virtual void engineEvent (EngineEvent, int index) = 0;

    /** A text of the form "*** Title ***|Line 1|Line 2", to be shown on a deck.
        @param deck   0 to 3 */
    virtual void engineMessage (const juce::String& text, int deck) = 0;

    /** The grid of a track became known or was changed by a hand, in a deck or without one. */
    virtual void gridFound (const FoundGrid& grid) { juce::ignoreUnused (grid); }
};
