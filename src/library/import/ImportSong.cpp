#include "library/import/ImportSong.h"

#include "library/database/SongDatabase.h"
#include "library/import/SongBatch.h"

bool importSong (SongDatabase& database, const juce::String& path)
{
    SongBatch batch (database);
    return batch.take (path) && batch.added() == 1;
}

int markStarted (SongDatabase& database, const juce::String& path)
{
    const auto id = database.idOfFilename (path);
    if (id < 0)
        return id == -1 ? 0 : id;
    const auto code = database.markPlayed (id);
    return code == LibraryCode::ok ? 1 : LibraryCode::inPlaceOfCount (code);
}
