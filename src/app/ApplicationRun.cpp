#include "app/ApplicationRun.h"

#include "app/audio/RealTimePriority.h"
#include "demo/DemoTracks.h"
#include "demo/FirstBank.h"
#include "support/files/ReplaceFile.h"
#include "support/language/Translate.h"
#include "ui/decks/UtilityPanels.h"
#include "ui/sampler/OfferLoops.h"

#include <memory>

namespace
{
/** Below the audio thread's: a block never waits for a controller. */
constexpr int midiPriority = 35;

constexpr const char* reportTitle = N_ ("Save a report");

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

ApplicationRun::ApplicationRun (Session::Options options, std::shared_ptr<NoticeLog> n,
                                const juce::Array<juce::File>& tracks)
    : notices (std::move (n)),
      session (std::make_shared<Session> (std::move (options))),
      engine (makeWorld()),
      midi (engine, midiOptions()),
      audio (engine, preferencesOf (*session)),
      signals ([] { juce::JUCEApplicationBase::quit(); })
{
    engine.setParameter (CPlatterdex::standaloneCall, CPlatterdex::standaloneValue);
    engine.addAnalysisListener (*notices);

    if (tracks.size() > 2)
        engine.settings.editor[EditorPreference::fourDeckMode] = 1; // what is loaded there shall be seen
    std::unique_ptr<juce::AudioProcessorEditor> content (engine.createEditorIfNeeded());
    window =
        std::make_unique<MainWindow> (std::move (content), session->preferences(), [this] { askToQuit(); });

    audio.onChange = [this] { tellOfDevice(); };
    audio.showPage = [this] { showAudioPage(); };
    tellOfDevice();
    tellOfEarlierRun();

    for (int deck = 0; deck < tracks.size(); ++deck)
        engine.loadTrack (tracks[deck], deck);
    offerDemoTracks();
}

ApplicationRun::~ApplicationRun()
{
    demoTracks.reset();
    window.reset();
    engine.removeAnalysisListener (*notices);
}

SystemReport ApplicationRun::report() const
{
    SystemReport made;
    made.version = PX_VERSION;
    made.audio.add (audio.deviceLine());
    made.audio.addLines (audio.report());
    made.lostFrames = engine.recorder.droppedFrames;
    for (const auto& port : midi.ports.ports (MidiDirection::input))
        made.midiInputs.add (port.name);
    for (const auto& port : midi.ports.ports (MidiDirection::output))
        made.midiOutputs.add (port.name);
    made.settings = changedSettings (engine.settings, session->folders);
    made.notices = notices->lines();
    return made;
}

void ApplicationRun::askToSaveReport()
{
    const auto place = juce::File::getSpecialLocation (juce::File::userDocumentsDirectory)
                           .getChildFile ("platterdex-report.txt");
    session->prompts->askFile ({ tr (reportTitle), place, "*.txt", true },
                               [this] (const juce::File& file)
                               {
                                   if (file != juce::File())
                                       session->prompts->askYesNo (
                                           tr (reportTitle), tr ("Shall the report name the music files?"),
                                           [this, file] (bool yes) { saveReport (file, yes); });
                               });
}

void ApplicationRun::saveReport (const juce::File& file, bool withPaths)
{
    const auto text = report().text (withPaths).toStdString();
    if (!replaceFile (file, text.data(), text.size()))
        session->prompts->notify (tr (reportTitle), tr ("%1 can't be written.", file.getFullPathName()));
}

void ApplicationRun::tellOfEarlierRun()
{
    const auto& left = runReport.leftByEarlierRun();
    if (left)
        tell (tr ("The last run ended by a fault. A report and the set so far lie in %1.",
                  left->getFullPathName()),
              [folder = *left] { folder.revealToUser(); });
}

void ApplicationRun::tellOfLostLibrary()
{
    tell (tr ("%1 is gone: nothing that is done to the library is kept.",
              session->libraryPlace.file().file().getFullPathName()),
          {});
}

void ApplicationRun::tell (const juce::String& sentence, std::function<void()> help)
{
    notices->add (sentence);
    if (editor != nullptr)
        editor->headerStrip().newsLine().tell (sentence, std::move (help));
}

EngineWorld ApplicationRun::makeWorld()
{
    auto made = session->world();
    made.createEditor = [this] (CPlatterdex& e) -> juce::AudioProcessorEditor*
    {
        auto pages = midiWindows.pages();
        pages.push_back ({ AudioDevices::pageTitle, {}, [this] { return audio.makePage(); } });
        pages.push_back ({ reportTitle, [this] { askToSaveReport(); } });
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
    notices->add (audio.notice());
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
