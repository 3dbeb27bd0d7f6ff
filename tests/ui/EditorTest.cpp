#include "UiBench.h"

#include "mixer/AutoCrossfader.h"
#include "ui/ParameterList.h"
#include "ui/ParameterRow.h"
#include "ui/decks/BeatStepField.h"
#include "ui/decks/DeckPanels.h"
#include "ui/decks/UtilityPanels.h"
#include "ui/header/HeaderPanels.h"
#include "ui/panel/PanelPaint.h"
#include "ui/preferences/Preferences.h"
#include "ui/widgets/PXImageButton.h"
#include "ui/widgets/PXSlider.h"

#include <gtest/gtest.h>

namespace
{
PXSlider& sliderOf (UiBench& bench, juce::Component& root, const char* name)
{
    return bench.find<PXSlider> (root, name);
}

bool isShown (const juce::Component& c)
{
    return c.isVisible() && (c.getParentComponent() == nullptr || isShown (*c.getParentComponent()));
}
}

TEST (Editor, SwitchingTheModeKeepsAllFourDecksPlaying)
{
    UiBench bench;
    auto& flag = bench.engine.settings.editor[EditorPreference::fourDeckMode];
    flag = 1;
    bench.refresh();
    for (int deck = 0; deck < deckCount; ++deck)
    {
        bench.load (bench.halfLoudTrack (20.0), deck);
        bench.engine.transport.playPause (deck);
    }
    bench.render();
    const auto before = bench.engine.decks.deck (2)->head.position;

    flag = 0;
    bench.refresh();
    EXPECT_FALSE (bench.editor->deck (2).isVisible() || bench.editor->deck (3).isVisible());
    EXPECT_EQ (bench.editor->globalBlock().getTabContentComponent (0)->getNumChildComponents(), 3)
        << "two channels and the crossfader";
    bench.render (48000);
    EXPECT_GT (bench.engine.decks.deck (2)->head.position, before + 40000.0);

    flag = 1;
    bench.refresh();
    EXPECT_TRUE (bench.editor->deck (2).isVisible());
    EXPECT_EQ (bench.editor->globalBlock().getTabContentComponent (0)->getNumChildComponents(), 5);
    for (int deck = 0; deck < deckCount; ++deck)
        EXPECT_EQ (bench.engine.decks.deck (deck)->play.on, 1);
}

TEST (Editor, TheGhostMixerStandsInWhileTheMixerIsHidden)
{
    UiBench bench;
    auto& editor = *bench.editor;
    bench.refresh();
    const auto top = editor.browserView().getY();
    EXPECT_FALSE (editor.ghostStrip().isVisible());
    editor.globalBlock().setCurrentTabIndex (GlobalComponent::fx);
    EXPECT_TRUE (editor.ghostStrip().isVisible());
    EXPECT_EQ (editor.browserView().getY(), top + 31);
    bench.engine.settings.editor[EditorPreference::showGhostMixer] = 0;
    bench.refresh();
    EXPECT_FALSE (editor.ghostStrip().isVisible());
    EXPECT_EQ (editor.browserView().getY(), top);
}

TEST (Editor, ANoticeStaysInSightWithAndWithoutABrowser)
{
    UiBench bench;
    auto& bar = bench.find<NoticeBar> (*bench.editor);
    auto clicks = 0;
    for (const auto browser : { true, false })
    {
        bench.editor->showBrowser (browser);
        bench.editor->setNotice ("No audio device.", [&clicks] { ++clicks; });
        EXPECT_TRUE (isShown (bar));
        EXPECT_FALSE (bar.getBounds().intersects (bench.editor->browserView().getBounds())
                      && bench.editor->browserView().isVisible());
        release (bar);
        bench.editor->setNotice ({});
        EXPECT_FALSE (isShown (bar));
    }
    EXPECT_EQ (clicks, 2);
}

