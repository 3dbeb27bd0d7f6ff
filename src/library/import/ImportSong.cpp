#include "library/import/ImportSong.h"

#include "library/database/SongDatabase.h"
#include "library/tags/ReadTags.h"
#include "support/AudioThread.h"

SongImport tryImportSong (SongDatabase& database, const juce::String& path)
{
    assertMayBlock();
    if (database.countFilename (path) > 0)
        return SongImport::known;
    SongRecord record;
    readTags (path, record);
    switch (database.insertSong (record))
    {
    case LibraryCode::ok:
        return SongImport::added;
    case LibraryCode::busy:
        return SongImport::locked;
    default:
        return SongImport::refused;
    }
}

bool importSong (SongDatabase& database, const juce::String& path)
{
    return tryImportSong (database, path) == SongImport::added;
}

bool markStarted (SongDatabase& database, const juce::String& path)
{
    const auto id = database.idOfFilename (path);
    return id >= 0 && database.markPlayed (id) == LibraryCode::ok;
}
