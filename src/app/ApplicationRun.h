#pragma once

#include "app/DemoTrackWriter.h"
#include "app/MainWindow.h"
#include "app/TerminationSignals.h"
#include "app/audio/AudioDevices.h"
#include "engine/CPlatterdex.h"
#include "midi/detect/ControllerWatch.h"
#include "midi/system/MidiSystem.h"
#include "plugins/slot/VstSlots.h"
#include "session/Session.h"
#include "ui/CPlatterdexVstEditor.h"
#include "ui/look/DefaultLook.h"
#include "ui/midi/MidiWindows.h"

/** One run of the application: engine, device and window, made in this order and gone in the reverse one. */
class ApplicationRun
{
public:
    /** @param tracks   for the decks from A on */
    ApplicationRun (Session::Options, const juce::Array<juce::File>& tracks);
    ~ApplicationRun();

    /** The course of the audio so far, a line on the blocks and one on a recording that lost frames. */
    juce::String audioReport() const;

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
    void offerDemoTracks();

    /** The first two onto decks A and B, as far as these are empty. */
    void loadDemoTracks();

    const juce::SharedResourcePointer<DefaultLook> look; ///< also of the windows that aren't the editor's
    const std::shared_ptr<Session> session;
    CPlatterdex engine;
    SessionEngine tie { *session, engine };
    MidiSystem midi;
    VstSlots slots { engine, {} };
    ControllerWatch controllerWatch { midi };
    AudioDevices audio;
    juce::Component::SafePointer<CPlatterdexVstEditor> editor;
    MidiWindows midiWindows { midi };
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<DemoTrackWriter> demoTracks;
    TerminationSignals signals;
};