TEST (Editor, ARecordingSaysWhereItLiesAndTheNewsLeave)
{
    UiBench bench;
    auto& bar = bench.find<NoticeBar> (*bench.editor);
    auto& news = bench.editor->headerStrip().newsLine();
    bench.engine.settings.recordFile.set (bench.folder.file ("mix.wav").getFullPathName());
    bench.render(); // the recorder takes the engine's rate
    bench.engine.toggleRecorder();
    bench.refresh();
    const auto file = bench.engine.recorder.file();
    EXPECT_TRUE (news.shown().sentence.contains (file.getFileName())) << news.shown().sentence;
    EXPECT_FALSE (isShown (bar));
    bench.render (96000);
    bench.engine.toggleRecorder();
    bench.refresh();
    ASSERT_TRUE (isShown (bar));
    EXPECT_TRUE (file.existsAsFile());
    EXPECT_EQ (bar.sentence(), "Recorded 00:02.0 to " + file.getFullPathName());
    bench.editor->setNotice ("No audio device.");
    EXPECT_EQ (bar.sentence(), "No audio device.") << "trouble covers good news";
    bench.editor->setNotice ({});
    bench.now += 16000;
    bench.refresh();
    EXPECT_FALSE (isShown (bar));
}

TEST (Editor, ADeckNamesTheKeyOfItsTrackInTheNotationThatIsPreferred)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& track = bench.engine.decks.deck (0)->track;
    const auto shown = [&]
    {
        bench.refresh();
        bench.refresh(); // the notation is looked at after the texts
        return bench.editor->deck (0).texts().key;
    };
    EXPECT_EQ (shown(), juce::String()) << "nobody knows it";
    track.key = 21;
    EXPECT_EQ (shown(), "Am");
    bench.session->preferences().set (KeyText::preference, KeyText::wheelValue);
    EXPECT_EQ (shown(), "8A");
}

TEST (Editor, AutomixWithNothingToPlaySaysSo)
{
    UiBench bench;
    bench.engine.setParameter (CommandTable::numberOf ("AUTOMIX_ON_OFF"), 1.0f);
    bench.engine.deliverMessages();
    bench.render();
    bench.engine.deliverMessages();
    bench.refresh();
    EXPECT_EQ (bench.editor->headerStrip().newsLine().shown().sentence,
               "AUTO IS OFF: THE LIST HOLDS NO TRACK");
}

TEST (Editor, AutomixSaysWhatItIsAboutToDo)
{
    UiBench bench;
    auto& news = bench.editor->headerStrip().newsLine();
    bench.engine.settings.automixFadeSeconds = 5.0;
    for (int deck : { 0, 1 })
        bench.load (bench.halfLoudTrack (70.0), deck);
    bench.engine.setParameter (CommandTable::numberOf ("AUTOMIX_ON_OFF"), 1.0f);
    bench.engine.deliverMessages();
    bench.render();
    bench.refresh();
    EXPECT_EQ (news.shown().sentence, "AUTO: TO DECK B IN 01:04");
    bench.engine.settings.autoFadeState = AutoCrossfader::idle;
    bench.refresh();
    EXPECT_EQ (news.shown().sentence, "AUTO: TO DECK B IN 01:04") << "the fader has come to rest";

    // Near the end B begins, and is on air from then on.
    bench.engine.transport.seekFrames (0, 67.0 * 44100.0);
    bench.render();
    bench.render();
    bench.refresh();
    EXPECT_EQ (news.shown().sentence, "AUTO: MIXES INTO DECK B");
}

TEST (Editor, AfterTheFirstSessionAClickSwitchesTheTooltipsOff)
{
    UiBench bench;
    auto& shown = bench.engine.settings.editor[EditorPreference::showTooltips];
    const auto isOffered = [&]
    {
        bench.reopen();
        bench.refresh();
        return bench.editor->headerStrip().newsLine().shown().sentence == "TOOLTIPS ARE ON. CLICK: OFF";
    };
    ASSERT_EQ (shown, 1);
    EXPECT_FALSE (isOffered()) << "in the first session";
    bench.session->preferences().set ("tooltips_since", "1000"); // long ago
    shown = 0;
    EXPECT_FALSE (isOffered()) << "to who has none";
    shown = 1;
    ASSERT_TRUE (isOffered());
    auto& news = bench.editor->headerStrip().newsLine();
    news.mouseUp (mouseAt (news, news.getLocalBounds().getCentre().toFloat()));
    EXPECT_EQ (shown, 0);
    shown = 1;
    EXPECT_FALSE (isOffered()) << "a second time";
}

