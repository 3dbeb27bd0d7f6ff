#include "LibraryWriter.h"

#include "library/database/SongDatabase.h"

#include <unistd.h>

#include <cstdlib>

// library_writer FILE FIRST: imports and edits without an end, and writes one byte for each unit that is committed.
// Song 1 and playlist 1 must be there.

namespace
{
int insert (SongDatabase& database, int unit, int song)
{
    SongRecord record;
    record[SongColumn::filename] = WriterUnits::pathOf (unit, song);
    record[SongColumn::comment] = juce::String::repeatedString ("words ", 40);
    return database.insertSong (record);
}

int write (SongDatabase& database, int unit)
{
    switch (WriterUnits::kindOf (unit))
    {
    case WriterUnits::Kind::oneSong:
        return insert (database, unit, 0);
    case WriterUnits::Kind::manySongs:
    {
        auto transaction = database.beginTransaction();
        auto code = transaction.code();
        for (int i = 0; i < WriterUnits::songsOfMany && code == 0; ++i)
            code = insert (database, unit, i);
        return transaction.commitIf (code);
    }
    case WriterUnits::Kind::playlist:
    {
        SongList list (SongListKind::playlist, 1);
        for (int i = 0; i < WriterUnits::entriesOf (unit); ++i)
            list.add ({ 1, 1, 1, -1, nullptr });
        return database.replacePlaylistEntries (&list);
    }
    case WriterUnits::Kind::comment:
        break;
    }
    return database.setTextField (SongField::comment, 1, juce::String (unit));
}
}

int main (int count, char** arguments)
{
    if (count != 3)
        return 2;
    SongDatabase database { juce::File (juce::String (arguments[1])) };
    for (auto unit = std::atoi (arguments[2]);; ++unit)
        if (write (database, unit) != 0 || ::write (STDOUT_FILENO, ".", 1) != 1)
            return 1;
}
