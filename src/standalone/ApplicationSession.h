#pragma once

#include "engine/CPlatterdex.h"
#include "standalone/ApplicationAudio.h"
#include "standalone/ApplicationDemoTracks.h"
#include "standalone/ApplicationPrompts.h"
#include "standalone/ApplicationSignals.h"
#include "standalone/MainWindow.h"
#include "ui/CPlatterdexVstEditor.h"

/** One run of the application: engine, device and window, made in this order and gone in the reverse one. */
class ApplicationSession
{
public:
    /** @param tracks   for the decks from A on */
    ApplicationSession (const Folders&, const juce::Array<juce::File>& tracks);
    ~ApplicationSession();

private:
    EngineWorld makeWorld (const Folders&);
    void askToQuit();
    bool isPerforming() const;
    void offerDemoTracks();

    /** The look of every window that isn't the editor's own. */
    struct Dressed
    {
        Dressed() { juce::LookAndFeel::setDefaultLookAndFeel (&look); }
        ~Dressed() { juce::LookAndFeel::setDefaultLookAndFeel (nullptr); }
        Look look;
    };

    const Dressed dressed;
    const std::shared_ptr<Prompts> prompts = std::make_shared<ApplicationPrompts>();
    CPlatterdex engine;
    ApplicationAudio audio;
    juce::Component::SafePointer<CPlatterdexVstEditor> editor;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<ApplicationDemoTracks> demoTracks;
    ApplicationSignals signals;
};
