#pragma once

#include "offline/OfflineHost.h"
#include "offline/set/SetScript.h"
#include "plugins/scan/ScannerProcess.h"

/** The folder of a set's files, and the receivers of its words. */
struct SetPerformance
{
    juce::File folder; ///< of relative paths

    /** Takes a line of a print: the time in seconds, the command's script constant (a meter's number) and what a read
        gives, in one format: "12.500000 CROSSFADER 0.250000"; of what was sent to controllers "12.500000 MIDI 90 0B 7F"
        and of what a script logs "12.500000 LOG text". May be empty. */
    std::function<void (const juce::String&)> print;

    /** Takes what the engine shows on a deck, and what else went wrong, each as one line with its time. May be empty. */
    std::function<void (const juce::String&)> report;

    /** Takes the path of each track that was not loaded. May be empty. */
    std::function<void (const juce::String&)> notLoaded {};

    /** The program that tries plug-ins out; without one named it lies beside the running one. */
    juce::File scanner = ScannerProcess::besideBinary();
};

/** Plays a set from the host's present position on. A line takes effect before the frame round (seconds * rate) of the
    run, lines of one time in their order. Ends at the last line, or at once if the host's sink ends the rendering.
    @returns false if the sink did */
bool performSet (const SetScript&, OfflineHost&, const SetPerformance&);
