#include "MidiFixture.h"
#include "midi/ports/MergePorts.h"
#include "midi/ports/MessageRing.h"
#include "midi/ports/PortElements.h"
#include "midi/ports/SequencerAnnouncements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = FakeMidiBackend::Bytes;

namespace
{
std::vector<juce::String> namesOf (const std::vector<MidiPortInfo>& ports)
{
    std::vector<juce::String> names;
    for (const auto& port : ports)
        names.push_back (port.name);
    return names;
}

juce::MemoryInputStream* streamOf (const char* text)
{
    return new juce::MemoryInputStream (text, strlen (text), true);
}
}

TEST (MidiPorts, BridgesOfASequencerPortAreLeftOut)
{
    const std::vector<MidiPortInfo> sequencer { { "Pad MIDI 1", "s1" },
                                                { "Pad MIDI 1", "s2" },
                                                { "Fader", "s3" } };
    const std::vector<MidiPortInfo> jack { { "a2j:Pad [20] (capture): Pad MIDI 1", "j1" },
                                           { "Midi-Bridge:Pad 2:(capture_0) Pad MIDI 1", "j2" },
                                           { "a2j:Pad [24] (capture): Pad MIDI 1", "j3" },
                                           { "synth:out", "j4" } };
    EXPECT_THAT (
        namesOf (mergePorts (sequencer, jack)),
        ElementsAre ("Pad MIDI 1", "Pad MIDI 1", "Fader", "a2j:Pad [24] (capture): Pad MIDI 1", "synth:out"));
}

TEST (MidiPorts, SequencerPortThatComesBackAtItsNumberIsAnotherOne)
{
    int changes = 0;
    SequencerAnnouncements announcements ([&] { ++changes; });
    constexpr int clientStart = 60, portStart = 63, portExit = 64, portChange = 65; // snd_seq_event_type
    for (const auto type : { clientStart, portExit, portStart, portChange })
        announcements.take (type, { 20, 1 });
    announcements.take (portStart, { 20, 0 });
    EXPECT_EQ (announcements.comings().of ("20-1"), 1);
    EXPECT_EQ (announcements.comings().of ("20-0"), 1);
    EXPECT_EQ (changes, 3) << "clients without ports come whenever a list is asked for";
}

TEST (MidiPorts, TwoDevicesOfOneNameKeepTheirPlacesOverAReplug)
{
    MidiFixture fixture;
    auto& ports = fixture.midi->control.ports;
    const auto first = fixture.cables->plug ("Deck"), second = fixture.cables->plug ("Deck");
    fixture.look();
    ports.setOutputEnabled ("Deck", true, 1);
    fixture.look();
    fixture.midi->control.sender.sendMidiShort (0x90, 1, 5);
    EXPECT_THAT (fixture.cables->takeSent (second), ElementsAre (Bytes { 0x90, 1, 5 }));
    EXPECT_THAT (fixture.cables->takeSent (first), IsEmpty());

    fixture.cables->pull (first);
    fixture.look();
    EXPECT_TRUE (ports.isOutputEnabled ("Deck"));
    fixture.cables->pull (second);
    fixture.look();
    EXPECT_FALSE (ports.isOutputEnabled ("Deck"));
    fixture.cables->plug ("Deck"); // comes back first, and takes the first place
    const auto back = fixture.cables->plug ("Deck");
    fixture.look();
    fixture.midi->control.tick();
    EXPECT_THAT (fixture.cables->takeSent (back), ElementsAre (Bytes { 0x90, 1, 5 }));
}

TEST (MidiPorts, AnAbsentDeviceIsForgottenWithoutTheOtherOfItsName)
{
    MidiFixture fixture;
    auto& ports = fixture.midi->control.ports;
    fixture.cables->plug ("Deck");
    const auto second = fixture.cables->plug ("Deck");
    fixture.look();
    for (const int place : { 0, 1 })
        ports.setEnabled (MidiDirection::input, { "Deck", place }, true);
    fixture.cables->pull (second);
    fixture.look();
    ports.setEnabled (MidiDirection::input, { "Deck", 1 }, false);
    fixture.look();
    EXPECT_TRUE (ports.isInputEnabled ("Deck"));
    EXPECT_THAT (ports.wanted (MidiDirection::input), ElementsAre (MidiPortSet::Wanted { "Deck", 0 }));
}

TEST (MidiPorts, WhatIsWantedOutlivesTheCableAndTheProgram)
{
    MidiFixture fixture;
    const auto pad = fixture.plugAndUse ("Pad");
    fixture.plugAndUse ("Other");
    EXPECT_EQ (fixture.cables->play (pad, { 0x90, 60, 1 }), 1);
    fixture.cables->pull (pad);
    fixture.look();

    const auto rows = fixture.midi->control.ports.rows (MidiDirection::input);
    ASSERT_EQ (rows.size(), 2u);
    EXPECT_EQ (rows[1], (MidiPortSet::Row { "Pad", 0, -1, true, false }));

    fixture.midi.reset();
    fixture.begin();
    const auto back = fixture.cables->plug ("Pad");
    fixture.look();
    EXPECT_EQ (fixture.cables->play (back, { 0x90, 60, 1 }), 1);
    EXPECT_THAT (fixture.midi->control.ports.wanted (MidiDirection::output),
                 ElementsAre (MidiPortSet::Wanted { "Pad" }, MidiPortSet::Wanted { "Other" }));
}

