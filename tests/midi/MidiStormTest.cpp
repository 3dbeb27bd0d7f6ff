#include "MidiFixture.h"
#include "midi/mapping/MidiMappingFile.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
constexpr uint32_t messages = 100'000;

constexpr const char* scriptText = R"(#include "px_commands.h"
int last = 127; int heard = 0;
void OnMidiMessageReceived(const string &in name, int status, int data, int value) {
  if(status != 0x91) return;
  if(value != (last + 1) % 128) log("gap");
  last = value;
  if(++heard == 100000) log("all heard");
  sendMidiMessage(0x91, 1, value);
}
void OnTimerCallback() { sendMidiMessage(0xB0, 2, get(CROSSFADER) > 0.5f ? 127 : 0); }
void OnStart() {}
void OnStop() { sendMidiMessage(0x92, 1, 1); }
)";

/** All of MIDI with its threads, two devices and a script. */
struct StormFixture : EngineFixture
{
    StormFixture()
    {
        MidiSystem::Options options;
        options.backends.clear();
        auto made = std::make_unique<FakeMidiBackend>();
        cables = made.get();
        options.backends.push_back (std::move (made));
        midi = std::make_unique<MidiSystem> (*engine, std::move (options));
        for (const auto* name : { "Pad", "Deck" })
        {
            handles.push_back (cables->plug (name));
            for (auto* ports : { &midi->control.ports, &midi->scripts.ports() })
            {
                ports->setInputEnabled (name, true);
                ports->setOutputEnabled (name, true);
            }
        }
        midi->ports.lookNow();
    }

    ~StormFixture() { midi.reset(); }

    juce::File writeScript (const char* name) const
    {
        const auto file = midi->scripts.folder().getChildFile (name);
        file.replaceWithText (scriptText);
        return file;
    }

    FakeMidiBackend* cables = nullptr;
    std::vector<juce::String> handles;
    std::unique_ptr<MidiSystem> midi;
};
}

/** Two devices play as fast as they are taken. Meanwhile one of them is pulled and plugged again and again, the table is edited,
    learnt, saved and loaded, lamps are lit, and a second script comes and goes. The other device's relative moves all act, and
    its script hears every message in order. */
TEST (MidiStorm, NothingIsLostWhileAllElseChanges)
{
    StormFixture fixture;
    auto& control = fixture.midi->control;
    auto& mapping = control.mapping;
    const auto jog = CommandTable::numberOf ("JOG_A");
    mapping.setRow (jog, { 0x91, 5 });
    mapping.showsLamps = true;
    fixture.midi->scripts.addScript (fixture.writeScript ("counts.c"));
    fixture.midi->scripts.waitUntilIdle();

    std::jthread steady (
        [&]
        {
            for (uint32_t i = 0; i < messages; ++i)
                fixture.cables->play (fixture.handles[1], { 0x91, 5, static_cast<uint8_t> (i % 128) });
        });
    std::atomic<bool> isOver { false };
    std::mutex handleLock;
    auto handle = fixture.handles[0];
    const auto padHandle = [&]
    {
        const std::scoped_lock sl (handleLock);
        return handle;
    };
    std::jthread loose (
        [&]
        {
            for (uint8_t i = 0; !isOver; i = (i + 1) % 128)
                fixture.cables->play (padHandle(), { 0xb0, i, static_cast<uint8_t> (127 - i) });
        });
    const auto file = fixture.folder.file ("storm.xml");
    const auto comesAndGoes = fixture.writeScript ("comes_and_goes.c");
    for (int i = 0; i < 30 || control.dispatcher.hits (jog) < messages; ++i)
    {
        control.learn (1 + i % 100);
        for (int row = 1; row < 100; ++row)
            mapping.setRow (row, { 0xb0, (row + i) % 128, row % 4 });
        EXPECT_TRUE (saveMidiMapping (mapping, file));
        loadMidiMapping (file, mapping);
        if (i >= 30)
            continue;
        if (i % 2 == 0)
        {
            fixture.cables->pull (padHandle());
            fixture.midi->scripts.addScript (comesAndGoes);
        }
        else
        {
            const auto again = fixture.cables->plug ("Pad");
            const std::scoped_lock sl (handleLock);
            handle = again;
            fixture.midi->scripts.removeScript (comesAndGoes);
        }
        fixture.midi->ports.lookNow();
    }
    isOver = true;
    steady.join();
    loose.join();
    EXPECT_EQ (control.dispatcher.hits (jog), messages);

    const auto told = [&]
    {
        juce::StringArray texts;
        for (const auto& entry : fixture.midi->scripts.journal().after (0))
            if (entry.file.endsWith ("counts.c"))
                texts.add (entry.text);
        return texts;
    };
    while (told().isEmpty())
        std::this_thread::yield();
    EXPECT_EQ (told(), juce::StringArray ("all heard"));
}
