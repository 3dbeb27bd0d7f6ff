#include "plugin/Vst2Parameters.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "plugin/Vst2Instance.h"
#include "support/DecimalText.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

namespace
{
constexpr int firstCommand = 1, lastCommand = CommandTable::commandCount;
constexpr size_t textBytes = 32; ///< with the terminator: what old hosts have room for
constexpr Vst2::VstIntPtr formattedValue =
    0xbeef; // what hosts with this extension expect of a value that was written

/** Asks for the tail in samples; the free header knows the name and not the number. */
constexpr int getTailSize = 52;

thread_local Vst2::audioMasterCallback hostOfThisThread = nullptr;

void write (const juce::String& text, void* destination)
{
    if (destination != nullptr)
        text.copyToUTF8 (static_cast<char*> (destination), textBytes);
}

/** A text cut to what fits. The last word, often the letter of the deck that tells one name from the next, stays. */
juce::String fitted (const juce::String& text)
{
    constexpr auto longest = static_cast<int> (textBytes) - 1;
    const auto lastWord = text.substring (juce::jmax (0, text.lastIndexOfChar (' ')));
    return text.length() <= longest ? text
                                    : text.substring (0, longest - lastWord.length()).trimEnd() + lastWord;
}

std::optional<float> parse (std::string_view text)
{
    const auto first = text.find_first_not_of (" \t+");
    if (first == std::string_view::npos)
        return {};
    float value = 0.0f;
    const auto result = std::from_chars (text.data() + first, text.data() + text.size(), value);
    return result.ec == std::errc() && std::isfinite (value) ? std::optional (value) : std::nullopt;
}

/** With no text the host only asks whether texts are taken. */
Vst2::VstIntPtr setFromText (CPlatterdex& engine, int number, const char* text)
{
    if (number < firstCommand || number > lastCommand)
        return 0;
    if (text == nullptr)
        return 1;
    const auto value = parse (text);
    if (value.has_value())
        engine.setParameter (number, *value);
    return value.has_value() ? 1 : 0;
}

Vst2::VstIntPtr formatValue (Vst2::VstIntPtr number, float value, void* destination)
{
    if (destination == nullptr || number < firstCommand || number > lastCommand)
        return 0;
    write (decimalText (static_cast<double> (value), 2), destination);
    return formattedValue;
}

Vst2::VstIntPtr close (Vst2::AEffect* effect, Vst2::VstIntPtr value, void* data, float option)
{
    const auto instance = *Vst2Instance::find (effect);
    const Vst2Parameters::HostScope host (instance.host);
    // Out of the table first: as soon as the record is freed another thread may get a new one at its address.
    Vst2Instance::remove (effect);
    return instance.wrapped (effect, Vst2::effClose, 0, value, data, option);
}
}

namespace Vst2Parameters
{
HostScope::HostScope (Vst2::audioMasterCallback host) noexcept : outer (hostOfThisThread)
{
    hostOfThisThread = host;
}

HostScope::~HostScope()
{
    hostOfThisThread = outer;
}

void set (Vst2::AEffect* effect, int number, float value)
{
    const auto* instance = Vst2Instance::find (effect);
    if (instance != nullptr && std::isfinite (value))
        instance->engine->setParameter (number, value);
}

float get (Vst2::AEffect* effect, int number)
{
    const auto* instance = Vst2Instance::find (effect);
    return instance != nullptr ? instance->engine->getParameter (number) : 0.0f;
}

Vst2::VstIntPtr dispatch (Vst2::AEffect* effect, int opcode, int index, Vst2::VstIntPtr value, void* data,
                          float option)
{
    const auto* instance = Vst2Instance::find (effect);
    if (instance == nullptr)
        return 0;
    auto& engine = *instance->engine;

    switch (opcode)
    {
    case getTailSize:
        return std::numeric_limits<int32_t>::max(); // decks play without input
    case Vst2::effGetParamLabel:
        write ({}, data);
        return 0;
    case Vst2::effGetParamDisplay:
        write (engine.getParameterText (index), data);
        return 0;
    case Vst2::effGetParamName:
        write (fitted (engine.getParameterName (index)), data);
        return 0;
    case Vst2::effCanBeAutomated:
        return 1;
    case Vst2::effString2Parameter:
        return setFromText (engine, index, static_cast<const char*> (data));
    case Vst2::effGetProductString:
        write ("Platterdex2", data);
        return 1;
    case Vst2::effVendorSpecific:
        if (index == Vst2::effGetParamDisplay)
            return formatValue (value, option, data);
        break;
    case Vst2::effClose:
        return close (effect, value, data, option);
    default:
        break;
    }
    return instance->wrapped (effect, opcode, index, value, data, option);
}

Vst2::VstIntPtr callHost (Vst2::AEffect* effect, int opcode, int index, Vst2::VstIntPtr value, void* data,
                          float option)
{
    const auto* instance = Vst2Instance::find (effect);
    const auto host = instance != nullptr ? instance->host : hostOfThisThread;
    if (host == nullptr)
        return 0;

    if (opcode == Vst2::audioMasterAutomate || opcode == Vst2::audioMasterBeginEdit
        || opcode == Vst2::audioMasterEndEdit)
    {
        const auto number = index + firstCommand;
        return number < lastCommand ? host (effect, opcode, number, value, data, option) : 0;
    }
    return host (effect, opcode, index, value, data, option);
}
}
