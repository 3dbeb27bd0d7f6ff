#include "midi/script/ScriptLanguage.h"

#include "midi/script/ScriptSource.h"
#include "midi/script/ShippedScripts.h"

#include <angelscript.h>
#include <angelscript/scriptarray.h>
#include <angelscript/scriptbuilder.h>
#include <angelscript/scriptstdstring.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <malloc.h>

using namespace AngelScript;

namespace
{
constexpr const char* moduleName = "main_module";

constexpr asPWORD scriptStackBytes = 1 << 20, calls = 2000, nestedCalls = 32;

/** The memory of the arrays of all scripts, in bytes. An array that would go beyond it fails with an exception in its script:
    a loop that lets one grow must not take the memory of the whole program. */
namespace ArrayMemory
{
constexpr size_t mostPerArray = 64u << 20, mostTogether = 256u << 20;
std::atomic<size_t> taken { 0 };

void* allocate (size_t bytes)
{
    if (bytes > mostPerArray || taken + bytes > mostTogether)
        return nullptr;
    auto* const memory = std::malloc (bytes);
    taken += malloc_usable_size (memory);
    return memory;
}

void release (void* memory)
{
    taken -= malloc_usable_size (memory);
    std::free (memory);
}
}

/** Readies the library for the process. */
bool prepareLibrary()
{
    CScriptArray::SetMemoryFunctions (ArrayMemory::allocate, ArrayMemory::release);
    return asPrepareMultithread() >= 0;
}

/** Does something on a thread with room for deep recursion, and returns when it is done. */
class DeepStack : juce::Thread
{
public:
    explicit DeepStack (std::function<void()> t) : Thread ("script build", 256 << 20), task (std::move (t))
    {
        startThread();
        waitForThreadToExit (-1);
    }

private:
    void run() override
    {
        task();
        asThreadCleanup();
    }

    std::function<void()> task;
};

/** Adds the sections of a script to a builder, within the limits of their number and size. */
class Sections
{
public:
    using Refuse = std::function<void (const juce::String& file, const ScriptFault&)>;

    Sections (CScriptBuilder& b, const juce::File& folder, Refuse r)
        : builder (b),
          scriptFolder (folder),
          refuse (std::move (r))
    {
        builder.SetIncludeCallback (include, this);
    }

    bool add (const juce::String& name, const std::string& text)
    {
        ++count;
        bytes += text.size();
        if (count > ScriptLimits::files || bytes > ScriptLimits::sourceBytes)
            return refuse (name, { 1, 1, "The script and what it includes are too long." }), false;
        if (const auto fault = faultOf (text))
            return refuse (name, *fault), false;
        // A semicolon, which means nothing between functions, stops the parser: within a type that breaks off it looks at the
        // byte behind the end and, if that is a ">", goes on from there.
        const auto padded = text + "\n;\n";
        return builder.AddSectionFromMemory (name.toRawUTF8(), padded.data(),
                                             static_cast<unsigned> (padded.size()))
               >= 0;
    }

private:
    static int include (const char* name, const char* from, CScriptBuilder*, void* self)
    {
        return static_cast<Sections*> (self)->include (
                   textFromScript (std::string_view (name).substr (0, longestName)),
                   juce::File (juce::String::fromUTF8 (from)))
                   ? 0
                   : -1;
    }

    bool include (const juce::String& name, const juce::File& from)
    {
        const auto file = resolveInclude (name, from, scriptFolder);
        juce::String reason = "There is no file " + name + " beside the script or in the folder of scripts.";
        if (file != juce::File())
        {
            if (const auto text = readScriptFile (file, reason))
                return add (file.getFullPathName(), *text);
        }
        else if (const auto* const shipped = ShippedScripts::find (name.toStdString()))
            return add (scriptFolder.getChildFile (name).getFullPathName(), std::string (shipped->text));
        refuse (from.getFullPathName(), { 0, 0, reason.toStdString() });
        return false;
    }

    static constexpr size_t longestName = 255; ///< bytes, as of a file system

    CScriptBuilder& builder;
    const juce::File scriptFolder;
    const Refuse refuse;
    size_t count = 0, bytes = 0;
};
}

void ScriptLanguage::Shutdown::operator() (asIScriptEngine* engine) const
{
    engine->ShutDownAndRelease();
}

ScriptLanguage::ScriptLanguage (ScriptFunctions& functions)
{
    static const auto isPrepared = prepareLibrary();
    juce::ignoreUnused (isPrepared);

    scriptEngine.reset (asCreateScriptEngine());
    scriptEngine->SetMessageCallback (asMETHOD (ScriptLanguage, addMessage), this, asCALL_THISCALL);
    scriptEngine->SetEngineProperty (asEP_MAX_STACK_SIZE, scriptStackBytes);
    scriptEngine->SetEngineProperty (asEP_MAX_CALL_STACK_SIZE, calls);
    scriptEngine->SetEngineProperty (asEP_MAX_NESTED_CALLS, nestedCalls);
    // Global variables may run any code of the script, which must not happen unwatched.
    scriptEngine->SetEngineProperty (asEP_INIT_GLOBAL_VARS_AFTER_BUILD, 0);
    scriptEngine->SetContextCallbacks (lendContext, takeContextBack, this);
    RegisterScriptArray (scriptEngine.get(), true);
    RegisterStdString (scriptEngine.get());
    functions.registerWith (*scriptEngine);
}