TEST (Editor, ALoopBesideTheBeatOffersSnapOnceAndAClickTakesIt)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack (20.0), 0);
    auto& player = *bench.engine.decks.deck (0);
    player.marks.bpm = 120.0;
    player.marks.fixedGrid = 1;
    player.marks.downbeatPosition = 0;
    player.track.numBeats = 1;
    auto& news = bench.editor->headerStrip().newsLine();
    const auto loopAt = [&] (double seconds)
    {
        player.place (seconds * 44100.0);
        player.loops.mode = 0;
        bench.refresh();
        bench.engine.loops.toggleLoop (0);
        bench.refresh();
        return news.shown().sentence;
    };
    EXPECT_EQ (loopAt (2.0), "") << "on the beat";
    EXPECT_TRUE (loopAt (4.2).contains ("BESIDE THE BEAT"));
    release (news);
    EXPECT_EQ (bench.engine.settings.deckSetup[0].snap, 1);
    bench.engine.settings.deckSetup[0].snap = 0;
    EXPECT_EQ (loopAt (6.2), "") << "once is enough";
}

TEST (Editor, TheBrowsersHeightComesBack)
{
    struct Case
    {
        bool four, waves;
        int height, bare;
    };
    for (const auto& [four, waves, height, bare] : { Case { false, false, 800, 468 },
                                                     { true, false, 1000, 728 },
                                                     { false, true, 900, 577 },
                                                     { true, true, 1200, 898 } })
        for (const auto percent : { 100, 150 })
        {
            SCOPED_TRACE (testing::Message() << height << " at " << percent);
            UiBench bench;
            auto& editor = *bench.editor;
            bench.engine.settings.editor[EditorPreference::fourDeckMode] = four ? 1 : 0;
            editor.setScale (percent);
            editor.showWaves (waves);
            bench.refresh();
            editor.setSize (1600, height * percent / 100);
            editor.showBrowser (false);
            EXPECT_EQ (editor.getHeight(), juce::roundToInt (bare * percent / 100.0));
            EXPECT_EQ (editor.stackedWaves().isVisible(), waves);
            editor.showBrowser (true);
            EXPECT_EQ (editor.getHeight(), height * percent / 100);
            editor.showBrowserInWindow (true);
            EXPECT_EQ (editor.getHeight(), juce::roundToInt (bare * percent / 100.0));
            editor.showBrowserInWindow (false);
            juce::MessageManager::getInstance()->runDispatchLoopUntil (50);
            EXPECT_EQ (editor.getHeight(), height * percent / 100);
            editor.showBrowser (false);
            editor.setSize (1600, 2000);
            editor.showBrowser (true);
            EXPECT_EQ (editor.getHeight(), 2000) << "a hand had made room";
        }
}

TEST (Editor, StackedWavesShowTheLoadedDecksOfTheModeAndAreKept)
{
    UiBench bench;
    bench.editor->setSize (1280, 1300);
    const auto shown = [&]
    {
        bench.refresh();
        juce::String letters;
        for (int deck = 0; deck < deckCount; ++deck)
            if (isShown (bench.editor->stackedWaves().row (deck)))
                letters << PanelPaint::letterOf (deck);
        return letters;
    };
    for (int deck : { 0, 2 })
        bench.load (bench.halfLoudTrack(), deck);
    EXPECT_EQ (shown(), "") << "not before they are wanted";
    auto& button = bench.find<PXImageButton> (bench.editor->headerStrip(), "_wavesButton");
    press (button);
    release (button);
    EXPECT_EQ (shown(), "A");
    bench.engine.settings.editor[EditorPreference::fourDeckMode] = 1;
    EXPECT_EQ (shown(), "AC");
    bench.load (bench.halfLoudTrack(), 3);
    EXPECT_EQ (shown(), "ACD");
    bench.reopen();
    bench.editor->setSize (1280, 1300);
    EXPECT_EQ (shown(), "ACD") << "as it was left";
    bench.editor->setSize (1280, 700);
    EXPECT_EQ (shown(), "") << "no room";
    bench.editor->setSize (1280, 1300);
    bench.editor->showWaves (false);
    EXPECT_EQ (shown(), "");
}

