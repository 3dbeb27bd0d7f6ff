#pragma once

#include "midi/control/MidiControl.h"
#include "midi/script/MidiScriptEngine.h"
#include "midi/system/MappingKeeper.h"

/** All of an engine's MIDI: the ports, the way of messages, the files that these are kept in. Made after the engine and gone
    before it, on the message thread or another one that makes and ends plug-ins. */
class MidiSystem
{
public:
    struct Options
    {
        /** True inside a host, which owns the ports: they are opened only if the user has asked for it. */
        bool isInHost = false;

        /** False where somebody else drives the control, as an offline run does. */
        bool hasThreads = true;

        /** Asks for real time for the threads between a port and the engine. Empty inside a host, whose threads are its own
            concern. Scripts never run in real time: one without an end would stop the machine. */
        RealTimeRequest askForRealTime {};
        MidiPortService::Backends backends = MidiPortService::systemBackends (askForRealTime);
        /** Drivers of controllers; null is the native ones. */
        std::unique_ptr<ControllerDrivers> drivers {};
    };

    MidiSystem (CPlatterdex&, Options);

    /** Keeps mapping, devices and the list of scripts, unless another program has the folders. */
    ~MidiSystem();

    bool isInHost() const noexcept { return inHost; }

    /** True if ports are opened: always outside a host, by the user's choice inside one. */
    bool opensPorts() const;
    void setOpensPorts (bool);

    /** Writes the device list, unless another program has the folders, as told at the start; called after each change of
        the ports that are wanted.
        @returns false if it can't be written */
    bool saveDeviceList() const;

    /** Writes the mapping that the next start begins with, which happens by itself a second after each change.
        @returns false if it can't be written */
    bool saveMapping() { return mappingKeeper.save(); }

    CPlatterdex& engine;
    MidiPortService ports;
    MidiControl control;
    MidiScriptEngine scripts;

    /** Writes the list of scripts and their ports; called after each change of either.
        @returns false if it can't be written */
    bool saveScriptSetup() const;

private:
    bool mayKeepFiles() const;
    void setAside (const juce::File&, const char* what) const;

    const juce::File mappingFile, deviceListFile, scriptSetupFile;
    const bool runsScripts, inHost;
    MappingKeeper mappingKeeper;

    JUCE_DECLARE_WEAK_REFERENCEABLE (MidiSystem)
};
