#pragma once

#include <juce_core/juce_core.h>

#include <span>

/** Something that the program does for its first argument, without a window. */
struct Verb
{
    const char* name;
    const char* summary; ///< one line

    /** @param arguments   those after the verb
        @returns the exit code of the process */
    int (*run) (const juce::StringArray& arguments);
};

/** All verbs, in the order of the help. */
std::span<const Verb> allVerbs();

int runAnalyse (const juce::StringArray& arguments);
int runAutomix (const juce::StringArray& arguments);
int runBackup (const juce::StringArray& arguments);
int runCommands (const juce::StringArray& arguments);
int runControlCd (const juce::StringArray& arguments);
int runDemoTracks (const juce::StringArray& arguments);
int runExport (const juce::StringArray& arguments);
int runHistory (const juce::StringArray& arguments);
int runImport (const juce::StringArray& arguments);
int runList (const juce::StringArray& arguments);
int runMidi (const juce::StringArray& arguments);
int runControllers (const juce::StringArray& arguments);
int runMix (const juce::StringArray& arguments);
int runPerform (const juce::StringArray& arguments);
int runPlaylist (const juce::StringArray& arguments);
int runPlugins (const juce::StringArray& arguments);
int runPresets (const juce::StringArray& arguments);
int runRelocate (const juce::StringArray& arguments);
int runRemove (const juce::StringArray& arguments);
int runRestore (const juce::StringArray& arguments);
int runScript (const juce::StringArray& arguments);
int runSettings (const juce::StringArray& arguments);
int runSimilar (const juce::StringArray& arguments);
int runSmart (const juce::StringArray& arguments);
int runSnapshot (const juce::StringArray& arguments);
int runTimecode (const juce::StringArray& arguments);