TEST (Editor, AWindowBeyondTheLimitsIsDrawnFromPicturesOfItsOwnSize)
{
    PreferencesFile passing { juce::File() };
    struct Case
    {
        int percent, width, height;
        float factor;
    };
    for (const auto& [percent, width, height, factor] : { Case { 100, 1280, 800, 1.0f },
                                                          { 100, 2560, 1440, 1.0f },
                                                          { 100, 3440, 1440, 1.5f },
                                                          { 100, 2700, 1200, 1.25f },
                                                          { 100, 5120, 2160, 2.0f },
                                                          { 175, 2560, 1440, 1.75f },
                                                          { 200, 1920, 1080, 1.75f },
                                                          { 150, 1400, 800, 1.25f },
                                                          { 200, 1100, 800, 1.0f },
                                                          { 100, 800, 600, 0.78125f },
                                                          { 100, 3440, 320, 1.0810811f } })
    {
        EditorScale scale (passing);
        scale.set (percent);
        EXPECT_NEAR (scale.factorFor (width, height), factor, 1e-5) << percent << " " << width;
    }
}

TEST (Editor, OnlyWhatIsSeenPolls)
{
    UiBench bench;
    bench.engine.settings.editor[EditorPreference::fourDeckMode] = 0;
    bench.refresh();
    const auto check = [&bench]
    {
        int polling = 0;
        for (auto* component : descendants (*bench.editor))
            if (auto* view = dynamic_cast<PollingView*> (component))
            {
                EXPECT_EQ (view->isPolling(), isShown (*view)) << typeid (*view).name();
                polling += view->isPolling() ? 1 : 0;
            }
        return polling;
    };
    EXPECT_GT (check(), 10);
    bench.editor->globalBlock().setCurrentTabIndex (GlobalComponent::wav);
    check();
    bench.editor->setVisible (false);
    EXPECT_EQ (check(), 0);
}

TEST (Editor, ControlsDoTheirCommandAndFollowIt)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& deckA = bench.editor->deck (0);
    auto& play = bench.find<PXImageButton> (deckA, "_playButton");
    const auto& player = *bench.engine.decks.deck (0);
    for (const auto expected : { 1, 0, 1 })
    {
        press (play);
        EXPECT_EQ (player.play.on, expected) << "as it goes down";
        release (play);
        bench.refresh();
        EXPECT_EQ (play.isOn, expected == 1);
    }

    auto& pitch = sliderOf (bench, deckA, "_pitchSlider");
    pitch.setValue (0.0, juce::sendNotificationSync);
    EXPECT_NEAR (player.tempo.pitch, 1.0, 1e-6) << "down is faster";
    bench.refresh();
    EXPECT_NEAR (pitch.getValue(), 0.0, 1e-6) << "reading back must not turn the fader round";
    pitch.mouseDoubleClick (mouseAt (pitch, { 4.0f, 4.0f }));
    EXPECT_NEAR (player.tempo.pitch, 0.5, 1e-6);

    auto& mixer = *bench.editor->globalBlock().getTabContentComponent (GlobalComponent::mixer);
    auto& crossfader = sliderOf (bench, mixer, "_crossfaderSlider");
    crossfader.setValue (0.25, juce::sendNotificationSync);
    EXPECT_NEAR (bench.engine.settings.crossfader, 0.25, 1e-6);
    bench.engine.setParameter (CommandTable::numberOf ("CROSSFADER"), 0.75f);
    bench.refresh();
    EXPECT_NEAR (crossfader.getValue(), 0.75, 1e-6);
}

TEST (Editor, TheRightButtonDeletesAHotCueAndPressesNothing)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    bench.engine.settings.deckSetup[0].panelsLeft[0] = 1; // the cue panel
    bench.refresh();
    auto& hotCue = bench.find<PXTextButton> (bench.editor->deck (0), "_hotCueButton");
    const auto& slot = bench.engine.decks.deck (0)->marks.cues[0];
    press (hotCue);
    release (hotCue);
    EXPECT_GE (slot, 0.0);
    bench.refresh();
    EXPECT_TRUE (hotCue.getToggleState());
    press (hotCue, juce::ModifierKeys::rightButtonModifier);
    release (hotCue, juce::ModifierKeys::rightButtonModifier);
    EXPECT_LT (slot, 0.0);
}

