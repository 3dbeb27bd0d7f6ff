#include "library/import/ImportRun.h"

#include "library/database/SongDatabase.h"
#include "library/import/FolderWalk.h"
#include "library/import/ImportSong.h"
#include "support/AudioFileTypes.h"

ImportRun::ImportRun (SongDatabase& d, ImportProgress& p)
    : database (d),
      progress (p),
      filter (AudioFileTypes::wildcard, {}, {})
{
    database.beginTransaction();
}

ImportRun::~ImportRun()
{
    database.endTransaction();
}

bool ImportRun::importFile (const juce::String& path, double part)
{
    if (progress.shouldExit())
    {
        result.isCancelled = true;
        return false;
    }
    if (filter.isFileSuitable (juce::File::createFileWithoutCheckingPath (path)))
    {
        progress.setStatusText (path);
        const auto outcome = tryImportSong (database, path);
        ++result.accepted;
        result.added += outcome == SongImport::added ? 1 : 0;
        result.refused += outcome == SongImport::refused ? 1 : 0;
        onAccepted (path);
    }
    progress.setProgress (part);
    return true;
}

bool ImportRun::importFolder (const juce::File& folder, double from, double to)
{
    return FolderWalk::visitFiles (folder, [this, from, to] (const juce::String& path, double estimate)
                                   { return importFile (path, from + (to - from) * estimate); });
}
