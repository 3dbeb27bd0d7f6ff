#include "MidiFixture.h"
#include "midi/control/MessageCoalescing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = FakeMidiBackend::Bytes;

namespace
{
/** A driver that keeps what it is given and lights one lamp in turn. */
struct DriverLog : ControllerDrivers
{
    static std::vector<uint32_t>& heard()
    {
        static std::vector<uint32_t> words;
        return words;
    }

    bool hasInput (int model) const override { return model == 1; }

    void handleControllerInput (MidiControl&, int model, int status, int data, int value) override
    {
        if (model == 1)
            heard().push_back (MidiWord::pack (status, data, value));
    }

    void updateControllerOutput (MidiControl& control, int model, uint32_t tick) override
    {
        if (model == 1)
            control.sender.sendMidiShort (0x90, 1, tick % 2 == 0 ? 127 : 0);
    }

    void startController (MidiControl& control, int model) override
    {
        control.sender.clearCache();
        if (model == 2)
            control.sender.sendMidiSysEx (Bytes { 0xf0, 1, 0xf7 });
    }

    static std::unique_ptr<ControllerDrivers> make() { return std::make_unique<DriverLog>(); }
};

/** The number of messages that came through once the last of them has. */
uint32_t waitForMessages (MidiControl& control, uint32_t count)
{
    while (control.lastSeen().count < count)
        std::this_thread::yield();
    return control.lastSeen().count;
}
}

TEST (MidiControl, LearnMappingAndDriverSeeANoteOffAsANoteOnOfZero)
{
    MidiFixture fixture (DriverLog::make);
    DriverLog::heard().clear();
    auto& control = fixture.midi->control;
    control.selectController (1);
    control.learn (1);
    EXPECT_TRUE (control.isLearning());
    fixture.handle (0x83, 60, 64);
    EXPECT_FALSE (control.isLearning());
    EXPECT_EQ (control.mapping.row (1), (MidiMappingRow { 0x93, 60 }));
    EXPECT_THAT (DriverLog::heard(), ElementsAre (MidiWord::pack (0x93, 60, 0)));

    // A control acts with the message that it is learnt from; learning ends with it.
    control.learn (CommandTable::numberOf ("CROSSFADER"));
    fixture.handle (0xb0, 7, 127);
    fixture.handle (0xb0, 8, 0);
    EXPECT_EQ (fixture.get ("CROSSFADER"), 1.0f);
    for (const int row : { 0, 466, -1 })
    {
        control.learn (row);
        EXPECT_FALSE (control.isLearning()) << row;
    }
}

TEST (MidiControl, SystemMessagesAndOddSizesGoNowhere)
{
    MidiFixture fixture;
    auto& control = fixture.midi->control;
    const auto pad = fixture.plugAndUse ("Pad");
    control.start();
    control.learn (1);
    for (const auto& message : { Bytes { 0xf0, 1, 2, 3, 0xf7 }, Bytes { 0xc0, 5 }, Bytes { 0xf2, 1, 2 },
                                 Bytes { 0xf8 }, Bytes { 0, 0, 0 }, Bytes {} })
        fixture.cables->play (pad, message);
    fixture.cables->play (pad, { 0xb1, 2, 3 });
    EXPECT_EQ (waitForMessages (control, 1), 1u);
    EXPECT_EQ (control.lastSeen().status, 0xb1);
    EXPECT_EQ (control.mapping.row (1), (MidiMappingRow { 0xb1, 2 }));
}

TEST (MidiControl, ShortMessagesAreLimitedAndSentOnceUnlessForced)
{
    MidiFixture fixture;
    const auto pad = fixture.plugAndUse ("Pad");
    auto& sender = fixture.midi->control.sender;
    sender.sendMidiShort (300, 200, -5);
    sender.sendMidiShort (0, -1, 300);
    sender.sendMidiShort (0x80, 0, 127);
    sender.sendMidiShort (0x80, 0, 127, true);
    sender.sendMidiSysEx (Bytes { 0xf0, 1, 0xf7 });
    EXPECT_THAT (fixture.cables->takeSent (pad),
                 ElementsAre (Bytes { 255, 127, 0 }, Bytes { 128, 0, 127 }, Bytes { 128, 0, 127 },
                              Bytes { 0xf0, 1, 0xf7 }));
}

