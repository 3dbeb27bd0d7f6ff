#include "MidiFixture.h"
#include "midi/mapping/MidiMappingFile.h"
#include "midi/mapping/MidiScriptGenerator.h"
#include "midi/mapping/ScriptLogger.h"

#include <gtest/gtest.h>

#include <thread>

TEST (MidiMapping, FilesAreLimitedRowByRowOrRefusedAsAWhole)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("m.xml");
    file.replaceWithText ("<midiMapping version='2000' name=''><controls>"
                          "<value id='0' status='144' data='1'/><value id='466' status='144' data='1'/>"
                          "<value id='5' status='999' data='-4' res0='9' res1='7'/>"
                          "<value id='6' status='176' data='7' res0='1' features='14bit takeover'/>"
                          "<value id='277' status='176' data='8' res0='2' features='takeover'/>"
                          "<value id='278' status='176' data='8' features='14bit takeover'/></controls>"
                          "<value id='7' status='144' data='1'/></midiMapping>");
    MidiMapping mapping;
    mapping.setRow (4, { 0x91, 9 });
    ASSERT_TRUE (loadMidiMapping (file, mapping));
    EXPECT_EQ (mapping.row (4), (MidiMappingRow { 0x91, 9 })); // a load doesn't clear
    EXPECT_EQ (mapping.row (5), (MidiMappingRow { 255, 0, 3, 0 }));
    EXPECT_EQ (mapping.row (6), (MidiMappingRow { 176, 7, 1 })) << "a button has no 14 bits";
    EXPECT_EQ (mapping.row (277), (MidiMappingRow { 176, 8, 2 })) << "nor has an encoder to catch up";
    EXPECT_EQ (mapping.row (278),
               (MidiMappingRow { 176, 8, 0, 0, MidiControlFeature::fine | MidiControlFeature::takeover }));
    for (const int empty : { 0, 7, 466 })
        EXPECT_FALSE (mapping.row (empty).isAssigned()) << empty;

    mapping.showsLamps = true;
    ASSERT_TRUE (saveMidiMapping (mapping, file));
    MidiMapping again;
    ASSERT_TRUE (loadMidiMapping (file, again));
    EXPECT_TRUE (again.showsLamps);
    for (int row = 0; row < MidiMapping::rowCount; ++row)
        EXPECT_EQ (again.row (row), mapping.row (row)) << row;
    const auto written = file.loadFileAsString();
    EXPECT_TRUE (written.contains ("<value id=\"0\" status=\"0\" data=\"0\" res0=\"0\" res1=\"0\"/>"));
    EXPECT_TRUE (written.contains ("<value id=\"465\" status=\"0\""));

    for (const auto* text : { "", "<other/>", "<midiMapping><controls><value id='9' status='1'/>" })
    {
        file.replaceWithText (text);
        EXPECT_FALSE (loadMidiMapping (file, mapping)) << text;
    }
    EXPECT_FALSE (loadMidiMapping (folder, mapping));
    EXPECT_FALSE (mapping.row (9).isAssigned());
    EXPECT_FALSE (saveMidiMapping (mapping, folder.file ("missing").getChildFile ("m.xml")));
}

TEST (MidiMapping, ADamagedDefaultIsPutAsideAndNotOverwritten)
{
    MidiFixture fixture;
    const auto file = fixture.folder.file ("setup").getChildFile ("default_midi_mapping.xml");
    fixture.midi.reset();
    ASSERT_TRUE (file.existsAsFile());
    file.replaceWithText ("<midiMapping><controls><value id='1' status='144'");
    fixture.begin();
    fixture.midi.reset();
    EXPECT_TRUE (file.getSiblingFile ("default_midi_mapping.damaged.xml").existsAsFile());
    MidiMapping mapping;
    EXPECT_TRUE (loadMidiMapping (file, mapping));
}

