#include "app/ApplicationRun.h"

#include "app/audio/RealTimePriority.h"
#include "demo/DemoTracks.h"
#include "demo/FirstBank.h"
#include "support/language/Translate.h"
#include "ui/decks/UtilityPanels.h"
#include "ui/sampler/OfferLoops.h"

#include <memory>

namespace
{
/** Below the audio thread's: a block never waits for a controller. */
constexpr int midiPriority = 35;

/** With what versions before kept in files of their own. */
PreferencesFile& preferencesOf (Session& session)
{
    auto& preferences = session.preferences();
    preferences.takeIn ("audioDevice", session.folders.setup().getChildFile ("audio_device.xml"));
    preferences.takeIn ("window", session.folders.setup().getChildFile ("window.txt"));
    return preferences;
}

MidiSystem::Options midiOptions()
{
    return { .askForRealTime = [] (pid_t thread) { RealTimePriority::request (thread, midiPriority); } };
}
}

ApplicationRun::ApplicationRun (Session::Options options, const juce::Array<juce::File>& tracks)
    : session (std::make_shared<Session> (std::move (options))),
      engine (makeWorld()),
      midi (engine, midiOptions()),
      audio (engine, preferencesOf (*session)),
      signals ([] { juce::JUCEApplicationBase::quit(); })
{
    engine.setParameter (CPlatterdex::standaloneCall, CPlatterdex::standaloneValue);

    if (tracks.size() > 2)
        engine.settings.editor[EditorPreference::fourDeckMode] = 1; // what is loaded there shall be seen
    std::unique_ptr<juce::AudioProcessorEditor> content (engine.createEditorIfNeeded());
    window =
        std::make_unique<MainWindow> (std::move (content), session->preferences(), [this] { askToQuit(); });

    audio.onChange = [this] { tellOfDevice(); };
    audio.showPage = [this] { showAudioPage(); };
    tellOfDevice();

    for (int deck = 0; deck < tracks.size(); ++deck)
        engine.loadTrack (tracks[deck], deck);
    offerDemoTracks();
}

ApplicationRun::~ApplicationRun()
{
    demoTracks.reset();
    window.reset();
}

juce::String ApplicationRun::audioReport() const
{
    const int64_t lost = engine.recorder.droppedFrames;
    return audio.report()
           + (lost > 0 ? "\n" + tr ("Recorder: %1 frames lost, the disk is too slow.", lost)
                       : juce::String());
}

EngineWorld ApplicationRun::makeWorld()
{
    auto made = session->world();
    made.createEditor = [this] (CPlatterdex& e) -> juce::AudioProcessorEditor*
    {
        auto pages = midiWindows.pages();
        pages.push_back ({ AudioDevices::pageTitle, {}, [this] { return audio.makePage(); } });
        auto opened = std::make_unique<CPlatterdexVstEditor> (
            e, session.get(), [this] { showAudioPage(); }, std::move (pages));
        editor = opened.get();
        return opened.release();
    };
    return made;
}

void ApplicationRun::showAudioPage()
{
    if (editor != nullptr)
        editor->showPreferences (AudioDevices::pageTitle);
}

void ApplicationRun::tellOfDevice()
{
    if (editor != nullptr)
        editor->setNotice (audio.notice(), [this] { audio.offerHelp (*editor); });
}

bool ApplicationRun::isPerforming() const
{
    return engine.recorder.isRecording()
           || std::any_of (engine.decks.decks.begin(), engine.decks.decks.end(),
                           [] (const auto& deck) { return deck->play.on != 0; });
}

void ApplicationRun::askToQuit()
{
    if (!isPerforming())
        return offerLoops();
    session->prompts->askYesNo (tr ("Platterdex is playing"), tr ("Do you want to stop the music and quit?"),
                                [this] (bool yes)
                                {
                                    if (yes)
                                        offerLoops();
                                });
}

void ApplicationRun::offerLoops()
{
    // Either way they lie on their pads again at the next start.
    offerRecordedLoops (engine, [] { juce::JUCEApplicationBase::quit(); });
}

void ApplicationRun::offerDemoTracks()
{
    const juce::File folder (engine.settings.audioFolder.get());
    if (!engine.isFirstRun)
        return;
    UtilityPanels::layOutForNewUser (engine.settings);
    offerFirstBank();
    if (!DemoTrackWriter::isWanted (folder))
        return;
    editor->setStatus (tr ("Writing demo tracks..."));
    demoTracks = std::make_unique<DemoTrackWriter> (folder,
                                                    [this] (const juce::String& sentence)
                                                    {
                                                        if (editor != nullptr)
                                                            editor->setStatus (sentence);
                                                        loadDemoTracks();
                                                    });
}

void ApplicationRun::offerFirstBank()
{
    const auto samples = session->folders.samples();
    if (engine.sampler.bank().samples.empty() && writeFirstBank (samples).isEmpty())
        engine.sampler.loadBank (firstBankFile (samples));
}

void ApplicationRun::loadDemoTracks()
{
    const juce::File folder (engine.settings.audioFolder.get());
    for (int deck = 0; deck < 2; ++deck)
    {
        const auto track = folder.getChildFile (::demoTracks()[static_cast<size_t> (deck)].fileName);
        if (track.existsAsFile() && engine.decks.deck (deck)->isEmpty())
            engine.loadTrack (track, deck);
    }
}
