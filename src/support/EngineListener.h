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

    /** The tempo of a track became known: it was loaded or analysed, in a deck or without one.
        @param path   of the track
        @param bpm    30 to 250 if it was measured; what a hand has made of it may be beyond */
    virtual void tempoFound (const juce::String& path, double bpm) { juce::ignoreUnused (path, bpm); }
};