TEST (MidiMapping, AChangeIsInTheFileSoonAndAnotherProgramsFileIsLeftAlone)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("m.xml");
    MidiMapping mapping, kept;
    std::atomic<bool> mayWrite { false };
    std::atomic<int> asked { 0 };
    MappingKeeper keeper (
        mapping, file, [&] { return ++asked, mayWrite.load(); }, std::chrono::milliseconds (1));
    keeper.start();
    mapping.setRow (1, { 0x90, 1 });
    while (asked == 0)
        std::this_thread::yield();
    EXPECT_FALSE (file.exists());
    mayWrite = true;
    while (!file.exists())
        std::this_thread::yield();
    EXPECT_TRUE (loadMidiMapping (file, kept));
    EXPECT_EQ (kept.row (1), mapping.row (1));
}

TEST (MidiMapping, TheSnippetsOfAllShapesAndTheirPublishedFaults)
{
    using Type = MidiControlType;
    struct Case
    {
        int row;
        Type type;
        const char* text;
    };
    for (const auto& [row, type, text] : {
             Case { 3, Type::encoder, "if(value > 0) set(PLAY_PAUSE_C);" },
             Case { 7, Type::absolute, "if(value > 0) set(PLAY_SYNCHRONIZED_A);" },
             Case { 30, Type::inverted, "set(PITCH_BEND_NUDGE_MINUS_B, isDown);" },
             Case { 277, Type::absolute, "set(CROSSFADER, value01);" },
             Case { 277, Type::inverted, "set(CROSSFADER, 1.0 - value01);" },
             Case { 277, Type::encoder, "set(CROSSFADER, get(CROSSFADER) + valueInc * 0.05);" },
             Case { 277, Type::encoderInverted, "set(CROSSFADER, get(CROSSFADER) - valueInc * 0.05);" },
             Case { 22, Type::encoder, "set(PITCH_B, (1.0 - get(PITCH_B)) + valueInc * 0.0005);" },
             Case { 22, Type::encoderInverted, "set(PITCH_B, (1.0 - get(PITCH_B)) - valueInc * 0.0005);" },
             Case { 26, Type::inverted, "if(value > 0) set(PITCH_B, 0.5);" },
             Case { 413, Type::absolute, "set(PLAYLIST_SELECT, 0x7F - value);" },
             Case { 413, Type::encoderInverted, "set(PLAYLIST_SELECT, value);" },
             Case { 202, Type::encoder, "set(JOG_B, value - 64.0, -0.01, 0.1);" },
             Case { 211, Type::encoderInverted, "set(SEEK_C, 1.0 - value01);" },
             Case { 280, Type::absolute, "if(value > 0) set(AUTO_CROSSFADER_RIGHT );" },
             Case { 439, Type::absolute, "set(VST_DRY_WET_SLOT_A, value01);" },
             Case { 439, Type::inverted, "set(VST_DRY_WET_SLOT_C, 1.0 - value01);" },
             Case { 0, Type::absolute, "{}" },
             Case { 466, Type::absolute, "{}" },
         })
        EXPECT_EQ (controlSnippet (type, row), text) << row;
}

TEST (MidiMapping, AGeneratedScriptHoldsNotesAndControllersAndNothingElse)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("new").getChildFile ("midi_script.c");
    MidiMapping mapping;
    ASSERT_TRUE (generateMidiScript (mapping, file));
    const auto empty = file.loadFileAsString();
    EXPECT_TRUE (empty.startsWith ("//" + juce::String::repeatedString ("=", 77)
                                   + "\r\n// midi_script.c\r\n// MIDI script created: "));
    for (const auto* callback :
         { "void OnMidiMessageReceived (const string &in name, int status, int data, int value)",
           "void OnTimerCallback()", "void OnStart()", "void OnStop()" })
        EXPECT_TRUE (empty.contains ("\r\n" + juce::String (callback) + "\r\n{\r\n")) << callback;
    EXPECT_EQ (empty.replace ("\r\n", "").indexOfAnyOf ("\r\n"), -1);

    mapping.setRow (1, { 0x9a, 0x0c });
    mapping.setRow (2, { 0xe0, 1 });
    mapping.setRow (3, { 0xc0, 1 });
    mapping.setRow (277, { 0xb0, 0x7f, 1 });
    const auto lines = midiScriptLines (mapping);
    const auto note = lines.indexOf ("    if(status == 0x9A && data == 0xC) {");
    const auto controller = lines.indexOf ("    if(status == 0xB0 && data == 0x7F) {");
    ASSERT_GT (note, lines.indexOf ("  // NN's"));
    ASSERT_GT (controller, lines.indexOf ("  // CC's"));
    EXPECT_EQ (lines[controller + 1], "      set(CROSSFADER, 1.0 - value01);");
    EXPECT_EQ (lines[controller + 2], "      return;");
    EXPECT_EQ (lines.size(), midiScriptLines ({}).size() + 8);
}

