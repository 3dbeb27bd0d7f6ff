#pragma once

#include <cstdint>

class MidiControl;

/** The native drivers of controllers, by the number of the model that the setting `controllerPreset` selects. A model
    without a driver does nothing. Each control has drivers of its own, which keep the state of its surface. */
class ControllerDrivers
{
public:
    virtual ~ControllerDrivers() = default;

    /** True if a model has a handler for messages. Any thread. */
    virtual bool hasInput (int model) const = 0;

    /** Acts on a message, after the mapping table has. InMidiThread. */
    virtual void handleControllerInput (MidiControl&, int model, int status, int data, int value) = 0;

    /** States the lamps and displays, 20 times a second. OutMidiThread.
        @param tick   counts the calls, for lamps that blink */
    virtual void updateControllerOutput (MidiControl&, [[maybe_unused]] int model,
                                         [[maybe_unused]] uint32_t tick)
    {
    }

    /** Begins with a device: sets the driver's state, wakes the device up. Called when a model is selected, by the thread that
        does it, and whenever an output has been opened, on OutMidiThread: a device that comes back knows of nothing. */
    virtual void startController (MidiControl&, [[maybe_unused]] int model) {}

    /** Milliseconds to wait after each message that is sent, for a device that loses them at full speed. Any thread. */
    virtual int pauseMs ([[maybe_unused]] int model) const { return 0; }
};
