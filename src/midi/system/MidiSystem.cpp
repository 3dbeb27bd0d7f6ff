#include "midi/system/MidiSystem.h"

#include "midi/mapping/MidiMappingFile.h"
#include "midi/native/NativeDrivers.h"
#include "midi/script/ShippedScripts.h"
#include "support/language/Translate.h"

#include <juce_events/juce_events.h>

MidiSystem::MidiSystem (CPlatterdex& e, Options options)
    : engine (e),
      ports (std::move (options.backends)),
      control (e, ports,
               options.drivers != nullptr ? std::move (options.drivers) : std::make_unique<NativeDrivers>(),
               options.askForRealTime),
      scripts (&e, ports, e.environment.folders.scriptFiles(), {}, !options.hasThreads),
      mappingFile (e.environment.folders.setup().getChildFile ("default_midi_mapping.xml")),
      deviceListFile (e.environment.folders.setup().getChildFile ("midi_devices_list.xml")),
      scriptSetupFile (scripts.folder().getChildFile ("script_setup.xml")),
      runsScripts (options.hasThreads),
      inHost (options.isInHost),
      mappingKeeper (control.mapping, mappingFile, [this] { return mayKeepFiles(); })
{
    if (!control.loadMidiDeviceList (deviceListFile))
        setAside (deviceListFile, N_ ("The list of MIDI devices %1 can't be read."));
    if (!loadMidiMapping (mappingFile, control.mapping) && mappingFile.existsAsFile())
        setAside (mappingFile, N_ ("The MIDI mapping %1 can't be read."));
    if (options.hasThreads)
    {
        control.start();
        mappingKeeper.start();
    }
    if (!engine.isFirstRun)
        control.selectController (engine.settings.controllerPreset);
    if (opensPorts() && ports.hasBackends())
        ports.watch();
    if (!runsScripts)
        return;
    // Without the shipped files scripts still run: the header is built in.
    juce::ignoreUnused (ShippedScripts::install (scripts.folder()));
    if (!scripts.loadSetup (scriptSetupFile))
        setAside (scriptSetupFile, N_ ("The list of scripts %1 can't be read."));
}

MidiSystem::~MidiSystem()
{
    mappingKeeper.stop();
    juce::ignoreUnused (saveMapping(), saveDeviceList(), saveScriptSetup()); // nobody is left to be told
    control.stop();
}

bool MidiSystem::mayKeepFiles() const
{
    return engine.environment.mayKeepSettings == nullptr || engine.environment.mayKeepSettings();
}

bool MidiSystem::opensPorts() const
{
    return !inHost || control.opensInHost;
}

void MidiSystem::setOpensPorts (bool opens)
{
    control.opensInHost = opens;
    ports.watch (opensPorts());
    juce::ignoreUnused (saveDeviceList()); // written again at the end
}

bool MidiSystem::saveDeviceList() const
{
    return !mayKeepFiles() || control.saveMidiDeviceList (deviceListFile);
}

bool MidiSystem::saveScriptSetup() const
{
    return !runsScripts || !mayKeepFiles() || scripts.saveSetup (scriptSetupFile);
}

/** Moves a file that can't be read out of the way of the one that is written at the end, and says so. */
void MidiSystem::setAside (const juce::File& file, const char* what) const
{
    const auto place = file.getSiblingFile (file.getFileNameWithoutExtension() + ".damaged.xml");
    const auto isKept = file.moveFileTo (place.getNonexistentSibling());
    if (engine.environment.prompts == nullptr)
        return;
    juce::String sentence = tr (what, file.getFullPathName());
    if (isKept)
        sentence << " " << tr ("It was put aside.");
    const auto* messages = juce::MessageManager::getInstanceWithoutCreating();
    if (messages == nullptr || messages->isThisTheMessageThread())
        engine.environment.prompts->notify ("MIDI", sentence);
    else
        juce::MessageManager::callAsync ([asked = engine.environment.prompts, sentence]
                                         { asked->notify ("MIDI", sentence); });
}
