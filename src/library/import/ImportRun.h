#pragma once

#include "library/import/ImportProgress.h"
#include "library/import/SongBatch.h"
#include "library/sql/LibraryCode.h"

#include <juce_core/juce_core.h>

#include <functional>

/** The outcome of an import. */
struct ImportResult
{
    int accepted = 0; ///< audio files that were met
    int added = 0;    ///< of these, those that are new in the library, and stored
    int refused = 0;  ///< of these, those that are not stored for a fault
    bool isCancelled = false;

    /** Files that no deck could load, which are not counted above, each with the reason: "PATH: sentence". */
    juce::StringArray unplayable {};

    /** The code of LibraryCode, or SQLite's, of the fault that ended the import: after a full disk, say, or where another
        program was waited for in vain. */
    int code = 0;

    bool isLocked() const { return code == LibraryCode::busy; }
};

/** One import while it goes: the file filter, the songs on their way, and the outcome. */
class ImportRun
{
public:
    ImportRun (SongDatabase&, ImportProgress&, SongBatch::Judge = {});

    /** Imports a file if it is one of AudioFileTypes.
        @param part   that is done with it, 0 to 1
        @returns false once the import is cancelled or nothing can be stored */
    bool importFile (const juce::String& path, double part);

    /** The same with every file below a folder.
        @param from, to   what the folder is of the whole; the walk's estimate goes from one to the other */
    bool importFolder (const juce::File&, double from = 0.0, double to = 1.0);

    /** Called for each accepted path, known or new; not for one that no deck could load. */
    std::function<void (const juce::String& path)> onAccepted = [] (const juce::String&) {};

    /** Stores the last songs. */
    ImportResult end();

private:
    SongBatch batch;
    ImportProgress& progress;
    ImportResult result;
};
