#include "library/import/ImportRun.h"

#include "library/database/SongDatabase.h"
#include "library/import/FolderWalk.h"
#include "library/import/ImportSong.h"
#include "support/AudioFileTypes.h"

#include <utility>

namespace
{
/** Each waits for a tenth of a second. */
constexpr int triesToStore = 20;
}

int endPatiently (SongDatabase& database)
{
    auto code = database.endTransaction();
    for (int i = 0; i < triesToStore && code == LibraryCode::busy; ++i)
        code = database.endTransaction();
    return code;
}

ImportRun::ImportRun (SongDatabase& d, ImportProgress& p)
    : database (d),
      progress (p),
      filter (AudioFileTypes::wildcard, {}, {})
{
    database.beginTransaction();
}

ImportRun::~ImportRun()
{
    if (!hasEnded)
        juce::ignoreUnused (end());
}

ImportResult ImportRun::end()
{
    hasEnded = true;
    if (endPatiently (database) == LibraryCode::busy)
    {
        result.isLocked = true;
        result.refused += std::exchange (result.added, 0);
    }
    return result;
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
        result.refused += outcome == SongImport::refused || outcome == SongImport::locked ? 1 : 0;
        result.isLocked = outcome == SongImport::locked;
        if (result.isLocked)
            return false;
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
