#pragma once

#include "../engine/EngineFixture.h"
#include "FakeMidiBackend.h"
#include "midi/system/MidiSystem.h"

/** An engine with MIDI over a fake system of ports. A test that wants the threads of messages and lamps starts them. */
struct MidiFixture : EngineFixture
{
    using MakeDrivers = std::unique_ptr<ControllerDrivers> (*)();

    using MakeBackend = std::unique_ptr<MidiBackend> (*)();

    /** @param make      the drivers of controllers; null is the native ones
        @param backend   a real system of ports; null is the fake one */
    explicit MidiFixture (MakeDrivers make = nullptr, MakeBackend backend = nullptr)
        : makeDrivers (make),
          makeBackend (backend)
    {
        begin();
    }
    ~MidiFixture() { midi.reset(); }

    void begin (bool isInHost = false)
    {
        MidiSystem::Options options;
        options.backends.clear();
        if (makeBackend != nullptr)
        {
            options.backends.push_back (makeBackend());
        }
        else
        {
            auto made = std::make_unique<FakeMidiBackend>();
            cables = made.get();
            options.backends.push_back (std::move (made));
        }
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
    const MakeBackend makeBackend;
    FakeMidiBackend* cables = nullptr;
    std::unique_ptr<MidiSystem> midi;
};
