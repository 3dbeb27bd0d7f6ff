#pragma once

#include "deck/DeckWorld.h"
#include "timecode/deckmode/InputTap.h"
#include "timecode/deckmode/RecordServo.h"

#include <array>
#include <atomic>
#include <memory>
#include <optional>

/** One deck under a control record: the way from its input to its speed and place.

    Settings stand in the deck's DeckSetup. While timecodeOn the record moves the deck: each frame of input becomes one
    speed of the same block; in absolute mode the deck is kept at the needle's place. In the zone at the medium's end the
    deck goes on by itself until the needle comes back. The decoder is made off the audio thread and handed over. */
class TimecodeDeck
{
public:
    TimecodeDeck (DeckWorld&, int deckIndex);
    ~TimecodeDeck();

    /** Reads the deck's input of this block and moves the deck by it. Before the deck is rendered; audio thread. */
    PX_AUDIO_THREAD void feed() noexcept;

    /** Makes the decoder that the settings ask for, when feed() has asked for it. Takes up to some tens of milliseconds; any
        thread that may block. */
    void renewDecoder();

    //==================================================================================================================
    // The hand's side. Any thread but the audio thread; take the callback lock.

    enum class Mode
    {
        internal,
        relative,
        absolute
    };

    Mode mode() const noexcept;
    void setMode (Mode);

    /** Plays the input itself through the deck's channel. The record lets the deck go, which stops if that one played it. */
    void setThru (bool on);
    bool isThru() const noexcept;

    /** Chooses a record by its index among timecodeBrands(); what was learnt of another is forgotten. */
    void setBrand (int brand);

    /** Measures the carrier over one turn of a platter, which is then the record's nominal speed; without a signal the
        calibration returns to 1. */
    void learn();

    //==================================================================================================================
    // Readings of the record. Any thread, no lock.

    struct Status
    {
        bool isListening = false; ///< the input is decoded
        bool hasSignal = false;
        bool isPlaceKnown = false;
        bool isInControlZone = false;
        bool isLearning = false;
        double speed = 0;   ///< 1 nominal
        double seconds = 0; ///< of the medium, if isPlaceKnown
        float quality = 0;  ///< 0 to 1
        float level = 0;    ///< peak of the carrier at nominal speed, before GAIN; 0 before one was heard
        float noise = 0;    ///< level against the carrier's

        /** Cables as they were found to be plugged. */
        bool isExchanged = false, isLeftInverted = false, isRightInverted = false;
    };
    Status status() const noexcept;

    /** Keeps the input decoded while somebody watches, also in internal mode. Calls come in pairs. */
    void addWatcher() noexcept { ++watchers; }
    void removeWatcher() noexcept { --watchers; }

    InputTap tap;

private:
    struct Seat;

    /** Gives the deck back to its own tempo; under the callback lock. */
    void leaveRecord (DeckPlayer&) noexcept;
    PX_AUDIO_THREAD bool isSeatCurrent() const noexcept;
    PX_AUDIO_THREAD void letGo() noexcept;
    PX_AUDIO_THREAD void takeHold() noexcept;
    PX_AUDIO_THREAD void decode() noexcept;
    PX_AUDIO_THREAD float inputGain() const noexcept;
    PX_AUDIO_THREAD bool isAudible (float left, float right, float threshold, float decay) noexcept;
    PX_AUDIO_THREAD void followZone (double seconds) noexcept;
    PX_AUDIO_THREAD void alignToRecord() noexcept;
    PX_AUDIO_THREAD void waitInLeadIn (double endTarget) noexcept;
    PX_AUDIO_THREAD void moveDeck() noexcept;
    PX_AUDIO_THREAD void learnFrom (double startTravelled) noexcept;
    PX_AUDIO_THREAD void publish() noexcept;

    DeckWorld& world;
    const int index;
    DeckPlayer* deck = nullptr; ///< of this block
    std::unique_ptr<Seat> seat; ///< the decoder; changes under the callback lock

    static constexpr int longestBlock = 16384;
    std::array<float, longestBlock> speeds {};
    int frames = 0;
    float speedNow = 0, envelope = 0;
    std::optional<double> place; ///< seconds of the track at the block's end, below 0 in the lead-in
    RecordServo servo;
    bool holds = false;
    double takeOver = 0; ///< speed that is still to fade out since the record took hold
    double stillSeconds = 0;
    int zoneFrames = 0;  ///< since the needle entered the zone
    int learnFrames = 0; ///< still to be measured
    double learnTravelled = 0;
    int learnHeard = 0;

    std::atomic<int> watchers { 0 };
    struct Shown
    {
        Relaxed<int8_t> isListening, hasSignal, isPlaceKnown, isInControlZone, isLearning, wiring;
        Relaxed<float> quality, level, noise;
        Relaxed<double> speed, seconds;
    } shown;
    Relaxed<int8_t> controlZone, learnAsked;
};
