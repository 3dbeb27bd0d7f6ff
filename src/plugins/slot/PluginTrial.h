#pragma once

#include "plugins/catalogue/KnownPluginEntry.h"
#include "plugins/scan/ScannerExchange.h"

#include <set>

/** Tries plug-ins out in the scanner process before they come into the program. One thread at a time. */
class PluginTrial
{
public:
    explicit PluginTrial (ScannerProcess::Options);

    struct Request
    {
        KnownPluginEntry entry;
        double rate = 44100.0; ///< in Hz
        int block = 256;       ///< in frames
        juce::MemoryBlock state;
    };

    /** Plays the plug-in for ten blocks; one that has passed with the same rate and block need not do so again.
        @param shouldExit   true breaks it off
        @returns one sentence on why it failed, or nothing */
    juce::String run (const Request&, const std::function<bool()>& shouldExit);

private:
    static juce::String keyOf (const Request&);

    ScannerExchange exchange;
    std::set<juce::String> passed;
};
