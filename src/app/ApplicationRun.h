#pragma once

#include "app/DemoTrackWriter.h"
#include "app/MainWindow.h"
#include "app/TerminationSignals.h"
#include "app/audio/AudioDevices.h"
#include "engine/CPlatterdex.h"
#include "midi/detect/ControllerWatch.h"
#include "midi/system/MidiSystem.h"
#include "plugins/slot/VstSlots.h"
#include "session/LibraryPresence.h"
#include "session/Session.h"
#include "session/report/NoticeLog.h"
#include "session/report/RunReport.h"
#include "ui/CPlatterdexVstEditor.h"
#include "ui/look/DefaultLook.h"
#include "ui/midi/MidiWindows.h"

/** One run of the application: engine, device and window, made in this order and gone in the reverse one. */
class ApplicationRun
{
public:
    /** @param notices   gets what the decks and the devices say
        @param tracks    for the decks from A on */
    ApplicationRun (Session::Options, std::shared_ptr<NoticeLog> notices,
                    const juce::Array<juce::File>& tracks);
    ~ApplicationRun();

    /** The state of the run, and of the machine below it. */
    SystemReport report() const;

private:
    EngineWorld makeWorld();
    void askToQuit();

    /** Offers loops of the sampler that were never saved, and quits. */
    void offerLoops();

    /** Writes the first bank and lays it on the pads, unless something lies there. */
    void offerFirstBank();
    void showAudioPage();
    void tellOfDevice();
    bool isPerforming() const;

    /** Asks where a report shall lie, and whether it may name files. */
    void askToSaveReport();
    void saveReport (const juce::File&, bool withPaths);
    void tellOfEarlierRun();
    void tellOfLostLibrary();

    /** Shows a sentence for some seconds. @param help   called by a click on it; may be empty */
    void tell (const juce::String& sentence, std::function<void()> help);
    void offerDemoTracks();

    /** The first two onto decks A and B, as far as these are empty. */
    void loadDemoTracks();

    const juce::SharedResourcePointer<DefaultLook> look; ///< also of the windows that aren't the editor's
    const std::shared_ptr<NoticeLog> notices;
    const std::shared_ptr<Session> session;
    HandLog hands;
    CPlatterdex engine;
    SessionEngine tie { *session, engine };
    RunReport runReport { engine, hands,
                          [this] { return report(); } }; ///< so that an end that fails leaves one
    MidiSystem midi;
    VstSlots slots { engine, {} };
    ControllerWatch controllerWatch { midi };
    AudioDevices audio;
    juce::Component::SafePointer<CPlatterdexVstEditor> editor;
    MidiWindows midiWindows { midi };
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<DemoTrackWriter> demoTracks;
    TerminationSignals signals;
    LibraryPresence libraryPresence { session->libraryPlace.file().file(), [this] { tellOfLostLibrary(); } };
};
