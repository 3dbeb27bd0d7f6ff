#include "library/import/ImportDirectory.h"

ImportDirectory::ImportDirectory (SongDatabase* d, const juce::File& f) : database (d), folder (f) {}

ImportResult ImportDirectory::run (ImportProgress& progress)
{
    if (database == nullptr || !folder.isDirectory())
        return {};
    ImportRun importRun (*database, progress);
    importRun.importFolder (folder);
    return importRun.end();
}
