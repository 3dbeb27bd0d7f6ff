#include "../../shared/ScriptedPrompts.h"
#include "NativeFixture.h"
#include "midi/detect/ControllerDetection.h"
#include "midi/detect/ControllerWatch.h"

#include <gtest/gtest.h>

namespace
{
/** A machine with devices, and a user who answers. */
struct DetectionFixture : MidiFixture
{
    explicit DetectionFixture (bool isFirstRun = false)
    {
        prompts = answers = std::make_shared<ScriptedPrompts>();
        answers->yes = true;
        midi.reset();
        makeEngine();
        engine->isFirstRun = isFirstRun;
        begin();
    }

    void plug (std::initializer_list<const char*> names)
    {
        for (const auto* name : names)
            cables->plug (name);
        look();
    }

    int selected() const { return engine->settings.controllerPreset; }
    juce::String logText() const { return folder.file ("auto-detect-controllers.log").loadFileAsString(); }

    std::shared_ptr<ScriptedPrompts> answers;
};
}

TEST (Detection, OfEachPortTheLastAcceptedRuleCounts)
{
    const struct
    {
        const char* port;
        int model, questions;
    } cases[] {
        { "DJ Console MK2 MIDI 1", 2, 1 },     { "iCON iDJX", 36, 2 },
        { "DJ Control MP3 e2 MIDI 1", 16, 2 }, { "VESTAX VCI-100MKII", 43, 1 },
        { "USB Microphone", 45, 1 },           { "CMD LC-1", 47, 1 },
        { "Reloop Digital Jockey", 30, 1 },    { "Some Synthesizer", 0, 1 },
    };
    for (const auto& each : cases)
    {
        DetectionFixture fixture;
        fixture.plug ({ each.port });
        autoDetectControllers (*fixture.midi);
        EXPECT_EQ (fixture.selected(), each.model) << each.port;
        EXPECT_EQ (fixture.answers->asked.size(), each.questions) << each.port;
    }
}

TEST (Detection, ANoChangesNothingAndAnOpenControllerIsNotAskedAgain)
{
    DetectionFixture fixture;
    fixture.plug ({ "Xponent" });
    fixture.answers->yes = false;
    autoDetectControllers (*fixture.midi);
    EXPECT_EQ (fixture.selected(), 0);
    EXPECT_EQ (fixture.answers->asked.joinIntoString (";"),
               "M-Audio Xponent controller found|Do you want to use it?");
    fixture.answers->yes = true;
    autoDetectControllers (*fixture.midi);
    fixture.look();
    EXPECT_EQ (fixture.selected(), 17);
    EXPECT_TRUE (fixture.midi->control.ports.isOutputEnabled ("Xponent"));
    fixture.answers->asked.clear();
    autoDetectControllers (*fixture.midi);
    EXPECT_TRUE (fixture.answers->asked.isEmpty());
}

TEST (Detection, AMachineWithoutPortsIsLoggedAndTold)
{
    DetectionFixture fixture;
    fixture.look();
    autoDetectControllers (*fixture.midi);
    EXPECT_EQ (fixture.answers->asked.joinIntoString (";"),
               "Auto Detect Controllers Info|No natively supported controllers found.");
    for (const auto* line : { "Platterdex Auto Detect Controllers Log File", "Total MIDI I/O ports: 0",
                              "*** Starting auto-detect process ***", "*** End auto-detect process ***",
                              "Selected controller idx AFTER auto-detect process: 0" })
        EXPECT_TRUE (fixture.logText().contains (line)) << line;
}

TEST (Detection, TheLogNamesPortsAndTheirStates)
{
    DetectionFixture fixture;
    fixture.plug ({ "VMS4", "Keyboard" });
    autoDetectControllers (*fixture.midi);
    const auto text = fixture.logText();
    EXPECT_LT (text.indexOf ("idx=0 state=closed type=I name=VMS4"),
               text.indexOf ("idx=0 state=open type=I name=VMS4"));
    EXPECT_TRUE (text.contains ("Trying to find a match for the midi port: [Keyboard]"));
    EXPECT_TRUE (text.contains ("American Audio VMS4 controller found"));
    EXPECT_TRUE (fixture.folder.file ("setup/midi_devices_list.xml").existsAsFile());
}

TEST (Detection, AFirstRunAsksNothing)
{
    DetectionFixture fixture (true);
    ControllerWatch watch (*fixture.midi);
    fixture.plug ({ "CMD Micro", "CMD Studio 4A" });
    watch.serve();
    EXPECT_EQ (fixture.selected(), 46);
    EXPECT_TRUE (fixture.answers->asked.isEmpty());
    EXPECT_FALSE (fixture.engine->isFirstRun);
}

TEST (Detection, AControllerThatComesIsOfferedOnce)
{
    DetectionFixture fixture;
    ControllerWatch watch (*fixture.midi);
    fixture.plug ({ "CMD Micro" });
    watch.serve();
    EXPECT_TRUE (fixture.answers->asked.isEmpty()) << "it was there at the start";
    fixture.answers->yes = false;
    const auto xponent = fixture.cables->plug ("Xponent");
    fixture.look();
    watch.serve();
    fixture.cables->pull (xponent);
    fixture.look();
    watch.serve();
    fixture.plug ({ "Xponent" });
    watch.serve();
    EXPECT_EQ (fixture.answers->asked.size(), 1);
}

TEST (Detection, AnOutputIsFoundUnderItsOwnName)
{
    DetectionFixture fixture;
    fixture.plug ({ "Vestax MIDI In", "Vestax MIDI Out" });
    fixture.midi->control.ports.setOutputEnabled ("Vestax MIDI In", true);
    fixture.look();
    EXPECT_TRUE (fixture.midi->control.ports.isOutputEnabled ("Vestax MIDI Out"));
}
