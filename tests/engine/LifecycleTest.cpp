#include "EngineFixture.h"
#include "analysis/files/AnalysisFile.h"
#include "deck/load/DeckAnalysis.h"
#include "shared/ScriptedPrompts.h"

#include "settings/SettingsFile.h"

#include <gtest/gtest.h>

#include <clocale>

TEST (Lifecycle, CuesAreSavedOnRequestAndAtTheEndAndTheNextEngineFindsAllOfIt)
{
    EngineFixture engine;
    engine.loadNoise (0, 4);
    const auto track = engine.noiseFile (4);
    const auto stored = [&]
    { return AnalysisFile::read (AnalysisFile::forTrack (engine.folder.file ("beatmarks"), track)); };
    ASSERT_TRUE (stored());
    engine.deck().marks.cues[2] = 300.0;
    engine.engine->decks.requestSave (engine.deck());
    engine.engine->deliverMessages();
    engine.engine->loaders.waitUntilIdle (0);
    EXPECT_EQ (stored()->cues->cuePos[2], 300.0);

    engine.deck().marks.cues[3] = 400.0;
    const auto atTheEnd = analysisOf (engine.engine->decks, engine.deck());
    engine.engine->loadTrack (track, 1); // the end does not wait for it
    engine.makeEngine();
    EXPECT_EQ (stored(), std::optional (atTheEnd));
    engine.loadNoise (0, 4);
    EXPECT_EQ (analysisOf (engine.engine->decks, engine.deck()), atTheEnd);
}

TEST (Lifecycle, TheHostSeesWhatWasAgreed)
{
    EngineFixture fixture;
    auto& engine = *fixture.engine;
    EXPECT_EQ (engine.getParameters().size(), 465);
    EXPECT_EQ (engine.getParameters()[464]->getName (64), "Disk Recorder");
    for (const auto& [channel, input, output] : { std::tuple { 0, "Deck1 L", "Master L" },
                                                  { 3, "Deck2 R", "Monitor R" },
                                                  { 9, "Mic R", "Deck3 R" },
                                                  { 10, "", "Deck4 L" },
                                                  { 13, "", "Sampler R" },
                                                  { -1, "", "" },
                                                  { 14, "", "" } })
    {
        EXPECT_EQ (engine.getInputChannelName (channel), input) << channel;
        EXPECT_EQ (engine.getOutputChannelName (channel), output) << channel;
    }
    juce::MemoryBlock state;
    engine.getStateInformation (state);
    EXPECT_EQ (state.getSize(), 0u);

    auto layout = engine.getBusesLayout();
    EXPECT_TRUE (engine.checkBusesLayoutSupported (layout));
    layout.outputBuses.getReference (0) = juce::AudioChannelSet::mono();
    EXPECT_FALSE (engine.checkBusesLayoutSupported (layout));
}

TEST (Lifecycle, ParametersOfOtherHostsReachTheirCommands)
{
    EngineFixture fixture;
    const auto& parameters = fixture.engine->getParameters();
    // A button reads as it was written, so that a host that drops equal writes passes each press and release on once.
    for (const auto expected : { 0.0f, 1.0f })
    {
        parameters[40]->setValue (1.0f); // Key Lock A
        EXPECT_EQ (fixture.get ("KEY_LOCK_A"), expected);
        EXPECT_EQ (parameters[40]->getValue(), 1.0f);
        parameters[40]->setValue (0.0f);
        EXPECT_EQ (fixture.get ("KEY_LOCK_A"), expected);
        EXPECT_EQ (parameters[40]->getValue(), 0.0f);
    }
    for (const int number : { 285, 21 }) // Balance A and Pitch A, which is turned round
    {
        parameters[number - 1]->setValue (0.25f);
        EXPECT_EQ (parameters[number - 1]->getValue(), 0.25f);
        EXPECT_EQ (parameters[number - 1]->getDefaultValue(), 0.5f) << "its rest, whatever was saved";
    }
    for (const auto& [value, size] : { std::pair { 1.0f, 8.0f }, { 0.0f, 7.0f }, { 0.0f, 6.0f } })
    {
        EXPECT_NE (parameters[136]->getValue(), value) << "a host would drop the step";
        parameters[136]->setValue (value);
        EXPECT_EQ (fixture.get ("LOOP_SIZE_A"), size);
    }
    for (const auto* parameter : parameters)
        for (const auto value : { parameter->getValue(), parameter->getDefaultValue() })
            EXPECT_TRUE (value >= 0.0f && value <= 1.0f) << parameter->getName (64);
}

TEST (Lifecycle, TextsOfParametersHaveAPointInEveryLocale)
{
    EngineFixture fixture;
    const std::string before = std::setlocale (LC_ALL, nullptr);
    for (const auto* locale : { "C", "de_DE.UTF-8", "de_DE", "fr_FR.UTF-8" })
        if (std::setlocale (LC_ALL, locale) != nullptr)
        {
            EXPECT_EQ (fixture.engine->getParameterText (285), "0.50") << locale;
            EXPECT_EQ (fixture.engine->getParameters()[284]->getText (0.25f, 8), "0.25") << locale;
        }
    std::setlocale (LC_ALL, before.c_str());
}