TEST (MidiControl, LampsTellTheTruthOfMappedButtonsAndFaders)
{
    MidiFixture fixture (DriverLog::make);
    const auto pad = fixture.plugAndUse ("Pad");
    auto& control = fixture.midi->control;
    control.mapping.setRow (CommandTable::numberOf ("EQ_HIGH_KILL_A"), { 0x90, 11 });
    control.mapping.setRow (CommandTable::numberOf ("VOLUME_A"), { 0xb0, 7 });
    control.mapping.setRow (CommandTable::numberOf ("VOLUME_B"), { 0xb0, 9, 1 }); // a motor must not run away
    control.mapping.setRow (CommandTable::numberOf ("GAIN_A"),
                            { 0xb0, 8, 2 }); // an endless knob has no place
    fixture.set ("VOLUME_B", 1.0f);
    fixture.set ("VOLUME_A", 0.5f);
    fixture.set ("EQ_HIGH_KILL_A");
    control.tick();
    EXPECT_THAT (fixture.cables->takeSent (pad), IsEmpty());
    control.mapping.showsLamps = true;
    control.tick();
    control.tick();
    EXPECT_THAT (fixture.cables->takeSent (pad),
                 ElementsAre (Bytes { 0x90, 11, 127 }, Bytes { 0xb0, 7, 64 }, Bytes { 0xb0, 9, 0 }));
    fixture.set ("EQ_HIGH_KILL_A");
    control.tick();
    EXPECT_THAT (fixture.cables->takeSent (pad), ElementsAre (Bytes { 0x90, 11, 0 }));

    // The lamp of the selected driver blinks with the ticks; a driver that asks for it has all restated.
    control.selectController (1);
    control.tick();
    control.tick();
    EXPECT_THAT (fixture.cables->takeSent (pad),
                 ElementsAre (Bytes { 0x90, 1, 127 }, Bytes { 0x90, 11, 0 }, Bytes { 0xb0, 7, 64 },
                              Bytes { 0xb0, 9, 0 }, Bytes { 0x90, 1, 0 }));
}

TEST (MidiControl, ADeviceThatComesIsWokenUpBeforeItsLamps)
{
    MidiFixture fixture (DriverLog::make);
    auto& control = fixture.midi->control;
    control.selectController (2);
    control.mapping.setRow (CommandTable::numberOf ("EQ_HIGH_KILL_A"), { 0x90, 11 });
    control.mapping.showsLamps = true;
    for (int times = 0; times < 2; ++times)
    {
        const auto pad = fixture.plugAndUse ("Pad");
        control.tick();
        EXPECT_EQ (fixture.cables->takeSent (pad).front(), (Bytes { 0xf0, 1, 0xf7 })) << times;
        control.tick();
        EXPECT_THAT (fixture.cables->takeSent (pad), IsEmpty());
        fixture.cables->pull (pad);
        fixture.look();
    }
}

TEST (MidiControl, OnlyMovesOfFadersAreCoalesced)
{
    MidiFixture fixture;
    auto& mapping = fixture.midi->control.mapping;
    mapping.setRow (CommandTable::numberOf ("CROSSFADER"), { 0xb0, 1 });
    mapping.setRow (CommandTable::numberOf ("JOG_A"), { 0xb0, 2 });
    mapping.setRow (CommandTable::numberOf ("VOLUME_A"), { 0xb0, 3, 2 });
    mapping.setRow (CommandTable::numberOf ("VOLUME_B"), { 0xb0, 4, 0, 0, MidiControlFeature::fine });
    mapping.setRow (CommandTable::numberOf ("PLAY_PAUSE_A"), { 0xb0, 5 });
    const auto word = [] (int data, int value, int status = 0xb0)
    { return MidiWord::pack (status, data, value); };
    std::vector<uint32_t> words;
    for (int value = 1; value < 3; ++value)
    {
        for (int data = 1; data < 6; ++data)
            words.push_back (word (data, value));
        words.push_back (word (9, value, 0x90));
    }
    coalesce (words, fixture.midi->control.dispatcher);
    EXPECT_THAT (words, ElementsAre (word (2, 1), word (3, 1), word (4, 1), word (5, 1), word (9, 1, 0x90),
                                     word (1, 2), word (2, 2), word (3, 2), word (4, 2), word (5, 2),
                                     word (9, 2, 0x90)));
}

TEST (MidiControl, AFloodLosesNothingAndTheEndComesInTheMiddleOfOne)
{
    MidiFixture fixture;
    auto& control = fixture.midi->control;
    const auto row = CommandTable::numberOf ("LOOP_SIZE_A");
    control.mapping.setRow (row, { 0x90, 3, 1 });
    const auto pad = fixture.plugAndUse ("Pad");
    control.start();
    constexpr uint32_t messages = 20000;
    for (uint32_t i = 0; i < messages; ++i)
        fixture.cables->play (pad, { 0x90, 3, static_cast<uint8_t> (i % 2 == 0 ? 127 : 1) });
    EXPECT_EQ (waitForMessages (control, messages), messages);
    EXPECT_EQ (control.dispatcher.hits (row), messages);

    std::atomic<bool> hasEnded { false };
    std::thread player (
        [&]
        {
            while (!hasEnded)
                fixture.cables->play (pad, { 0x90, 3, 127 });
        });
    control.learn (2);
    for (int i = 0; i < 200; ++i)
        control.mapping.setRow (1 + i, { 0x91, i });
    control.stop();
    hasEnded = true;
    player.join();
    fixture.midi->control.stop(); // a second time, and with an empty queue
}
