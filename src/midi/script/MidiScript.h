#pragma once

#include "midi/script/ScriptContext.h"
#include "midi/script/ScriptFunctions.h"
#include "midi/script/ScriptLanguage.h"
#include "midi/script/ScriptThreads.h"
#include "midi/script/ScriptWorld.h"

#include <juce_core/juce_core.h>

#include <atomic>
#include <memory>
#include <mutex>

/** One script file, loaded and running on two threads of its own.

    Faults go to the journal and stop nothing: a callback that throws is named once and called again with the next message; one
    that hangs is ended, named and not called again until the script is loaded anew. */
class MidiScript
{
public:
    enum class State
    {
        none,    ///< nothing loaded, or stopped
        loading, ///< being built, or in its OnStart
        running,
        failed ///< the last load had errors
    };

    explicit MidiScript (ScriptWorld);

    /** Stops the script. */
    ~MidiScript();
    MidiScript (const MidiScript&) = delete;
    MidiScript& operator= (const MidiScript&) = delete;

    /** Stops the former script, builds the file and starts it. Blocks for as long as that takes: not on the message thread.
        @returns true when the script now runs; why it does not stands in the journal */
    bool loadScript (const juce::File&);

    /** Stops the script and runs its OnStop. Returns within about ScriptTimes::ending and callback, whatever the script does. */
    void stopScript();

    /** The file of the last load, whether it runs or not. Any thread. */
    juce::File getScriptFile() const;

    /** Any thread. */
    State state() const { return currentState; }

    /** True if a callback was ended because it hung. Any thread. */
    bool hasHung() const { return callbacks[message].isRetired || callbacks[timer].isRetired; }

    /** Makes the script send all its lamps again, as to a device that has just come. Any thread. */
    void forgetSent() noexcept { functions.forgetSentSoon(); }

    /** Hands a message to the script, which sees it soon on its own thread; a stepped one has seen it on return. Any thread
        that may block. */
    void post (ScriptMidiMessage);

    /** Calls the timer of a stepped script. */
    void tick();

private:
    enum CallbackIndex
    {
        message,
        timer,
        start,
        stop
    };

    /** One of the functions that a script must have. */
    struct Callback
    {
        const char* name;
        AngelScript::asIScriptFunction* function = nullptr;
        bool isNamed = false; ///< its first fault was told
        std::atomic<bool> isRetired { false };
    };

    bool build (const juce::File&);
    void startScript();
    void runMessage (const ScriptMidiMessage&);
    void stopLocked();
    void run (CallbackIndex, ScriptContext&, ScriptContext::Message* = nullptr);
    bool isFine (ScriptContext::Outcome, const ScriptContext&, Callback&);
    void tell (ScriptEntry::Kind, const juce::String& file, int line, int column, const juce::String&);

    const ScriptWorld world;
    ScriptTurn turn;
    ScriptFunctions functions { world, turn };
    ScriptLanguage language { functions };
    std::atomic<bool> mustStop { false }; ///< ends running calls
    std::unique_ptr<ScriptContext> messageContext, timerContext, lifeContext;
    Callback callbacks[4] { { "OnMidiMessageReceived" }, { "OnTimerCallback" }, { "OnStart" }, { "OnStop" } };

    std::atomic<State> currentState { State::none };
    std::atomic<bool> hasDropped { false };
    mutable std::mutex fileLock; ///< of scriptFile
    juce::File scriptFile;
    std::mutex scriptLock; ///< held while a script is loaded or stopped

    ScriptMessageQueue messageQueue;
    InputControllerThread inputThread;
    TimerControllerThread timerThread;
};