TEST (Lifecycle, AHandOnTheEditorsControlsIsToldToTheHost)
{
    struct Host : juce::AudioProcessorListener
    {
        void audioProcessorParameterChanged (juce::AudioProcessor*, int index, float value) override
        {
            said << index + 1 << "=" << value << " ";
        }
        void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override {}
        void audioProcessorParameterChangeGestureBegin (juce::AudioProcessor*, int index) override
        {
            said << "[" << index + 1 << " ";
        }
        void audioProcessorParameterChangeGestureEnd (juce::AudioProcessor*, int) override { said << "] "; }
        juce::String said;
    };
    EngineFixture fixture;
    Host host;
    auto& engine = *fixture.engine;
    engine.addListener (&host);
    engine.edit (285, 0.25f);
    engine.beginGesture (21);
    engine.beginGesture (21); // a second control of the same command
    engine.edit (21, 0.5f);
    engine.edit (21, 0.75f);
    engine.endGesture (21);
    engine.endGesture (21);
    engine.edit (137, 127.0f);
    engine.edit (1001, 1.0f);
    engine.removeListener (&host);
    EXPECT_EQ (host.said, "[285 285=0.25 ] [21 21=0.5 21=0.75 ] [137 137=1 ] ");
    EXPECT_EQ (fixture.get ("PITCH_A"), 0.25f);
    EXPECT_EQ (fixture.get ("LOOP_SIZE_A"), 8.0f);
}

TEST (Lifecycle, SettingsSurviveAndAutomixIsNeverOnAfterAStart)
{
    EngineFixture fixture;
    EXPECT_TRUE (fixture.engine->isFirstRun);
    EXPECT_TRUE (fixture.folder.file ("beatmarks").isDirectory());
    fixture.set ("SNAP");
    fixture.engine->settings.pitchRangeIndex = 12;
    fixture.makeEngine();
    EXPECT_FALSE (fixture.engine->isFirstRun);
    EXPECT_EQ (fixture.get ("SNAP"), 1.0f);
    EXPECT_EQ (fixture.engine->decks.pitchRange, 1.0);

    // A file in which automix was left on by other means.
    fixture.engine.reset();
    EngineSettings settings = defaultSettings ({ fixture.folder });
    settings.automixOn = 1;
    ASSERT_TRUE (saveSettings (settings, fixture.folder.file ("setup")));
    fixture.makeEngine();
    EXPECT_EQ (fixture.engine->settings.automixOn, 0);
}

TEST (Lifecycle, TheCrossfaderComesBackWhereAHandHadIt)
{
    EngineFixture fixture;
    fixture.set ("CROSSFADER", 0.3f);
    fixture.set ("AUTO_CROSSFADER_RIGHT");
    fixture.render (44100);
    EXPECT_GT (fixture.get ("CROSSFADER"), 0.3f);
    fixture.makeEngine(); // quit in the fade
    EXPECT_FLOAT_EQ (fixture.get ("CROSSFADER"), 0.3f);
    fixture.render (44100);
    EXPECT_FLOAT_EQ (fixture.get ("CROSSFADER"), 0.3f) << "the fade does not go on";
}

TEST (Lifecycle, PlayUnderAutomixAsksAndAYesEndsIt)
{
    const TemporaryFolder folder;
    const auto answers = std::make_shared<ScriptedPrompts>();
    EngineWorld world;
    world.folders.root = folder;
    world.prompts = answers;
    auto owned = std::make_unique<CPlatterdex> (std::move (world));
    auto& engine = *owned;
    engine.settings.automixOn = 1;
    engine.setParameter (1, 1.0f);
    engine.deliverMessages();
    EXPECT_EQ (engine.settings.automixOn, 1);
    EXPECT_EQ (answers->asked[0], "Play Locked, automix is active!|Do you want to stop Automix?");
    answers->yes = true;
    engine.setParameter (1, 1.0f);
    EXPECT_EQ (engine.settings.automixOn, 1); // not before the message thread has its turn
    engine.deliverMessages();
    EXPECT_EQ (engine.settings.automixOn, 0);
    EXPECT_EQ (engine.getParameter (1), 0.0f);

    owned.reset();
    answers->last (true); // the box was left open: its answer finds nobody, and says so to nobody
}

TEST (Lifecycle, AnEngineEndsInTheMiddleOfEverything)
{
    for (int round = 0; round < 10; ++round)
    {
        EngineFixture fixture;
        fixture.engine->settings.recordFile.set (fixture.folder.file ("r.wav").getFullPathName());
        fixture.loadNoise (0, 20);
        fixture.set ("PLAY_PAUSE_A");
        fixture.set ("DISK_RECORDER");
        fixture.render (2000);
        for (int d = 0; d < deckCount; ++d)
            fixture.engine->loadTrack (fixture.noiseFile (20), d);
    }
}

TEST (Lifecycle, AutomationOfTheRecorderTouchesTheDiskOnTheMessageThread)
{
    EngineFixture fixture;
    fixture.engine->settings.recordFile.set (fixture.folder.file ("r.wav").getFullPathName());
    fixture.render (512);
    const auto recordings = [&]
    { return juce::File (fixture.folder).getNumberOfChildFiles (juce::File::findFiles, "r_*.wav"); };
    fixture.engine->setParameter (CommandTable::numberOf ("DISK_RECORDER"), 1.0f);
    fixture.render (512);
    EXPECT_EQ (recordings(), 0) << "this is the host's audio thread";
    fixture.engine->deliverMessages();
    EXPECT_EQ (recordings(), 1);
}

TEST (Lifecycle, ARootThatCannotBeWrittenStillGivesAWorkingSession)
{
    const TemporaryFolder folder;
    const auto blocked = folder.file ("a file");
    blocked.create();
    EngineWorld world;
    world.folders.root = blocked.getChildFile ("root");
    CPlatterdex engine (std::move (world));
    engine.setParameter (41, 1.0f);
    EXPECT_EQ (engine.getParameter (41), 0.0f);
    engine.setParameter (465, 1.0f);
    engine.deliverMessages(); // the recorder stays idle, and says so
    EXPECT_EQ (engine.getParameter (465), 0.0f);
}
