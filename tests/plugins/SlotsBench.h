#pragma once

#include "plugins/slot/VstSlots.h"

#include "../engine/EngineFixture.h"

/** The path of one of the tests' plug-ins. */
inline juce::String pluginPath (const char* behaviour)
{
    return juce::File (PX_EVIL_PLUGINS).getChildFile (juce::String (behaviour) + ".so").getFullPathName();
}

/** The engine's messages. */
struct Messages : EngineListener
{
    void engineEvent (EngineEvent, int) override {}
    void engineMessage (const juce::String& text, int deck) override
    {
        all.add (juce::String (deck) + " " + text);
    }

    juce::StringArray all;
};

/** An engine with slots that are kept in its folder. */
struct SlotsBench
{
    explicit SlotsBench (Pacing::Mode mode = Pacing::Mode::offline) : fixture (mode)
    {
        fixture.engine->listeners.add (messages);
        makeSlots();
    }

    ~SlotsBench()
    {
        slots.reset();
        fixture.engine->listeners.remove (messages);
    }

    void makeSlots()
    {
        slots.reset();
        VstSlots::Options options;
        options.scanner.program = juce::File (PX_SCANNER);
        options.scanner.disablePopups = true;
        options.hasMessageLoop = false;
        slots = std::make_unique<VstSlots> (*fixture.engine, options);
        fixture.engine->deliverMessages();
    }

    EngineFixture fixture;
    Messages messages;
    std::unique_ptr<VstSlots> slots;
};
