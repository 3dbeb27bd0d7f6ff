#pragma once

#include "midi/script/ScriptTurn.h"
#include "midi/script/ScriptWorld.h"

#include <array>
#include <atomic>
#include <memory>
#include <string>

namespace AngelScript
{
class asIScriptEngine;
}

/** The eight functions that a script sees. Each is called by the thread that holds the script's turn, which it leaves to others
    while it does what may block. */
class ScriptFunctions
{
public:
    ScriptFunctions (const ScriptWorld& w, ScriptTurn& t) : world (w), turn (t) {}

    /** Makes the functions known to a script engine that lives no longer than this. */
    void registerWith (AngelScript::asIScriptEngine&);

    /** Names the script whose lines log() writes. While no script runs. */
    void setScript (const juce::File& file) { script = file; }

    /** Forgets what was sent, so that every first message of a script goes out. While no script runs. */
    void forgetSent();

    /** Asks for the same before the next message goes out. Any thread. */
    void forgetSentSoon() noexcept { mustForget = true; }

    void log (const std::string& text);
    float get (int index);
    void set (int index);
    void set (int index, float param1);
    void set (int index, float param1, float param2);
    void set (int index, float param1, float param2, float param3);

    /** Sends a short message, unless the same value went to the same place last. Status and data are clamped to 128..255 and
        0..127; of the value the low 7 bits go out. */
    void sendMidiMessage (int status, int data, int value);

    /** Sends the bytes of a text of hexadecimal digits; other characters are stepped over. Fewer than four digits do
        nothing, an odd last one is ignored. */
    void sendSysExMessage (const std::string& text);

private:
    void send (std::span<const uint8_t>);

    /** The last value for each status and data byte. */
    using SentValues = std::array<std::array<uint32_t, 128>, 256>;

    const ScriptWorld& world;
    ScriptTurn& turn;
    juce::File script;
    std::atomic<bool> mustForget { false };
    std::unique_ptr<SentValues> outCache = std::make_unique<SentValues>();
};
