#pragma once

#include "../MidiFixture.h"
#include "midi/native/NativeDrivers.h"
#include "midi/native/table/ModelList.h"

/** An engine with a native controller, whose surface a test plays and whose lamps it reads. */
struct NativeFixture : MidiFixture
{
    explicit NativeFixture (int model) : MidiFixture (&make), surface (*made)
    {
        device = plugAndUse ("Surface");
        midi->control.selectController (model);
    }

    const SurfaceState& state() const { return surface.state(); }
    MidiControl& control() { return midi->control; }

    /** States the lamps once and takes what was sent. */
    std::vector<FakeMidiBackend::Bytes> tick()
    {
        control().tick();
        return cables->takeSent (device);
    }

    static std::unique_ptr<ControllerDrivers> make()
    {
        auto drivers = std::make_unique<NativeDrivers>();
        made = drivers.get();
        return drivers;
    }

    static inline NativeDrivers* made = nullptr;
    NativeDrivers& surface;
    juce::String device;
};
