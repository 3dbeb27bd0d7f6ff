#include "EngineFixture.h"

#include "instruments/contents/SlicegateBank.h"
#include "instruments/presets/SmartKnobLibrary.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

TEST (InstrumentContents, SurviveTheEngineAndADamagedFileIsPutAsideAndTold)
{
    EngineFixture fixture;
    ASSERT_EQ (SmartKnobLibrary::loadFactory (fixture.engine->smartKnobs, 2, 1, 303), "");
    const auto before = writeSmartKnobPreset (fixture.engine->smartKnobs.preset (2, 1));
    auto& pads = fixture.engine->slicegates[3];
    pads.loadFactoryPreset (107, 5);
    pads.setPlayMode (5, PlayMode::loop);
    const auto bank = writeSlicegateBank (bankOf (pads));
    fixture.makeEngine();
    EXPECT_EQ (writeSlicegateBank (bankOf (fixture.engine->slicegates[3])), bank);
    EXPECT_FALSE (fixture.folder.file ("setup/slicegate_A.xml").existsAsFile()) << "nothing has changed it";
    EXPECT_EQ (writeSmartKnobPreset (fixture.engine->smartKnobs.preset (2, 1)), before);
    EXPECT_EQ (fixture.engine->smartKnobs.name (2, 1), "Total Chaos MO");

    fixture.engine->smartKnobs.clear (2, 1);
    ASSERT_EQ (SmartKnobLibrary::loadFactory (fixture.engine->smartKnobs, 0, 0, 101), "");
    fixture.makeEngine();
    EXPECT_FALSE (fixture.engine->smartKnobs.bank (2, 1).isEnabled (0)) << "a cleared knob stays empty";

    const auto file = fixture.folder.file ("setup/smartknob_A1.xml");
    ASSERT_TRUE (file.existsAsFile());
    fixture.engine.reset();
    file.replaceWithText (file.loadFileAsString().dropLastCharacters (40));
    fixture.makeEngine();
    struct : EngineListener
    {
        void engineEvent (EngineEvent, int) override {}
        void engineMessage (const juce::String& text, int) override { texts.add (text); }
        juce::StringArray texts;
    } listener;
    fixture.engine->addAnalysisListener (listener);
    fixture.engine->deliverMessages();
    fixture.engine->deliverMessages();
    ASSERT_EQ (listener.texts.size(), 1);
    EXPECT_TRUE (listener.texts[0].contains ("smartknob_A1.xml is damaged")) << listener.texts[0];
    EXPECT_TRUE (fixture.folder.file ("setup/smartknob_A1.xml.bad").existsAsFile());
    EXPECT_FALSE (fixture.engine->smartKnobs.bank (0, 0).isEnabled (3));
    fixture.engine->removeAnalysisListener (listener);
}

TEST (InstrumentContents, AreWrittenAgainUntilTheyCanBe)
{
    EngineFixture fixture;
    auto& store = fixture.engine->instrumentContents;
    const auto file = fixture.folder.file ("setup/slicegate_D.xml");
    ASSERT_TRUE (file.getChildFile ("in the way").createDirectory().wasOk());
    fixture.engine->slicegates[3].loadFactoryPreset (107, 5);
    for (int turn = 0; turn < 2; ++turn)
    {
        for (const auto& document : store.takeChanged())
            store.write (document);
        EXPECT_EQ (store.takeComplaint().empty(), turn > 0) << "once";
        EXPECT_TRUE (store.hasChanged());
    }
    ASSERT_TRUE (file.deleteRecursively());
    store.save();
    EXPECT_FALSE (store.hasChanged());
    EXPECT_TRUE (file.existsAsFile());
}

TEST (SmartKnobCommands, MoveTheChannelAndAHandsCommandTakesOver)
{
    EngineFixture fixture;
    fixture.loadNoise (0, 1);
    ASSERT_EQ (SmartKnobLibrary::loadFactory (fixture.engine->smartKnobs, 0, 1, 105), "");
    fixture.set ("SMARTKNOB_2_ON_B");
    EXPECT_EQ (fixture.get ("SMARTKNOB_2_ON_B"), 0.0f) << "no track";
    fixture.set ("SMARTKNOB_2_ON_A");
    EXPECT_EQ (fixture.get ("SMARTKNOB_2_ON_A"), 1.0f);
    fixture.set ("SMARTKNOB_2_A", 1.0f);
    fixture.render (512);
    EXPECT_NEAR (fixture.get ("FILTER_A"), 0.9f, 1e-6f);
    fixture.set ("FILTER_A", 0.7f);
    fixture.set ("EQ_LOW_KILL_A"); // of a parameter that no knob knows
    fixture.set ("SMARTKNOB_2_A", 0.5f);
    fixture.render (512);
    EXPECT_EQ (fixture.get ("FILTER_A"), 0.7f);
    fixture.set ("SMARTKNOB_2_ON_A");
    EXPECT_EQ (fixture.get ("SMARTKNOB_2_ON_A"), 0.0f);
    EXPECT_EQ (fixture.get ("FILTER_A"), 0.7f);
}

TEST (SlicegateBank, GoesThroughAFileWholeOrNotAtAll)
{
    EngineFixture fixture;
    auto& pads = fixture.engine->slicegates;
    const auto file = fixture.folder.file ("banks/Mine.xml");
    ASSERT_EQ (saveBank (pads[0], file), "");
    ASSERT_EQ (loadBank (pads[2], file), "");
    EXPECT_EQ (writeSlicegateBank (bankOf (pads[2])), writeSlicegateBank (bankOf (pads[0])));

    const auto before = writeSlicegateBank (bankOf (pads[1]));
    const auto text = file.loadFileAsString();
    const auto lastPad = text.lastIndexOf ("<sliceGatePreset");
    for (const auto& bad : { text.substring (0, lastPad) + "</slicegateBank>", text.dropLastCharacters (20),
                             text.replace ("2000", "2001"), text.replace (" 02\"", "\"") })
    {
        file.replaceWithText (bad);
        EXPECT_NE (loadBank (pads[1], file), "");
    }
    const auto pipe = fixture.folder.file ("banks/pipe.xml");
    ASSERT_EQ (mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);
    for (const auto& noFile : { pipe, juce::File ("/dev/zero"), fixture.folder.file ("banks") })
        EXPECT_NE (loadBank (pads[1], noFile), "");
    EXPECT_EQ (writeSlicegateBank (bankOf (pads[1])), before);
}
