#pragma once

#include "midi/native/surface/PitchPickup.h"
#include "midi/native/surface/SurfaceState.h"
#include "midi/native/surface/SurfaceTexts.h"
#include "midi/native/surface/ValueReader.h"

#include <atomic>

class MidiControl;

/** The surface of one control at work: reads a model's table and keeps the state that belongs to it. */
class Surface
{
public:
    /** Carries a message out by the first control of the table that it belongs to. InMidiThread. */
    void input (MidiControl&, const Model&, int status, int data, int value);

    /** States lamps and displays. OutMidiThread. */
    void output (MidiControl&, const Model&, uint32_t tick);

    /** Begins anew with a device. Any thread that may block. */
    void start (MidiControl&, const Model&);

    /** Sends messages as they stand. Any thread that may block. */
    static void send (MidiControl&, std::span<const Message>);

    /** The layers and switches as they stand. Any thread */
    const SurfaceState& now() const noexcept { return state; }

private:
    SurfaceState state;
    ValueReader reader;                 ///< InMidiThread's
    std::array<PitchPickup, 4> pickups; ///< the same
    SurfaceTexts texts;                 ///< OutMidiThread's
    std::atomic<bool> inputBegins { false }, outputBegins { false };
    Relaxed<uint32_t> startedMs;
};
