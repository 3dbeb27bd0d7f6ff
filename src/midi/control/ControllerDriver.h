#pragma once

#include <cstdint>

class MidiControl;

/** The driver of one controller model: plain functions over the control, of which any may be missing. The selected model is
    the setting `controllerPreset`, an index into the table of drivers. */
struct ControllerDriver
{
    /** Acts on a message, after the mapping table has. InMidiThread. */
    void (*input) (MidiControl&, int status, int data, int value) = nullptr;

    /** States the lamps and displays, 20 times a second. OutMidiThread.
        @param tick   counts the calls, for lamps that blink */
    void (*output) (MidiControl&, uint32_t tick) = nullptr;

    /** Begins with a device: sets the driver's state, wakes the device up. The thread that selects the model. */
    void (*start) (MidiControl&) = nullptr;

    int pauseMs = 0; ///< after each message that is sent, for a device that loses them at full speed
};
