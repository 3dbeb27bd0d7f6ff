#pragma once

#include "deck/DeckPlayer.h"
#include "settings/EngineSettings.h"
#include "support/CallbackLock.h"
#include "support/Clock.h"
#include "support/EngineRequests.h"
#include "support/ListenerList.h"
#include "support/NoiseTable.h"
#include "support/Pacing.h"

#include <array>
#include <functional>
#include <memory>

/** All that the four decks share with each other and with the engine that owns them. */
struct DeckWorld
{
    DeckWorld (const juce::CriticalSection& callback, EngineSettings& s, ListenerList& l, Pacing& p,
               MillisecondClock c)
        : callbackLock (callback),
          settings (s),
          listeners (l),
          pacing (p),
          clock (std::move (c))
    {
    }

    const juce::CriticalSection& callbackLock; ///< the host's, around each audio block
    EngineSettings& settings;
    ListenerList& listeners;
    Pacing& pacing;
    const MillisecondClock clock;
    EngineRequests requests; ///< to the engine, which serves them

    /** The folder of the analysis files; without one nothing is stored. Set before the first load. */
    juce::File beatmarks;

    std::array<std::unique_ptr<DeckPlayer>, deckCount> decks;

    Relaxed<double> engineRate { 44100.0 }; ///< Hz
    Relaxed<double> hostBpm { 120.0 };
    Relaxed<double> pitchRange { 0.16 };
    Relaxed<int8_t> isStandalone; ///< sync follows the master deck (1) or the host (0)

    /** Measures the tempo of a deck's track anew near one in BPM, on a thread of its own. Set by the decks' loaders. */
    std::function<void (int deck, double nearBpm)> measureTempo = [] (int, double) {};

    /** Constants of the running block: exp(-1/x) with x the time in samples. */
    double smoothing5ms = 0.0, decay100ms = 0.0;

    NoiseTable noise;

    VoiceWorkspace voiceWork;

    /** The deck, or null for an index outside 0 to 3. */
    DeckPlayer* deck (int index) noexcept
    {
        return index >= 0 && index < deckCount ? decks[static_cast<size_t> (index)].get() : nullptr;
    }

    DeckSetup& setup (const DeckPlayer& deck) noexcept
    {
        return settings.deckSetup[static_cast<size_t> (deck.index)];
    }

    /** True if a deck plays through its stretcher, which reads ahead of what is heard. Without key lock the reader makes the
        tempo, and key tuning has no effect. */
    bool isStretched (const DeckPlayer& deck) const noexcept
    {
        return deck.voice.hasStretcher() && settings.bypassStretcher == 0 && deck.tempo.keyLock != 0
               && deck.play.on != 0 && deck.play.followsRecord == 0 && !deck.isHeld();
    }

    /** Asks the engine to save a deck's analysis soon. Any thread, also the audio thread. */
    PX_AUDIO_THREAD void requestSave (const DeckPlayer& deck) noexcept
    {
        requests.ask (EngineRequest::saveAnalysis, deck.index);
    }

    void setPitchRange (int index) noexcept { pitchRange = pitchRangeOf (index); }
};
