#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

/** The outcome of a scan of one plug-in. */
enum class VerifiedState
{
    verified,
    failed, ///< it would not load, or the user has skipped it
    crashed ///< the scanner process died of it
};

/** The word of the table: empty, "FAILED" or "CRASHED". */
const char* wordOf (VerifiedState);

/** A plug-in as the scan has found it, or a file that could not be scanned: then only its name, format and file are known. */
struct KnownPluginEntry
{
    juce::PluginDescription description;
    VerifiedState state = VerifiedState::verified;
    int latency = 0;     ///< in samples, as it reports it when it is loaded
    juce::String file;   ///< the file or bundle that was scanned
    juce::String reason; ///< of a failure, one sentence

    static constexpr juce::int64 notScanned = 0;
    juce::int64 fileTime = notScanned; ///< of its last change, in ms; without one it is scanned again

    bool isUsable() const noexcept { return state == VerifiedState::verified; }

    /** The folder that the file lies in. */
    juce::String directory() const { return juce::File (file).getParentDirectory().getFullPathName(); }
};