ScriptLanguage::~ScriptLanguage()
{
    discard();
}

ScriptLanguage::Build ScriptLanguage::build (const juce::File& file, const juce::File& scriptFolder)
{
    juce::String reason;
    if (auto text = readScriptFile (file, reason))
        return build (file, std::move (*text), scriptFolder);
    discard();
    current = {};
    addError (file.getFullPathName(), 0, 0, reason);
    return std::move (current);
}

ScriptLanguage::Build ScriptLanguage::build (const juce::File& file, std::string text,
                                             const juce::File& scriptFolder)
{
    discard();
    current = {};
    leftOut = 0;
    buildPath = file.getFullPathName();
    const DeepStack done ([&] { compile (file, text, scriptFolder); });
    if (leftOut > 0)
        current.messages.push_back ({ .kind = ScriptEntry::Kind::info,
                                      .file = file.getFullPathName(),
                                      .text = juce::String (leftOut) + " more messages are not shown." });
    return std::move (current);
}

void ScriptLanguage::discard()
{
    discardEnd = std::chrono::steady_clock::now() + std::chrono::seconds (1);
    scriptEngine->DiscardModule (moduleName);
    scriptEngine->GarbageCollect();
}

asIScriptContext* ScriptLanguage::lendContext (asIScriptEngine* engine, void* self)
{
    auto* const context = engine->CreateContext();
    context->SetLineCallback (asFUNCTION (lineReached), self, asCALL_CDECL);
    return context;
}

void ScriptLanguage::takeContextBack (asIScriptEngine*, asIScriptContext* context, void*)
{
    context->Release();
}

void ScriptLanguage::lineReached (asIScriptContext* context, void* self)
{
    if (std::chrono::steady_clock::now() > static_cast<ScriptLanguage*> (self)->discardEnd)
        context->Abort();
}

void ScriptLanguage::compile (const juce::File& file, const std::string& text, const juce::File& scriptFolder)
{
    if (text.find_first_not_of (" \t\r\n") == std::string::npos)
        return addError (file.getFullPathName(), 0, 0,
                         "The file is empty; a script needs its four callbacks.");
    CScriptBuilder builder;
    if (builder.StartNewModule (scriptEngine.get(), moduleName) < 0)
        return addError (file.getFullPathName(), 0, 0, "There is no room for another script.");

    Sections sections (builder, scriptFolder,
                       [this] (const juce::String& name, const ScriptFault& fault)
                       { addError (name, fault.line, fault.column, fault.text); });
    if (sections.add (file.getFullPathName(), text) && builder.BuildModule() >= 0)
        findFunctions (file);
    if (!current.program)
        scriptEngine->DiscardModule (moduleName);
}

void ScriptLanguage::findFunctions (const juce::File& file)
{
    auto* const module = scriptEngine->GetModule (moduleName);
    ScriptProgram program { .module = module };
    struct Wanted
    {
        asIScriptFunction*& function;
        const char* declaration;
        const char* ifMissing; ///< scripts' authors know these texts, blanks and all
    };
    const Wanted all[] {
        { program.onMessage, "void OnMidiMessageReceived(const string &in, int, int, int)",
          "Cannot find function 'void OnMidiMessageReceived(std::string &in name, int status, int data, int "
          "value)'" },
        { program.onTimer, "void OnTimerCallback()", "Cannot find function 'void OnTimerCallback()'" },
        { program.onStart, "void OnStart()", "Cannot find function'void OnStart()'" },
        { program.onStop, "void OnStop()", "Cannot find function'void OnStop()'" },
    };
    for (const auto& wanted : all)
    {
        wanted.function = module->GetFunctionByDecl (wanted.declaration);
        if (wanted.function == nullptr)
        {
            scriptEngine->WriteMessage (file.getFullPathName().toRawUTF8(), 0, 0, asMSGTYPE_ERROR,
                                        wanted.ifMissing);
            return;
        }
    }
    current.program = program;
}

void ScriptLanguage::addMessage (const asSMessageInfo& message)
{
    if (current.messages.size() >= mostMessages)
    {
        ++leftOut;
        return;
    }
    const auto kind = message.type == asMSGTYPE_ERROR     ? ScriptEntry::Kind::error
                      : message.type == asMSGTYPE_WARNING ? ScriptEntry::Kind::warning
                                                          : ScriptEntry::Kind::info;
    const auto section = juce::String::fromUTF8 (message.section != nullptr ? message.section : "");
    constexpr int longest = 400;
    current.messages.push_back (
        { .kind = kind,
          .file = section.isNotEmpty() ? section : buildPath,
          .line = message.row,
          .column = message.col,
          .text =
              textFromScript (message.message != nullptr ? message.message : "").substring (0, longest) });
}

void ScriptLanguage::addError (const juce::String& file, int line, int column, const juce::String& text)
{
    current.messages.push_back (
        { .kind = ScriptEntry::Kind::error, .file = file, .line = line, .column = column, .text = text });
}
