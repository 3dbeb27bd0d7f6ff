#include "midi/script/MidiScriptEngine.h"

#include "midi/script/ScriptSetup.h"
#include "midi/script/ScriptThreads.h"
#include "support/files/ReplaceFile.h"

#include <algorithm>

MidiScriptEngine::MidiScriptEngine (CPlatterdex* o, MidiPortService& portService, const juce::File& folder,
                                    ScriptTimes t, bool stepped)
    : owner (o),
      service (portService),
      scriptFolder (folder),
      times (t),
      isStepped (stepped),
      portSet (portService, *this)
{
    // A device that comes back has dark lamps, whatever was sent to it before.
    portSet.onChange = [this] { forgetSent(); };
}

void MidiScriptEngine::forgetSent() const
{
    const auto scripts = listeningScripts();
    for (const auto& script : *scripts)
        script->forgetSent();
}

void MidiScriptEngine::send (std::span<const uint8_t> bytes)
{
    portSet.send (bytes);
    if (portSet.owesRepaint())
    {
        // A port has lost the message: the scripts state their lamps anew.
        portSet.repaintOwing ([] (OpenMidiOutput&) { return true; });
        forgetSent();
    }
    if (onSend != nullptr)
        onSend (bytes);
}

MidiScriptEngine::~MidiScriptEngine()
{
    stopScripts();
    portSet.close();
}

void MidiScriptEngine::stopScripts()
{
    worker.cancel();
    worker.wait();
    const auto stop = [] (MidiScript& script)
    {
        const ScriptThreadCleanup cleanup;
        script.stopScript();
    };
    // Each script has seconds to end: they use them at the same time, where nobody asks for their order.
    std::vector<std::jthread> enders;
    for (const auto& entry : entries)
        if (isStepped)
            stop (*entry.script);
        else
            enders.emplace_back ([&stop, script = entry.script.get()] { stop (*script); });
}

void MidiScriptEngine::addScript (const juce::File& file)
{
    auto found =
        std::find_if (entries.begin(), entries.end(), [&] (const Entry& e) { return e.file == file; });
    if (found == entries.end())
    {
        const ScriptWorld world { .owner = owner,
                                  .send = [this] (std::span<const uint8_t> bytes) { send (bytes); },
                                  .journal = scriptJournal,
                                  .scriptFolder = scriptFolder,
                                  .times = times,
                                  .isStepped = isStepped };
        found = entries.insert (entries.end(), { file, std::make_shared<MidiScript> (world) });
        publish();
    }
    load (*found);
    if (isStepped)
        worker.wait();
}

void MidiScriptEngine::tick()
{
    const ScriptThreadCleanup cleanup;
    const auto scripts = listeningScripts();
    for (const auto& script : *scripts)
        script->tick();
}

void MidiScriptEngine::load (const Entry& entry)
{
    const auto tellFault = [this, file = entry.file] (const juce::String& reason)
    { scriptJournal.add ({ .file = file.getFullPathName(), .text = reason }); };
    worker.post ({ .run =
                       [entry, tellFault] (const std::stop_token&)
                   {
                       const ScriptThreadCleanup cleanup;
                       if (!entry.file.existsAsFile())
                           tellFault ("There is no file " + entry.file.getFullPathName() + ".");
                       entry.script->loadScript (entry.file);
                   },
                   .failed = tellFault });
}

void MidiScriptEngine::removeScript (const juce::File& file)
{
    const auto found =
        std::find_if (entries.begin(), entries.end(), [&] (const Entry& e) { return e.file == file; });
    if (found == entries.end())
        return;
    worker.post ({ .run = [script = found->script] (const std::stop_token&) mutable
                   {
                       const ScriptThreadCleanup cleanup;
                       script->stopScript();
                       script = nullptr;
                   } });
    entries.erase (found);
    publish();
}

std::vector<MidiScriptEngine::Row> MidiScriptEngine::rows() const
{
    std::vector<Row> rows;
    rows.reserve (entries.size());
    for (const auto& entry : entries)
        rows.push_back ({ entry.file, entry.script->state(), entry.script->hasHung() });
    return rows;
}

bool MidiScriptEngine::loadSetup (const juce::File& file)
{
    if (!file.existsAsFile())
        return true;
    const auto setup = parseScriptSetup (file.createInputStream());
    if (!setup)
        return false;
    setup->ports.applyTo (portSet);
    while (!entries.empty())
        removeScript (entries.back().file);
    // Messages that a script sends at its start must find its device open.
    worker.post ({ .run = [this] (const std::stop_token&) { service.waitForPorts(); } });
    for (const auto& name : setup->files)
        addScript (scriptFolder.getChildFile (name));
    return true;
}

bool MidiScriptEngine::saveSetup (const juce::File& file) const
{
    juce::StringArray files;
    for (const auto& entry : entries)
        files.add (entry.file.getFullPathName());
    const auto text = scriptSetupText (portSet, files).toStdString();
    return replaceFile (file, text.data(), text.size());
}

void MidiScriptEngine::midiArrived (const juce::String& port, std::span<const uint8_t> bytes)
{
    if (bytes.size() != 3)
        return;
    ScriptMidiMessage message { bytes[0], bytes[1], bytes[2],
                                port.isEmpty() ? "NoDeviceName" : port.toStdString() };
    if ((message.status & 0xf0) == 0x80)
    {
        message.status |= 0x10;
        message.value = 0;
    }
    lastArrived = static_cast<uint32_t> (message.status | message.data << 8 | message.value << 16);
    std::optional<ScriptThreadCleanup> cleanup;
    if (isStepped)
        cleanup.emplace();
    const auto scripts = listeningScripts();
    for (const auto& script : *scripts)
        script->post (message);
}

std::shared_ptr<const MidiScriptEngine::Scripts> MidiScriptEngine::listeningScripts() const
{
    const std::lock_guard guard (listeningLock);
    return listening;
}

void MidiScriptEngine::publish()
{
    auto scripts = std::make_shared<Scripts>();
    for (const auto& entry : entries)
        scripts->push_back (entry.script);
    const std::lock_guard guard (listeningLock);
    listening = std::move (scripts);
}
