#pragma once

#include "deck/DeckWorld.h"
#include "instruments/envelope/EnvelopeBank.h"
#include "instruments/smartknob/SavedChannel.h"
#include "instruments/smartknob/SmartKnobPreset.h"
#include "mixer/Channel.h"

#include <optional>

/** The decks' SmartKnobs: two a deck, each of which moves up to twenty parameters of the deck along curves of its own.

    Switched on, the first knob of a deck remembers the channel; switched off, the last one puts it back. In between a knob
    holds the parameters of its enabled rows; of two that want the same parameter the second has it. A hand that moves a
    held control takes it over: the knobs let go of it until one of them is switched on or filled anew, and the hand's value
    is the one that stays when they go off. So does that of a control which a hand moves beside them.

    What knobs hold can be seen moving in the channel itself. Indices are a deck, 0 to 3, a knob, 0 or 1, a row, 0 to 19;
    what is beyond them does nothing and reads as off. */
class SmartKnobs
{
public:
    static constexpr int knobsPerDeck = 2, knobCount = deckCount * knobsPerDeck;

    SmartKnobs (DeckWorld&, Channels&);

    //==================================================================================================================
    // Hands. Any thread.

    /** Switches a knob. Switching on needs a track in the deck. */
    void setSmartKnobOn (int deck, int knob, bool on);

    /** @param value   limited to 0 to 1 */
    void setSmartKnobValue (int deck, int knob, double value) noexcept;

    bool isOn (int deck, int knob) const noexcept;
    bool isAnyOn (int deck) const noexcept { return isOn (deck, 0) || isOn (deck, 1); }
    double value (int deck, int knob) const noexcept;

    /** The knob that holds a row's parameter now. @returns -1 for none */
    int holderOf (int deck, int row) const noexcept;

    /** True while a knob of the deck moves a parameter. Of the volume a knob holds `volumeFactor`, beside the fader. */
    bool holds (int deck, ChannelParameter) const noexcept;

    /** The value, 0 to 1, that a held row was given last; also for the rows of the plug-in slot.
        Any thread. @returns nothing for a row that no knob holds */
    PX_AUDIO_THREAD std::optional<double> drivenValue (int deck, int row) const noexcept;

    /** Tells that a hand has just moved a parameter. The caller holds the callback lock. */
    void handMoved (int deck, ChannelParameter) noexcept;

    /** The same for a row of the plug-in slot, whose own values stay as the hand has set them. */
    void handMoved (int deck, SmartKnobRow) noexcept;

    /** Moves a parameter for a part that moves it by itself, as automix does the low bands: a knob that holds it keeps it,
        and beside a knob the value is the one that stays when the knobs go off. Audio thread. */
    PX_AUDIO_THREAD void moveBeside (int deck, ChannelParameter, double value) noexcept;

    //==================================================================================================================
    // Contents. Any thread but the audio thread.

    /** The twenty rows of a knob, for an editor. @param deck, knob   within their ranges */
    EnvelopeBank& bank (int deck, int knob) noexcept { return at (deck, knob).bank; }
    const EnvelopeBank& bank (int deck, int knob) const noexcept { return at (deck, knob).bank; }

    /** The name of the preset that was loaded last. */
    std::string name (int deck, int knob) const;

    /** A copy of a knob's content, to be stored. */
    SmartKnobPreset preset (int deck, int knob) const;

    /** Fills a knob; rows that the preset does not have stay. A knob that is on first puts the channel back, unless the
        deck's other one is on too. @param rows   takes no more than the first so many */
    void loadSmartKnobPreset (int deck, int knob, const SmartKnobPreset&, int rows = SmartKnobRows::count);

    /** Empties a knob. */
    void clear (int deck, int knob) { loadSmartKnobPreset (deck, knob, SmartKnobPreset::empty()); }

    /** Grows with every change of a knob's content. Any thread. */
    uint32_t revision (int deck, int knob) const noexcept;

    //==================================================================================================================
    // The block. Audio thread.

    /** Moves what the knobs of a deck hold to where its knobs stand. Before the channel's first stage. */
    PX_AUDIO_THREAD void run (int deck) noexcept;

private:
    struct Knob
    {
        explicit Knob (const juce::CriticalSection& callbackLock) : bank (SmartKnobRows::count, callbackLock)
        {
        }

        EnvelopeBank bank;
        std::string name;
        Relaxed<uint32_t> loads;
        Relaxed<double> smartKnobValue { 0.0 };
        Relaxed<int8_t> smartKnobOn { 0 };

        /** The state that the last block has driven; the audio thread's. */
        double followedValue = 0.0;
        uint32_t followedRevision = 0;
    };

    /** The rows of one deck. */
    struct Rows
    {
        SavedChannel saved; ///< while a knob is on
        std::array<Relaxed<uint8_t>, SmartKnobRows::count>
            isWithHand {}; ///< a hand has taken it from the knobs
        std::array<Relaxed<double>, SmartKnobRows::count> driven {};
        Relaxed<bool> isDue { false }; ///< to be driven, though no knob has moved
    };

    static constexpr bool isKnob (int deck, int knob) noexcept
    {
        return deck >= 0 && deck < deckCount && knob >= 0 && knob < knobsPerDeck;
    }
    Knob& at (int deck, int knob) const noexcept
    {
        return *knobs[static_cast<size_t> (deck + deckCount * knob)];
    }
    Rows& rowsOf (int deck) noexcept { return rows[static_cast<size_t> (deck)]; }
    const Rows& rowsOf (int deck) const noexcept { return rows[static_cast<size_t> (deck)]; }
    Channel& channelOf (int deck) noexcept { return channels[static_cast<size_t> (deck)]; }

    void captureSmartKnob (int deck, int knob) noexcept;
    void restoreSmartKnob (int deck, int knob) noexcept;
    void takeBackFromHand (int deck) noexcept;
    PX_AUDIO_THREAD bool hasMoved (int deck) noexcept;
    PX_AUDIO_THREAD void drive (int deck, int row, double value) noexcept;

    DeckWorld& world;
    Channels& channels;
    std::array<std::unique_ptr<Knob>, knobCount> knobs;
    std::array<Rows, deckCount> rows;
    mutable std::mutex loading; ///< of loads and names
};
