#pragma once

#include "midi/script/ScriptFunctions.h"
#include "midi/script/ScriptJournal.h"

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace AngelScript
{
class asIScriptContext;
class asIScriptEngine;
class asIScriptFunction;
class asIScriptModule;
struct asSMessageInfo;
}

/** The functions of a script that is built. They live as long as its ScriptLanguage does not build another. */
struct ScriptProgram
{
    AngelScript::asIScriptModule* module = nullptr;
    AngelScript::asIScriptFunction *onMessage = nullptr, *onTimer = nullptr, *onStart = nullptr,
                                   *onStop = nullptr;
};

/** An engine of the script language with strings, arrays and the eight functions, and the program that it has built. One
    thread at a time. */
class ScriptLanguage
{
public:
    explicit ScriptLanguage (ScriptFunctions&);
    ~ScriptLanguage();
    ScriptLanguage (const ScriptLanguage&) = delete;
    ScriptLanguage& operator= (const ScriptLanguage&) = delete;

    AngelScript::asIScriptEngine& engine() { return *scriptEngine; }

    struct Build
    {
        std::optional<ScriptProgram> program; ///< nothing if it failed
        std::vector<ScriptEntry> messages;    ///< at most mostMessages and one that counts the rest
    };

    static constexpr size_t mostMessages = 100;

    /** Compiles a file and what it includes; the former program is gone. Runs no line of the script: its global variables have
        no values yet. Time and memory are bounded by ScriptLimits.
        @param scriptFolder   the second place of included files */
    Build build (const juce::File&, const juce::File& scriptFolder);

    /** The same for a text that stands for the file. Touches no file but those that it includes. */
    Build build (const juce::File&, std::string text, const juce::File& scriptFolder);

    /** Drops the program and its variables. Destructors of the script's classes have one second altogether. */
    void discard();

private:
    void addMessage (const AngelScript::asSMessageInfo&);
    void addError (const juce::String& file, int line, int column, const juce::String& text);
    void compile (const juce::File&, const std::string& text, const juce::File& scriptFolder);
    void findFunctions (const juce::File&);
    static AngelScript::asIScriptContext* lendContext (AngelScript::asIScriptEngine*, void* self);
    static void takeContextBack (AngelScript::asIScriptEngine*, AngelScript::asIScriptContext*, void*);
    static void lineReached (AngelScript::asIScriptContext*, void* self);

    struct Shutdown
    {
        void operator() (AngelScript::asIScriptEngine*) const;
    };

    std::unique_ptr<AngelScript::asIScriptEngine, Shutdown> scriptEngine;
    std::chrono::steady_clock::time_point discardEnd; ///< for code that the library runs by itself
    Build current;
    juce::String buildPath; ///< of the running build, for messages that name no section
    size_t leftOut = 0;     ///< messages beyond mostMessages
};
