#include "library/import/ImportSong.h"

#include "library/database/SongDatabase.h"
#include "library/tags/ReadTags.h"
#include "support/AudioThread.h"

bool importSong (SongDatabase& database, const juce::String& path)
{
    assertMayBlock();
    if (database.countFilename (path) > 0)
        return false;
    SongRecord record;
    readTags (path, record);
    return database.insertSong (record) == 0;
}

bool markStarted (SongDatabase& database, const juce::String& path)
{
    const auto id = database.idOfFilename (path);
    return id >= 0 && database.markPlayed (id) == 0;
}
