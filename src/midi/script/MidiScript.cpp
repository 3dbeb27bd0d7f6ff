#include "midi/script/MidiScript.h"

#include <angelscript.h>

MidiScript::MidiScript (ScriptWorld w)
    : world (std::move (w)),
      inputThread (messageQueue, [this] (const ScriptMidiMessage& m) { runMessage (m); }),
      timerThread (world.times.timer, [this] { run (timer, *timerContext); })
{
}

MidiScript::~MidiScript()
{
    stopScript();
}

juce::File MidiScript::getScriptFile() const
{
    const std::lock_guard guard (fileLock);
    return scriptFile;
}

bool MidiScript::loadScript (const juce::File& file)
{
    if (!file.existsAsFile())
        return false;
    const std::lock_guard guard (scriptLock);
    {
        const std::lock_guard fileGuard (fileLock);
        scriptFile = file;
    }
    stopLocked();
    currentState = State::loading;
    const auto isBuilt = build (file);
    if (isBuilt)
        startScript();
    currentState = isBuilt ? State::running : State::failed;
    return isBuilt;
}

bool MidiScript::build (const juce::File& file)
{
    auto built = language.build (file, world.scriptFolder);
    world.journal.add (built.messages);
    if (!built.program)
        return false;

    const auto& program = *built.program;
    callbacks[message].function = program.onMessage;
    callbacks[timer].function = program.onTimer;
    callbacks[start].function = program.onStart;
    callbacks[stop].function = program.onStop;
    for (auto& callback : callbacks)
        callback.isNamed = callback.isRetired = false;
    hasDropped = false;
    mustStop = false;
    functions.setScript (file);
    functions.forgetSent();

    auto& engine = language.engine();
    messageContext = std::make_unique<ScriptContext> (engine, turn, mustStop);
    timerContext = std::make_unique<ScriptContext> (engine, turn, mustStop);
    lifeContext = std::make_unique<ScriptContext> (engine, turn, mustStop);

    Callback globals { "The first values of its variables" };
    return isFine (lifeContext->initialiseGlobals (*program.module, world.times.callback), *lifeContext,
                   globals);
}

void MidiScript::startScript()
{
    run (start, *lifeContext);
    if (world.isStepped)
        return;
    messageQueue.open();
    inputThread.startThread();
    timerThread.startThread();
}

void MidiScript::stopScript()
{
    const std::lock_guard guard (scriptLock);
    stopLocked();
}

void MidiScript::stopLocked()
{
    if (currentState == State::running)
    {
        inputThread.signalThreadShouldExit();
        timerThread.signalThreadShouldExit();
        messageQueue.close();
        timerThread.notify();

        const auto graceEnd =
            juce::Time::getMillisecondCounter() + static_cast<uint32_t> (world.times.ending.count());
        for (auto* const thread :
             { static_cast<juce::Thread*> (&inputThread), static_cast<juce::Thread*> (&timerThread) })
        {
            const auto left = static_cast<int32_t> (graceEnd - juce::Time::getMillisecondCounter());
            thread->waitForThreadToExit (std::max (0, left));
        }
        mustStop = true;
        inputThread.waitForThreadToExit (-1);
        timerThread.waitForThreadToExit (-1);
        mustStop = false;
        run (stop, *lifeContext);
    }
    messageContext.reset();
    timerContext.reset();
    lifeContext.reset();
    language.discard();
    currentState = State::none;
}

void MidiScript::post (ScriptMidiMessage posted)
{
    if (currentState != State::running || callbacks[message].isRetired)
        return;
    if (world.isStepped)
        return runMessage (posted);
    if (!messageQueue.push (std::move (posted)) && currentState == State::running
        && !hasDropped.exchange (true))
        tell (ScriptEntry::Kind::warning, getScriptFile().getFullPathName(), 0, 0,
              "Messages come faster than the script takes them; some were dropped.");
}

void MidiScript::tick()
{
    if (currentState == State::running)
        run (timer, *timerContext);
}

void MidiScript::runMessage (const ScriptMidiMessage& m)
{
    ScriptContext::Message arguments { m.port, m.status, m.data, m.value };
    run (message, *messageContext, &arguments);
}

void MidiScript::run (CallbackIndex index, ScriptContext& context, ScriptContext::Message* arguments)
{
    auto& callback = callbacks[index];
    if (callback.isRetired)
        return;
    isFine (context.call (callback.function, world.times.callback, arguments), context, callback);
}

bool MidiScript::isFine (ScriptContext::Outcome outcome, const ScriptContext& context, Callback& callback)
{
    using Outcome = ScriptContext::Outcome;
    if (outcome == Outcome::finished || outcome == Outcome::stopped)
        return true;

    const auto tellHere = [&] (const juce::String& text)
    {
        const auto& fault = context.fault();
        tell (ScriptEntry::Kind::error, juce::String::fromUTF8 (fault.section.c_str()), fault.line,
              fault.column, callback.name + text);
    };
    if (outcome == Outcome::threw)
    {
        if (!std::exchange (callback.isNamed, true))
            tellHere (" failed: " + juce::String::fromUTF8 (context.fault().text.c_str())
                      + ". It will be called again, and not be named again.");
        return false;
    }
    callback.isRetired = true;
    const auto seconds = juce::String (static_cast<double> (world.times.callback.count()) / 1000.0);
    tellHere ((outcome == Outcome::hung ? " did not end within " + seconds + " s." : " took too much memory.")
              + " It is not called again until the script is loaded anew.");
    return false;
}

void MidiScript::tell (ScriptEntry::Kind kind, const juce::String& file, int line, int column,
                       const juce::String& text)
{
    world.journal.add ({ .kind = kind, .file = file, .line = line, .column = column, .text = text });
}