TEST (MidiPorts, InAHostAreClosedUntilTheUserAsksAndStayAsChosen)
{
    MidiFixture fixture;
    fixture.midi->control.ports.setInputEnabled ("Pad", true);
    const auto restart = [&fixture]
    {
        fixture.midi.reset();
        fixture.begin (true);
        return fixture.cables->plug ("Pad");
    };
    const auto isHeard = [&fixture] (const juce::String& pad)
    {
        if (fixture.midi->ports.isWatching())
            fixture.look();
        return fixture.cables->play (pad, { 0x90, 60, 1 }) > 0;
    };
    auto pad = restart();
    EXPECT_FALSE (isHeard (pad));
    fixture.midi->setOpensPorts (true);
    EXPECT_TRUE (isHeard (pad));
    pad = restart();
    EXPECT_TRUE (isHeard (pad));
    fixture.midi->setOpensPorts (false);
    pad = restart();
    EXPECT_FALSE (isHeard (pad));
}

TEST (MidiPorts, AClosedPortIsForgottenAndOneOpenTwiceHearsTwice)
{
    struct Counter : MidiReceiver
    {
        void midiArrived (const juce::String&, std::span<const uint8_t>) override { ++heard; }
        int heard = 0;
    } counter;
    MidiFixture fixture;
    MidiPortSet others (fixture.midi->ports, counter);
    const auto pad = fixture.plugAndUse ("Pad");
    others.setInputEnabled ("Pad", true);
    others.setInputEnabled ("Pad", true);
    fixture.look();
    EXPECT_EQ (fixture.cables->play (pad, { 0x90, 60, 1 }), 2);
    EXPECT_EQ (counter.heard, 1);
    fixture.midi->control.ports.setInputEnabled ("Pad", false);
    fixture.look();
    EXPECT_EQ (fixture.cables->play (pad, { 0x90, 60, 1 }), 1);
    EXPECT_THAT (fixture.midi->control.ports.wanted (MidiDirection::input), IsEmpty());
    fixture.midi->ports.watch (false);
    fixture.look();
    fixture.midi->ports.watch (false);
    fixture.midi->ports.reconsider();
}

TEST (MidiPorts, APortThatLosesMessagesIsPaintedAgainInWhole)
{
    MidiFixture fixture;
    const auto pad = fixture.plugAndUse ("Pad");
    auto& control = fixture.midi->control;
    for (int lamp = 0; lamp < 4; ++lamp)
        control.sender.sendMidiShort (0x90, lamp, 127);
    fixture.cables->takeSent (pad);
    fixture.cables->limitOutputs (0);
    control.sender.sendMidiShort (0x90, 2, 0);
    control.tick();
    fixture.cables->limitOutputs (-1);
    control.tick();
    EXPECT_THAT (fixture.cables->takeSent (pad), ElementsAre (Bytes { 0x90, 0, 127 }, Bytes { 0x90, 1, 127 },
                                                              Bytes { 0x90, 2, 0 }, Bytes { 0x90, 3, 127 }));
    control.tick();
    EXPECT_THAT (fixture.cables->takeSent (pad), IsEmpty());
}

TEST (MidiPorts, DeviceListsOfAnyKindAreReadOrRefusedAsAWhole)
{
    const auto lists = parseMidiDeviceList (std::unique_ptr<juce::InputStream> (streamOf (
        "<midiList version='2000' name=''><MIDIINPUT name='A &amp; B'/><MIDIINPUT name='A &amp; "
        "B'/><MIDIINPUT/>"
        "<odd><MIDIINPUT name='deep'/></odd><MIDIOUTPUT name='C' place='3'/><MIDIOUTPUT name='D' place='-9'/>"
        "</midiList>")));
    ASSERT_TRUE (lists);
    EXPECT_THAT (lists->inputs,
                 ElementsAre (MidiPortSet::Wanted { "A & B", 0 }, MidiPortSet::Wanted { "A & B", 1 }));
    EXPECT_THAT (lists->outputs,
                 ElementsAre (MidiPortSet::Wanted { "C", 3 }, MidiPortSet::Wanted { "D", 0 }));
    for (const auto* text : { "", "<midiList>", "<midiMapping/>", "<midiList/><midiList/>" })
        EXPECT_FALSE (parseMidiDeviceList (std::unique_ptr<juce::InputStream> (streamOf (text)))) << text;
}

TEST (MidiPorts, ARingKeepsMessagesWholeAndInOrderBetweenTwoThreads)
{
    MessageRing ring (256);
    std::thread writer (
        [&ring]
        {
            for (uint32_t i = 0; i < 20000;)
            {
                const Bytes message (1 + i % 60, static_cast<uint8_t> (i));
                i += ring.write (static_cast<uint8_t> (i % 64), message) ? 1u : 0u;
            }
        });
    std::array<uint8_t, 256> taken {};
    for (uint32_t i = 0; i < 20000;)
    {
        const auto size = ring.nextSize();
        if (size == 0)
            continue;
        ASSERT_EQ (size, 1 + i % 60);
        ASSERT_EQ (ring.take (taken.data()), i % 64);
        ASSERT_TRUE (std::all_of (taken.begin(), taken.begin() + size,
                                  [i] (auto byte) { return byte == static_cast<uint8_t> (i); }));
        ++i;
    }
    writer.join();
}
