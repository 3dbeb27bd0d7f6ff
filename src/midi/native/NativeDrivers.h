#pragma once

#include "midi/control/ControllerDrivers.h"
#include "midi/native/surface/Surface.h"

/** The drivers of all models, and the surface of the one at work. */
class NativeDrivers : public ControllerDrivers
{
public:
    bool hasInput (int model) const override;
    void handleControllerInput (MidiControl&, int model, int status, int data, int value) override;
    void updateControllerOutput (MidiControl&, int model, uint32_t tick) override;
    void startController (MidiControl&, int model) override;
    int pauseMs (int model) const override;

    /** The layers and switches of the surface at work. Any thread */
    const SurfaceState& state() const noexcept { return surface.now(); }

private:
    Surface surface;
    Relaxed<int> started { 0 }; ///< the model that was started last
};
