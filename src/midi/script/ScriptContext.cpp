#include "midi/script/ScriptContext.h"

#include <angelscript.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

using namespace AngelScript;

namespace
{
constexpr auto memoryCheckPeriod = std::chrono::milliseconds (2);

/** Lines between two looks at the clock: one look takes as long as a line. */
constexpr unsigned linesPerWatch = 64;

/** The memory of this process that is really there, in bytes; 0 if the system does not tell. */
int64_t residentBytes()
{
    int64_t resident = 0;
    if (auto* const file = std::fopen ("/proc/self/statm", "r"))
    {
        // The first number is of all pages, the second of those that are there.
        std::array<char, 128> text {};
        if (std::fgets (text.data(), static_cast<int> (text.size()), file) != nullptr)
        {
            char* rest = text.data();
            std::strtoll (rest, &rest, 10);
            resident = std::strtoll (rest, nullptr, 10);
        }
        std::fclose (file);
    }
    return resident * sysconf (_SC_PAGESIZE);
}
}

void ScriptContext::Release::operator() (asIScriptContext* context) const
{
    context->Release();
}

ScriptContext::ScriptContext (asIScriptEngine& engine, ScriptTurn& t, const std::atomic<bool>& s)
    : turn (t),
      mustStop (s),
      context (engine.CreateContext())
{
    context->SetLineCallback (asFUNCTION (lineReached), this, asCALL_CDECL);
}

ScriptContext::~ScriptContext()
{
    const ScriptTurn::Holder holder (turn);
    context.reset();
}

ScriptContext::Outcome ScriptContext::call (asIScriptFunction* function, std::chrono::milliseconds limit,
                                            Message* message)
{
    const ScriptTurn::Holder holder (turn);
    if (context->Prepare (function) < 0)
        return Outcome::stopped;
    if (message != nullptr)
    {
        context->SetArgObject (0, &message->name);
        context->SetArgDWord (1, static_cast<asDWORD> (message->status));
        context->SetArgDWord (2, static_cast<asDWORD> (message->data));
        context->SetArgDWord (3, static_cast<asDWORD> (message->value));
    }
    begin (limit);
    const auto outcome = outcomeOf (context->Execute());
    context->Unprepare();
    return outcome;
}

ScriptContext::Outcome ScriptContext::initialiseGlobals (asIScriptModule& module,
                                                         std::chrono::milliseconds limit)
{
    const ScriptTurn::Holder holder (turn);
    begin (limit);
    const auto hasFailed = module.ResetGlobalVars (context.get()) < 0;
    const auto outcome = ending != Outcome::finished ? ending
                         : hasFailed                 ? Outcome::threw
                                                     : Outcome::finished;
    if (outcome == Outcome::threw)
        noteException();
    context->Unprepare();
    return outcome;
}

void ScriptContext::begin (std::chrono::milliseconds limit)
{
    ending = Outcome::finished;
    deadline = Clock::now() + limit;
    nextMemoryCheck = {};
    memoryBefore = -1;
    lines = 0;
}

ScriptContext::Outcome ScriptContext::outcomeOf (int result)
{
    if (result == asEXECUTION_FINISHED)
        return Outcome::finished;
    if (result != asEXECUTION_EXCEPTION)
        return ending != Outcome::finished ? ending : Outcome::stopped;
    noteException();
    return Outcome::threw;
}

void ScriptContext::noteException()
{
    const char* section = nullptr;
    lastFault.line = context->GetExceptionLineNumber (&lastFault.column, &section);
    lastFault.section = section != nullptr ? section : "";
    const auto* const text = context->GetExceptionString();
    lastFault.text = text != nullptr ? text : "";
}

void ScriptContext::notePlace()
{
    const char* section = nullptr;
    lastFault.line = context->GetLineNumber (0, &lastFault.column, &section);
    lastFault.section = section != nullptr ? section : "";
}

void ScriptContext::lineReached (asIScriptContext* context, void* object)
{
    auto& self = *static_cast<ScriptContext*> (object);
    if (self.mustStop.load (std::memory_order_relaxed))
        self.ending = Outcome::stopped;
    else if (++self.lines % linesPerWatch == 0)
        self.watch();
    if (self.ending != Outcome::finished)
    {
        self.notePlace();
        context->Abort();
    }
    self.turn.offer();
}

void ScriptContext::watch()
{
    const auto now = Clock::now();
    if (now > deadline)
        ending = Outcome::hung;
    if (nextMemoryCheck == Clock::time_point())
        nextMemoryCheck = now + memoryCheckPeriod;
    if (now < nextMemoryCheck)
        return;
    nextMemoryCheck = now + memoryCheckPeriod;
    const auto memory = residentBytes();
    if (memoryBefore < 0)
        memoryBefore = memory;
    else if (memory - memoryBefore > memoryLimit)
        ending = Outcome::hoarded;
}
