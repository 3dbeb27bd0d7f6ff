#include "midi/script/ScriptFunctions.h"

#include "engine/CPlatterdex.h"
#include "midi/script/ScriptJournal.h"

#include <angelscript.h>

#include <cmath>
#include <cstring>
#include <vector>

using namespace AngelScript;

void ScriptFunctions::registerWith (asIScriptEngine& engine)
{
    // A library without native calls would need wrappers; Debian's has them.
    if (std::strstr (asGetLibraryOptions(), "AS_MAX_PORTABILITY") != nullptr)
        return;

    const auto add = [&] (const char* declaration, const asSFuncPtr& function)
    {
        const auto result =
            engine.RegisterGlobalFunction (declaration, function, asCALL_THISCALL_ASGLOBAL, this);
        juce::ignoreUnused (result);
        jassert (result >= 0);
    };
    using Self = ScriptFunctions;
    add ("void log(const string &in)", asMETHOD (Self, log));
    add ("float get(int index)", asMETHOD (Self, get));
    add ("void set(int index)", asMETHODPR (Self, set, (int), void));
    add ("void set(int index, float param1)", asMETHODPR (Self, set, (int, float), void));
    add ("void set(int index, float param1, float param2)",
         asMETHODPR (Self, set, (int, float, float), void));
    add ("void set(int index, float param1, float param2, float param3)",
         asMETHODPR (Self, set, (int, float, float, float), void));
    add ("void sendMidiMessage(int status, int data, int value)", asMETHOD (Self, sendMidiMessage));
    add ("void sendSysExMessage(const string &in)", asMETHOD (Self, sendSysExMessage));
}

void ScriptFunctions::forgetSent()
{
    mustForget = false;
    std::memset (outCache.get(), 1, sizeof (SentValues));
}

void ScriptFunctions::log (const std::string& text)
{
    constexpr size_t longest = 1000;
    world.journal.add ({ .kind = ScriptEntry::Kind::log,
                         .file = script.getFullPathName(),
                         .text = textFromScript (std::string_view (text).substr (0, longest)) });
}

float ScriptFunctions::get (int index)
{
    return world.owner != nullptr ? world.owner->getParameter (index) : 0.0f;
}

void ScriptFunctions::set (int index)
{
    set (index, 1.0f, 1.0f, 1.0f);
}

void ScriptFunctions::set (int index, float param1)
{
    set (index, param1, 1.0f, 1.0f);
}

void ScriptFunctions::set (int index, float param1, float param2)
{
    set (index, param1, param2, 1.0f);
}

void ScriptFunctions::set (int index, float param1, float param2, float param3)
{
    const auto isNumber = std::isfinite (param1) && std::isfinite (param2) && std::isfinite (param3);
    if (world.owner == nullptr || !isNumber)
        return;
    // A command waits for the end of a block.
    const ScriptTurn::Pause pause (turn);
    world.owner->dispatch (index, param1, param2, param3);
}

void ScriptFunctions::sendMidiMessage (int status, int data, int value)
{
    if (mustForget.load (std::memory_order_relaxed))
        forgetSent();
    status = juce::jlimit (128, 255, status);
    data = juce::jlimit (0, 127, data);
    auto& sent = (*outCache)[static_cast<size_t> (status)][static_cast<size_t> (data)];
    const auto wanted = static_cast<uint32_t> (value);
    if (sent == wanted)
        return;

    // A program change and a channel pressure have no third byte: a device would take it for the next message.
    const auto kind = status & 0xf0;
    const std::array bytes { static_cast<uint8_t> (status), static_cast<uint8_t> (data),
                             static_cast<uint8_t> (value & 0x7f) };
    send (std::span (bytes).first (kind == 0xc0 || kind == 0xd0 ? 2 : 3));
    sent = wanted;
}

void ScriptFunctions::sendSysExMessage (const std::string& text)
{
    std::vector<uint8_t> bytes;
    auto digits = 0;
    for (const auto c : text)
    {
        const auto digit = juce::CharacterFunctions::getHexDigitValue (static_cast<juce::juce_wchar> (c));
        if (digit < 0)
            continue;
        if (digits++ % 2 == 0)
            bytes.push_back (static_cast<uint8_t> (digit << 4));
        else
            bytes.back() = static_cast<uint8_t> (bytes.back() | digit);
    }
    if (digits % 2 != 0)
        bytes.pop_back();
    if (digits >= 4)
        send (bytes);
}

void ScriptFunctions::send (std::span<const uint8_t> bytes)
{
    if (world.send == nullptr)
        return;
    const ScriptTurn::Pause pause (turn);
    world.send (bytes);
}
