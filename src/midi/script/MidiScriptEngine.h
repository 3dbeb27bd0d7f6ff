#pragma once

#include "midi/ports/MidiPortSet.h"
#include "midi/script/MidiScript.h"
#include "midi/script/ScriptJournal.h"
#include "support/Relaxed.h"
#include "support/Worker.h"

#include <functional>
#include <memory>
#include <vector>

/** The scripts of an engine: their ports, which no other part of the program shares, and the list of files. Each script
    hears every message of every port and runs by itself. Message thread, but for midiArrived(). */
class MidiScriptEngine : public MidiReceiver
{
public:
    /** A script of the list, as it is shown. */
    struct Row
    {
        juce::File file;
        MidiScript::State state = MidiScript::State::none;
        bool hasHung = false;
        bool operator== (const Row&) const = default;
    };

    /** @param o              target of get and set; null stops them
        @param scriptFolder   the folder of scripts, where included files are looked for and the set-up lies
        @param isStepped      true for scripts without threads: one thread loads them, plays messages and calls tick() */
    MidiScriptEngine (CPlatterdex* o, MidiPortService&, const juce::File& scriptFolder,
                      ScriptTimes times = {}, bool isStepped = false);

    /** Stops all scripts. */
    ~MidiScriptEngine() override;

    /** Adds a script to the list and loads it, or loads it anew if it is there. Returns at once: a worker loads. A stepped
        one runs on return. */
    void addScript (const juce::File&);

    /** Gives a message of three bytes to every script; others are dropped. Any thread that may block.
        @param port   the name of its source; one without a name is "NoDeviceName" */
    void midiArrived (const juce::String& port, std::span<const uint8_t>) override;

    /** Calls the timers of stepped scripts. */
    void tick();

    /** Hears each message that scripts send, whether a port is open or not. Set before the first script is added. */
    std::function<void (std::span<const uint8_t>)> onSend;

    /** Takes a script off the list. It stops soon. */
    void removeScript (const juce::File&);

    /** Stops all scripts, which takes as long as the slowest; they stay on the list. */
    void stopScripts();

    std::vector<Row> rows() const;

    /** True while a script is loaded or stopped. */
    bool isBusy() const { return worker.isBusy(); }

    /** Waits until no script is loaded or stopped. For programs without a window. */
    void waitUntilIdle() const { worker.wait(); }

    /** Opens the ports and loads the scripts that a file names, in place of those so far. Missing and damaged files change
        nothing. @returns false if the file is damaged */
    bool loadSetup (const juce::File&);

    /** @returns false if the file can't be written */
    bool saveSetup (const juce::File&) const;

    /** The last message of a port: status in bits 0 to 7, data in 8 to 15, value in 16 to 23. Any thread. */
    uint32_t lastMessage() const { return lastArrived; }

    MidiPortSet& ports() { return portSet; }
    ScriptJournal& journal() { return scriptJournal; }
    const juce::File& folder() const { return scriptFolder; }

private:
    using Scripts = std::vector<std::shared_ptr<MidiScript>>;

    /** A file of the list; its script is made with it and lives until its last job is done. */
    struct Entry
    {
        juce::File file;
        std::shared_ptr<MidiScript> script;
    };

    std::shared_ptr<const Scripts> listeningScripts() const;
    void publish();
    void load (const Entry&);
    void send (std::span<const uint8_t>);
    void forgetSent() const;

    CPlatterdex* const owner;
    MidiPortService& service;
    const juce::File scriptFolder;
    const ScriptTimes times;
    const bool isStepped;
    ScriptJournal scriptJournal;
    std::vector<Entry> entries;
    Relaxed<uint32_t> lastArrived;
    mutable std::mutex listeningLock; ///< of the pointer
    std::shared_ptr<const Scripts> listening = std::make_shared<Scripts>();
    MidiPortSet portSet; ///< behind all that its messages reach
    Worker worker { "Script loader" };
};
