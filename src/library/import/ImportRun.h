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
};

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
        @returns false once the import is cancelled */
    bool importFile (const juce::String& path, double part);

    /** The same with every file below a folder.
        @param from, to   what the folder is of the whole; the walk's estimate goes from one to the other */
    bool importFolder (const juce::File&, double from = 0.0, double to = 1.0);

    /** Called for each accepted path, known or new. */
    std::function<void (const juce::String& path)> onAccepted = [] (const juce::String&) {};

    ImportResult result;

private:
    SongDatabase& database;
    ImportProgress& progress;
    const juce::WildcardFileFilter filter;
};
