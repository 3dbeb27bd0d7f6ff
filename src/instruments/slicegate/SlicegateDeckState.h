#pragma once

#include "deck/DeckWorld.h"
#include "deck/voice/DeckPattern.h"
#include "instruments/envelope/EnvelopeBank.h"
#include "instruments/slicegate/FactoryPresets.h"
#include "support/GainRamp.h"

#include <array>
#include <mutex>

/** The state of a pad as it is shown. */
enum class PadState
{
    idle,
    running,
    queued ///< it follows the running one, or waits for the next even beat
};

/** The eight Slicegate pads of a deck: their contents, and the one that runs.

    A pad holds two curves over a window of four beats. While it runs, its time curve leads the deck's reading back into
    the track and its volume curve gates what is heard; the deck's own place goes on meanwhile (DeckPattern). Time in the
    window passes with the deck's tempo.

    Contents are changed by one thread, the message thread, and read by any; trigger() may be called by any thread. */
class SlicegateDeckState final : public DeckPattern
{
public:
    SlicegateDeckState (DeckWorld&, int deckIndex);

    //==================================================================================================================
    // Playing

    /** A press of a pad. Nothing happens on a deck without a track, or for a pad that is none. Takes the callback lock;
        any thread. */
    void trigger (int pad) noexcept;

    /** Any thread. */
    PadState padState (int pad) const noexcept;

    /** The part of the window that has passed, 0 to 1; 0 for a pad that does not run. Any thread. */
    double padProgress (int pad) const noexcept;

    //==================================================================================================================
    // Contents

    /** Curves and their flags, a row a pad. A change of a row is heard at once. */
    EnvelopeBank& timeCurves() noexcept { return times; }
    EnvelopeBank& volumeCurves() noexcept { return volumes; }

    std::string padName (int pad) const;
    void setPadName (int pad, std::string);

    PlayMode playMode (int pad) const noexcept;
    void setPlayMode (int pad, PlayMode) noexcept;

    /** "Rolling / March": when the pad ends the deck goes on where it would have been without it. */
    bool advanceMode (int pad) const noexcept;
    void setAdvanceMode (int pad, bool) noexcept;

    void load (int pad, const SlicegatePreset&);
    SlicegatePreset preset (int pad) const;

    /** @param presetId   of FactoryPresets; others load "Empty" */
    void loadFactoryPreset (int presetId, int pad);

    /** @returns a sentence for the user if nothing was loaded, else "" */
    std::string importPreset (const juce::File&, int pad);

    /** @returns a sentence for the user if nothing was written, else "" */
    std::string exportPreset (const juce::File&, int pad) const;

    /** Grows with each change of a pad's contents, so that they can be kept and drawn. Any thread. */
    std::uint32_t revision (int pad) const noexcept;

    //==================================================================================================================
    // DeckPattern. Audio thread.

    PX_AUDIO_THREAD void beginBlock() noexcept override;
    PX_AUDIO_THREAD bool isActive() const noexcept override;
    PX_AUDIO_THREAD bool awaitsBeat() const noexcept override { return queuedStartPad >= 0; }
    PX_AUDIO_THREAD void comeToBeat() noexcept override;
    PX_AUDIO_THREAD PatternMove takeMove() noexcept override;
    PX_AUDIO_THREAD void makePiece (Piece&, double step, int frames) noexcept override;

private:
    static constexpr int noPad = -1;

    struct Pad
    {
        Relaxed<int8_t> playMode, advanceMode { 1 };
        Relaxed<std::uint32_t> revision; ///< of name and modes
        std::string name;                ///< under `naming`
    };

    static bool isPad (int pad) noexcept { return pad >= 0 && pad < padCount; }
    Pad& at (int pad) noexcept { return pads[static_cast<size_t> (pad)]; }
    const Pad& at (int pad) const noexcept { return pads[static_cast<size_t> (pad)]; }
    const DeckPlayer& deck() const noexcept { return *world.decks[static_cast<size_t> (deckIndex)]; }

    /** Frames in the direction in which the deck plays, as frames of the file. */
    PX_AUDIO_THREAD double alongDeck (double frames) const noexcept;

    PX_AUDIO_THREAD void start (int pad) noexcept;
    PX_AUDIO_THREAD void stopRunning() noexcept;
    PX_AUDIO_THREAD void restartInBeat (int pad) noexcept;
    PX_AUDIO_THREAD void endPass() noexcept;
    PX_AUDIO_THREAD void makeOffsets (Piece&, double time, double timeStep) noexcept;
    PX_AUDIO_THREAD void makeGains (Piece&, double time, double timeStep) noexcept;
    PX_AUDIO_THREAD void publish() noexcept;

    DeckWorld& world;
    const int deckIndex;

    EnvelopeBank times, volumes;
    std::array<Pad, padCount> pads;
    mutable std::mutex naming;

    // The running pad. Under the callback lock.
    bool running = false;
    bool startedPlaying = false; ///< the deck has played since the pad's start
    double windowLength = 1.0;   ///< four beats in frames of the file
    double elapsed = 0.0;        ///< frames of the file since the window's begin
    int currentPad = 0;
    int nextPad = noPad;                   ///< follows at the end of the window
    Relaxed<int> queuedStartPad { noPad }; ///< waits for the next even beat
    PatternMove move;                      ///< that the deck's own place is yet to make
    EnvelopeCursor timeCursor, volumeCursor;
    GainRamp slicegateGain;

    // As shown
    Relaxed<int> shownPad { noPad }, shownNext { noPad };
    Relaxed<double> shownProgress;
};
