#pragma once

#include "../engine/EngineFixture.h"
#include "FakeMidiBackend.h"
#include "midi/system/MidiSystem.h"

/** An engine with MIDI over a fake system of ports. A test that wants the threads of messages and lamps starts them. */
struct MidiFixture : EngineFixture
{
    using MakeDrivers = std::unique_ptr<ControllerDrivers> (*)();

    /** @param make   the drivers of controllers; null is the native ones */
    explicit MidiFixture (MakeDrivers make = nullptr) : makeDrivers (make) { begin(); }
    ~MidiFixture() { midi.reset(); }

    void begin (bool isInHost = false)
    {
        MidiSystem::Options options;
        options.backends.clear();
        auto made = std::make_unique<FakeMidiBackend>();
        cables = made.get();
        options.backends.push_back (std::move (made));
        if (makeDrivers != nullptr)
            options.drivers = makeDrivers();
        options.hasThreads = false;
        options.isInHost = isInHost;
        midi = std::make_unique<MidiSystem> (*engine, std::move (options));
    }

    /** Looks for ports and opens what is wanted. */
    void look() { midi->ports.lookNow(); }

    /** Plugs a device in and has the engine use it both ways. */
    juce::String plugAndUse (const juce::String& name)
    {
        const auto handle = cables->plug (name);
        look();
        midi->control.ports.setInputEnabled (name, true);
        midi->control.ports.setOutputEnabled (name, true);
        look();
        return handle;
    }

    /** Carries a message out on the calling thread. */
    void handle (int status, int data, int value) { midi->control.handle (status, data, value); }

    const MakeDrivers makeDrivers;
    FakeMidiBackend* cables = nullptr;
    std::unique_ptr<MidiSystem> midi;
};
