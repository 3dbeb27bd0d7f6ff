#pragma once

#include "settings/EngineSettings.h"
#include "settings/Folders.h"

#include <juce_core/juce_core.h>

/** The content of a report on a fault: the state of program and machine at one moment. */
struct SystemReport
{
    juce::String version;                      ///< of the program
    juce::StringArray audio;                   ///< lines: the device, the course of the blocks
    int64_t lostFrames = 0;                    ///< of the recording that runs, or of the last one
    juce::StringArray midiInputs, midiOutputs; ///< names of ports
    juce::StringArray settings;                ///< lines, as changedSettings() makes them
    juce::StringArray notices;                 ///< lines, the oldest first

    /** The report. Texts in it are English: it is for those who mend the program.
        @param withPaths   false masks the paths of files, whose names tell of private music */
    juce::String text (bool withPaths) const;
};

/** A line for each setting that is not as it was at first: "name = value". Message thread. */
juce::StringArray changedSettings (const EngineSettings&, const Folders&);

/** Replaces what follows the begin of an absolute path, up to the file's last extension or the line's end. A name may hold
    blanks, so the end of a path without one is not to be found. */
juce::String withoutPaths (const juce::String& line);
