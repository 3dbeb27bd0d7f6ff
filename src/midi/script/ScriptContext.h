#pragma once

#include "midi/script/ScriptTurn.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace AngelScript
{
class asIScriptContext;
class asIScriptEngine;
class asIScriptFunction;
class asIScriptModule;
}

/** Runs functions of a script, one at a time, under the script's turn. Between any two lines the turn is offered to others, and
    a call that takes too long, takes too much memory or is no longer wanted is ended, which no `try` of a script hears of. */
class ScriptContext
{
public:
    enum class Outcome
    {
        finished,
        threw,
        hung,
        hoarded, ///< took more than memoryLimit
        stopped
    };

    static constexpr int64_t memoryLimit =
        512 * 1024 * 1024; ///< bytes that the process may grow by in one call

    /** @param s   ends the running call once it is true */
    ScriptContext (AngelScript::asIScriptEngine&, ScriptTurn&, const std::atomic<bool>& s);
    ~ScriptContext();
    ScriptContext (const ScriptContext&) = delete;
    ScriptContext& operator= (const ScriptContext&) = delete;

    /** The arguments of OnMidiMessageReceived. */
    struct Message
    {
        std::string name;
        int status = 0, data = 0, value = 0;
    };

    /** Calls a function. @param message   its arguments; null for a function without. One thread at a time, which waits
        for the turn */
    Outcome call (AngelScript::asIScriptFunction*, std::chrono::milliseconds limit,
                  Message* message = nullptr);

    /** Gives the global variables of a module their first values. */
    Outcome initialiseGlobals (AngelScript::asIScriptModule&, std::chrono::milliseconds limit);

    /** The place of the last call that threw or was ended, and the exception's text. */
    struct Fault
    {
        std::string section, text;
        int line = 0, column = 0;
    };
    const Fault& fault() const { return lastFault; }

private:
    using Clock = std::chrono::steady_clock;

    static void lineReached (AngelScript::asIScriptContext*, void* self);
    void watch();
    void begin (std::chrono::milliseconds limit);
    Outcome outcomeOf (int result);
    void noteException();
    void notePlace();

    struct Release
    {
        void operator() (AngelScript::asIScriptContext*) const;
    };

    ScriptTurn& turn;
    const std::atomic<bool>& mustStop;
    std::unique_ptr<AngelScript::asIScriptContext, Release> context;
    Outcome ending = Outcome::finished; ///< why the running call is being ended
    Clock::time_point deadline, nextMemoryCheck;
    int64_t memoryBefore = -1; ///< bytes; -1 before the first look
    unsigned lines = 0;
    Fault lastFault;
};
