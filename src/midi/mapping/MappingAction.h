#pragma once

#include "engine/CPlatterdex.h"
#include "midi/mapping/MidiMapping.h"
#include "midi/mapping/RowPickup.h"

/** Carries out what the table makes of messages. One thread; others may change the table meanwhile. */
class MidiMappingDispatcher
{
public:
    MidiMappingDispatcher (CPlatterdex&, const MidiMapping&);

    /** Acts on every row of a message, in order. @param value   0 to 127 */
    void dispatchMidiMapping (int status, int data, int value);

    /** True if of several messages of this kind only the last matters: a controller whose rows all follow a fader, and keep
        nothing of its way. Notes and relative moves never. */
    bool isLastEnough (int status, int data) const;

    /** Counts the messages that a row has acted on, for views. Any thread. */
    uint32_t hits (int row) const noexcept
    {
        return MidiMapping::isCommand (row) ? hitCounts[static_cast<size_t> (row)].get() : 0;
    }

private:
    void act (int number, const MidiMappingRow&, int value);
    void follow (int number, const MidiMappingRow&, int data, int value);
    void move (int number, double value);
    void turnWheel (int number, double steps);

    CPlatterdex& engine;
    const MidiMapping& mapping;
    std::array<RowPickup, MidiMapping::rowCount> pickups;
    std::array<Relaxed<uint32_t>, MidiMapping::rowCount> hitCounts {};
};