TEST (Editor, ADeckSaysWhatItKnowsAndWhatWentWrong)
{
    UiBench bench;
    bench.refresh();
    auto& strip = bench.editor->deck (1);
    EXPECT_EQ (strip.texts(), (DeckComponent::Texts { PanelPaint::dash(), "", "", PanelPaint::dash(), "" }));
    EXPECT_EQ (strip.notice()[0], "Drop a track here,");

    const auto broken = bench.folder.file ("broken.mp3");
    broken.replaceWithText ("no audio");
    bench.load (broken, 1);
    EXPECT_EQ (strip.notice()[0], "*** Load Error ***");
    for (int i = 0; i < 200; ++i)
        bench.refresh();
    EXPECT_EQ (strip.notice()[0], "*** Load Error ***") << "until something is loaded";
    EXPECT_NE (bench.editor->deck (0).notice()[0], "*** Load Error ***");

    const auto track = bench.halfLoudTrack().getFullPathName();
    EXPECT_FALSE (strip.isInterestedInFileDrag ({ "/tmp/picture.png" }));
    EXPECT_TRUE (strip.isInterestedInFileDrag ({ "/tmp/picture.png", track }));
    strip.filesDropped ({ "/tmp/picture.png", track }, 5, 5);
    bench.wait (1);
    EXPECT_EQ (strip.texts().title, "Half Loud");
    EXPECT_TRUE (strip.notice().isEmpty());

    bench.load (bench.folder.file ("missing.wav"), 1);
    EXPECT_EQ (strip.notice()[0], "*** Load Error ***");
    for (int i = 0; i < 30; ++i)
        bench.refresh();
    EXPECT_TRUE (strip.notice().isEmpty()) << "the deck kept its track and must be seen again";
}

TEST (Editor, ATrackIsDraggedFromDeckToDeck)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& wave = bench.find<DeckWaveform> (bench.editor->deck (0));
    const juce::DragAndDropTarget::SourceDetails drag (DeckWaveform::dragDescription, &wave, {});
    EXPECT_FALSE (bench.editor->deck (0).isInterestedInDragSource (drag)) << "onto itself";
    auto& target = bench.editor->deck (1);
    ASSERT_TRUE (target.isInterestedInDragSource (drag));
    target.itemDropped (drag);
    bench.wait (1);
    EXPECT_EQ (target.texts().title, "Half Loud");
}

TEST (Editor, PanelsAreChosenCountedAndRemembered)
{
    UiBench bench;
    auto& strip = bench.editor->deck (0);
    const auto seats = [&strip]
    {
        int count = 0;
        for (auto* child : strip.getChildren())
            count += dynamic_cast<DeckContainerPanel*> (child) != nullptr ? 1 : 0;
        return count;
    };
    EXPECT_EQ (seats(), 2);
    bench.find<DeckContainerPanel> (strip).choose (4);
    EXPECT_EQ (bench.engine.settings.deckSetup[0].panelsLeft[0], 4);
    EXPECT_EQ (bench.find<DeckContainerPanel> (strip).shownPanel(), 4);

    bench.editor->setSize (2560, 1440);
    for (const auto& [left, right] : { std::pair { 4, 4 }, { 0, 3 }, { 0, 0 } })
    {
        bench.engine.settings.editor[EditorPreference::deckPanelsLeft] = static_cast<int8_t> (left);
        bench.engine.settings.editor[EditorPreference::deckPanelsRight] = static_cast<int8_t> (right);
        bench.refresh();
        EXPECT_EQ (seats(), left + right);
    }
}

