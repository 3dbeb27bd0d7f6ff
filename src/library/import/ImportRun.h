#pragma once

#include "library/import/ImportProgress.h"

#include <juce_core/juce_core.h>

#include <functional>

class SongDatabase;

/** How an import ended. */
struct ImportResult
{
    int accepted = 0; ///< audio files that were met
    int added = 0;    ///< of these, those that are new in the library
    int refused = 0;  ///< of these, those that the database did not take
    bool isCancelled = false;

    /** Another program writes to the library: the import ended at the first song for which that was waited in vain. */
    bool isLocked = false;
};

/** Ends a transaction, if need be after waiting two seconds for other programs that read. Any thread but the audio
    thread. @returns a code as the database gives it */
int endPatiently (SongDatabase&);

/** One import while it goes: the file filter, the transaction around everything, and what came of it. */
class ImportRun
{
public:
    ImportRun (SongDatabase&, ImportProgress&);
    ~ImportRun();
    ImportRun (const ImportRun&) = delete;
    ImportRun& operator= (const ImportRun&) = delete;

    /** Imports a file if it is one of AudioFileTypes.
        @param part   that is done with it, 0 to 1
        @returns false once the import is cancelled or the library locked */
    bool importFile (const juce::String& path, double part);

    /** The same with every file below a folder.
        @param from, to   what the folder is of the whole; the walk's estimate goes from one to the other */
    bool importFolder (const juce::File&, double from = 0.0, double to = 1.0);

    /** Called for each accepted path, known or new. */
    std::function<void (const juce::String& path)> onAccepted = [] (const juce::String&) {};

    /** Stores what was imported. */
    ImportResult end();

private:
    SongDatabase& database;
    ImportProgress& progress;
    const juce::WildcardFileFilter filter;
    ImportResult result;
    bool hasEnded = false;
};
