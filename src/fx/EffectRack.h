#pragma once

#include "fx/BandSplit.h"
#include "fx/DeckFilter.h"
#include "fx/EffectSlot.h"

/** A deck's effects: its filter, then three slots in a row that hear the bands whose buttons are on. At creation the slots
    hold Flanger, Phaser and Delay, all off, all bands are on and the filter is neutral.

    Setters run under the callback lock, or on the audio thread; readers on any thread. Values are 0 to 1. */
class EffectRack
{
public:
    static constexpr int slotCount = 3;

    EffectRack();

    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept;

    /** @param slot   0 to 2 */
    PX_AUDIO_THREAD void setFxParameter (int slot, FxParameter, double value) noexcept;
    PX_AUDIO_THREAD void selectFx (int slot, double value) noexcept;

    /** The step of an effect that need not be selected. @param effect   0 to 9 */
    PX_AUDIO_THREAD void setStep (int slot, int effect, double value) noexcept;

    /** A parameter of a slot's selected effect as a display shows it. Not on the audio thread. */
    std::string fxParameterText (int slot, FxParameter parameter) const;

    PX_AUDIO_THREAD void setDryWet (double value) noexcept;    ///< of all three slots
    PX_AUDIO_THREAD void setFrequency (double value) noexcept; ///< of all three slots, 0.5 at rest
    PX_AUDIO_THREAD void setFilter (double value) noexcept;    ///< low-pass below 0.5, high-pass above
    PX_AUDIO_THREAD void setBand (BandSplit::Band, bool isOn) noexcept;

    const EffectSlot& slot (int index) const noexcept { return slots[static_cast<size_t> (index)]; }
    double dryWet() const noexcept { return slot (0).parameter (FxParameter::dryWet); }
    double filterValue() const noexcept { return filterKnob; }
    bool isBandOn (BandSplit::Band band) const noexcept { return bands[static_cast<size_t> (band)]; }

    /** Works in place. NaN and samples far beyond full scale are taken as silence.
        @param bpm   the deck's tempo; 120 is taken for what is none */
    PX_AUDIO_THREAD void process (float* left, float* right, int frames, double bpm) noexcept;

private:
    /** A longer block is worked in pieces of so many frames. */
    static constexpr int longestPiece = 1024;

    void processPiece (float* left, float* right, int frames, double bpm) noexcept;

    DeckFilter filter;
    BandSplit split;
    std::array<EffectSlot, slotCount> slots;
    Relaxed<double> filterKnob { 0.5 };
    std::array<Relaxed<bool>, BandSplit::bandCount> bands { true, true, true };
};