TEST (Editor, ANewUserSeesHotCuesAndWhereThereIsRoomTheGrid)
{
    UiBench bench;
    UtilityPanels::layOutForNewUser (bench.engine.settings);
    struct Case
    {
        int width;
        bool cue, grid;
    };
    for (const auto& [width, cue, grid] :
         { Case { 1024, false, false }, { 1280, true, false }, { 1920, true, true } })
    {
        bench.editor->setSize (width, 800);
        bench.refresh();
        auto& deck = bench.editor->deck (0);
        const auto isThere = [&] (auto* kind)
        {
            const auto all = descendants (deck);
            return std::any_of (all.begin(), all.end(),
                                [&] (auto* each) { return dynamic_cast<decltype (kind)> (each) != nullptr; });
        };
        DeckCuePanel* cues = nullptr;
        DeckGridPanel* grids = nullptr;
        DeckLoopPanel* loops = nullptr;
        EXPECT_EQ (isThere (cues), cue) << width;
        EXPECT_EQ (isThere (grids), grid) << width;
        EXPECT_TRUE (isThere (loops)) << width;
        EXPECT_EQ (deck.lacksRoomForPanels(), !grid) << width;
    }
}

TEST (Editor, TheScaleKeepsTheLayoutAndIsRemembered)
{
    UiBench bench;
    const auto deckWidth = bench.editor->deck (0).getWidth();
    bench.editor->setScale (200);
    EXPECT_EQ (bench.editor->getWidth(), 2560);
    EXPECT_EQ (bench.editor->deck (0).getWidth(), deckWidth);
    bench.reopen();
    EXPECT_EQ (bench.editor->getWidth(), 2560);
    EXPECT_EQ (bench.editor->deck (0).getWidth(), deckWidth);
    bench.editor->showPreferences ("Layout");
    EXPECT_EQ (bench.editor->toolWindows().find ("Preferences")->tool().getWidth(), Preferences::width);
    EXPECT_GE (bench.editor->toolWindows().find ("Preferences")->getWidth(), 2 * Preferences::width);
    bench.editor->setBounds (0, 0, 1024, 800);
    EXPECT_EQ (bench.editor->deck (0).getWidth(), 397) << "too small a window shows everything, smaller";
}

TEST (Editor, ShowsTheTimeOfARecordingOnlyWhileItRuns)
{
    UiBench bench;
    auto& buttons = bench.editor->headerStrip().buttonPanel();
    EXPECT_EQ (buttons.recordedTime(), "");
    bench.render(); // the recorder takes the engine's rate
    bench.engine.toggleRecorder();
    bench.render (96000);
    bench.refresh();
    EXPECT_EQ (buttons.recordedTime(), "00:02.0");
    bench.engine.toggleRecorder();
    bench.refresh();
    EXPECT_EQ (buttons.recordedTime(), "");
}

TEST (Editor, ListsEveryCommandAndHasControlsForTheBuiltOnes)
{
    UiBench bench;
    ParameterList list (bench.engine);
    list.setSize (1024, 600);
    EXPECT_EQ (list.getNumRows(), CommandTable::commandCount);
    list.search ("hot CUE b");
    EXPECT_EQ (list.getNumRows(), 16);

    ParameterRow row (bench.engine);
    row.setSize (900, 28);
    for (int number = 1; number <= CommandTable::commandCount; ++number)
    {
        row.show (number);
        EXPECT_EQ (row.getNumChildComponents() == 0, CommandTable::isUnbuilt (number)) << number;
        for (auto* control : row.getChildren())
            EXPECT_TRUE (row.getLocalBounds().contains (control->getBounds()) && control->getWidth() > 0);
    }
}

TEST (Editor, OpensAndClosesTwoHundredTimes)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    for (int i = 0; i < 200; ++i)
    {
        bench.engine.settings.editor[EditorPreference::fourDeckMode] = static_cast<int8_t> (i % 2);
        if (i % 50 == 49)
            bench.engine.loadTrack (bench.halfLoudTrack(), 1); // closes during a load
        bench.reopen();
        bench.editor->globalBlock().setCurrentTabIndex (i % GlobalComponent::tabs);
    }
    bench.editor.reset();
    bench.engine.transport.playPause (0);
    bench.render();
    EXPECT_EQ (bench.engine.decks.deck (0)->play.on, 1) << "the engine outlives its windows";
}

TEST (BeatStepField, SaysBeatsAsTheyAreCounted)
{
    for (const auto& [step, text] :
         { std::pair { 0, "1/32" }, { 4, "1/2" }, { 5, "1" }, { 7, "4" }, { 10, "32" } })
        EXPECT_EQ (BeatStepField::textOf (step), text);
}
