#pragma once

#include <juce_core/juce_core.h>

/** What the engine says to the outside. */
enum class EngineEvent
{
    loadBegan,       ///< index: the deck
    trackLeft,       ///< index: the deck whose former track is gone
    waveformReady,   ///< index: the deck has enough audio decoded to show
    trackLoaded,     ///< index: the deck
    loadFailed,      ///< index: the deck
    browserCommand,  ///< index: the number of a command that moves or loads in a browser
    recorderChanged, ///< index: 1 recording, 0 idle
    askStopAutomix,  ///< index: the deck whose Play was pressed while automix runs
    downbeatSet,     ///< index: the deck whose marks are to be saved
};

/** Hears what the engine says. Called on the message thread, or on whichever thread pumps an engine that has no
    message loop; never on the audio thread. */
class EngineListener
{
public:
    virtual ~EngineListener() = default;

    virtual void engineEvent (EngineEvent, int index) = 0;

    /** A text of the form "*** Title ***|Line 1|Line 2", to be shown on a deck.
        @param deck   0 to 3 */
    virtual void engineMessage (const juce::String& text, int deck) = 0;
};
