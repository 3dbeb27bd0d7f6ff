#pragma once

#include <juce_core/juce_core.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>

class CPlatterdex;
class ScriptJournal;

/** The time that a script may take. */
struct ScriptTimes
{
    std::chrono::milliseconds callback { 5000 }; ///< of one call, before it is taken for hung and ended
    std::chrono::milliseconds ending { 5000 };   ///< for running calls to end when the script is stopped
    std::chrono::milliseconds timer { 50 };      ///< between two calls of OnTimerCallback
};

/** Everything that a script reaches. */
struct ScriptWorld
{
    CPlatterdex* owner = nullptr; ///< target of get and set; null stops them

    /** Sends one whole message to all open outputs; null where there are none. Threads of the scripts. */
    std::function<void (std::span<const uint8_t>)> send {};

    ScriptJournal& journal;

    /** The second place for included files, after the script's own folder. */
    juce::File scriptFolder {};

    ScriptTimes times {};

    /** True where the script has no threads: whoever posts a message carries it out, and whoever calls tick() runs the timer. */
    bool isStepped = false;
};