TEST (MidiMapping, SoftTakeoverWaitsForTheValueAndFineFadersNeverJumpBack)
{
    MidiFixture fixture;
    auto& mapping = fixture.midi->control.mapping;
    mapping.setRow (CommandTable::numberOf ("VOLUME_A"), { 0xb0, 1, 0, 0, MidiControlFeature::takeover });
    mapping.setRow (CommandTable::numberOf ("VOLUME_B"), { 0xb0, 2, 0, 0, MidiControlFeature::fine });
    mapping.setRow (CommandTable::numberOf ("VOLUME_C"), { 0xe0, 0, 1, 0, MidiControlFeature::fine });
    fixture.set ("VOLUME_A", 0.5f);
    fixture.handle (0xb0, 1, 10);
    fixture.handle (0xb0, 1, 40);
    EXPECT_FLOAT_EQ (fixture.get ("VOLUME_A"), 0.5f);
    fixture.handle (0xb0, 1, 90); // has crossed it
    EXPECT_NEAR (fixture.get ("VOLUME_A"), 90 / 127.0, 1e-4);
    fixture.handle (0xb0, 1, 20); // holds it, however fast
    EXPECT_NEAR (fixture.get ("VOLUME_A"), 20 / 127.0, 1e-4);
    fixture.set ("VOLUME_A", 0.9f); // another hand
    fixture.handle (0xb0, 1, 21);
    EXPECT_FLOAT_EQ (fixture.get ("VOLUME_A"), 0.9f);

    fixture.handle (0xb0, 2, 127); // without low halves 7 bits are the whole way
    EXPECT_FLOAT_EQ (fixture.get ("VOLUME_B"), 1.0f);
    const auto fine = [&] (int position)
    {
        fixture.handle (0xb0, 2, position >> 7);
        const auto between = fixture.get ("VOLUME_B");
        fixture.handle (0xb0, 34, position & 127);
        return between;
    };
    fine (8000);
    float last = fixture.get ("VOLUME_B");
    for (int position = 8000; position > 7000; position -= 50)
    {
        const auto between = fine (position);
        EXPECT_LE (between, last);
        EXPECT_NEAR (fixture.get ("VOLUME_B"), position / 16383.0, 1e-4);
        EXPECT_LE (fixture.get ("VOLUME_B"), between);
        last = fixture.get ("VOLUME_B");
    }
    fixture.handle (0xe0, 0x7f, 0x3f);
    EXPECT_NEAR (fixture.get ("VOLUME_C"), 1.0 - 0x1fff / 16383.0, 1e-4);
}

TEST (MidiMapping, AWheelWithoutTouchScratchesAStoppedDeckAndBendsAPlayingOne)
{
    MidiFixture fixture;
    const auto row = CommandTable::numberOf ("JOG_A");
    fixture.midi->control.mapping.setRow (row, { 0xb0, 1, 0, 0, MidiControlFeature::wheel });
    fixture.loadNoise (0);
    fixture.handle (0xb0, 1, 70);
    fixture.handle (0xb0, 1, 70);
    EXPECT_EQ (fixture.get ("JOG_SCRATCH_ON_A"), 1.0f);
    EXPECT_DOUBLE_EQ (fixture.deck().head.jog, 6 * static_cast<double> (0.1f));
    fixture.deck().jog.scratchOn = 0;
    fixture.set ("PLAY_PAUSE_A");
    fixture.deck().head.bend = 0.0;
    fixture.handle (0xb0, 1, 70);
    EXPECT_NEAR (fixture.deck().head.bend, -0.06, 1e-6);
}
