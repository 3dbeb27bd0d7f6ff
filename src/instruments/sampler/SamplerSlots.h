#pragma once

#include "instruments/sampler/SamplerSlot.h"

#include <array>

/** The sixteen pads and the preview of the loop recorder, and the few operations on them that must not tear. */
class SamplerSlots
{
public:
    static constexpr int padCount = 16, preview = 16, slotCount = 17;

    explicit SamplerSlots (DeckWorld& w) : world (w) {}

    /** The slot, or null for an index outside 0 to 16. */
    SamplerSlot* find (int index) noexcept
    {
        return index >= 0 && index < slotCount ? &slots[static_cast<size_t> (index)] : nullptr;
    }

    /** Silences a slot and returns what belongs to the sample to the defaults; its texts and its memory stay. Any thread that may block. */
    void clear (SamplerSlot&);

    /** Silences a slot, its sound fading out, so that its memory may change. Any thread that may block. */
    void silence (SamplerSlot&);

    /** Publishes a sample whose frames are in the buffer: from now on it can be played. Import thread. */
    void publish (SamplerSlot&, const SampleFacts&, SamplerVoice::Stretcher&);

    /** Takes a stretcher of makeStretcher() in exchange for the slot's own; none changes nothing. Import thread. */
    void changeStretcher (SamplerSlot&, SamplerVoice::Stretcher& next);

    /** The numbers of a slot's sample, all of one moment. Any thread that may block. */
    SampleFacts factsOf (const SamplerSlot&) const;

    /** The slot as its voice sees it in a block. */
    SamplerVoice::Block blockOf (SamplerSlot&, const SamplerClock&) noexcept;

    /** A stretcher for the engine's rate, none without memory. Any thread that may block. */
    SamplerVoice::Stretcher makeStretcher() const;

    DeckWorld& world;
    Relaxed<double> stretchRate { 44100.0 }; ///< Hz, that the engine was prepared for
    int jumpsLeft = 0;                       ///< see SamplerVoice::Block; under the callback lock
    std::array<SamplerSlot, slotCount> slots;
};
