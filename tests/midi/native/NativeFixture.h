#pragma once

#include "../MidiFixture.h"
#include "midi/native/NativeDrivers.h"
#include "midi/native/table/ModelList.h"

/** The numbers of the models that have a driver. */
inline std::vector<int> modelsWithTables()
{
    std::vector<int> all;
    for (int model = 0; model < ModelList::count; ++model)
        if (ModelList::entry (model).table != nullptr)
            all.push_back (model);
    return all;
}

/** An engine with a native controller, whose surface a test plays and whose lamps it reads. */
struct NativeFixture : MidiFixture
{
    explicit NativeFixture (int model, MakeBackend backend = nullptr)
        : MidiFixture (&make, backend),
          surface (*made)
    {
        if (cables != nullptr)
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
