#pragma once

#include "library/import/ImportRun.h"

/** Imports all audio files below a folder. */
class ImportDirectory
{
public:
    /** @param database   none ends the import at once, as does a folder that isn't there */
    ImportDirectory (SongDatabase* database, const juce::File& folder);

    /** Any thread but the audio thread. */
    ImportResult run (ImportProgress&);

private:
    SongDatabase* const database;
    const juce::File folder;
};
