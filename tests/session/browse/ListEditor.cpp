#include "session/browse/LibraryRoom.h"

#include <unistd.h>

// list_editor FILE FOLDER PLAYLIST SONG: adds a song to the automix list and to a playlist of two, takes the first one out, moves
// the next one to the end, clears the playlist, and takes all five back, without an end; writes one byte for each round that is
// stored.

int main (int count, char** arguments)
{
    if (count != 5)
        return 2;
    SongDatabase database { juce::File (juce::String (arguments[1])) };
    const juce::File folder { juce::String (arguments[2]) };
    LibraryRoom room (database, { folder.getChildFile ("history"), folder.getChildFile ("folders.txt") });
    const ListRef playlist { SongListKind::playlist, juce::String (arguments[3]).getIntValue() };
    const auto song = juce::String (arguments[4]).getIntValue();
    auto failures = 0;
    const auto note = [&failures] (int code) { failures += code != 0; };
    const auto notePlaced = [&note] (int code, const std::vector<int32_t>&) { note (code); };
    for (;;)
    {
        ListContent content;
        failures += database.readList (playlist, content) != 0 || content.entries.size() != 2;
        if (failures > 0)
            return 1;
        room.edits.append ({ SongListKind::automix }, { song }, notePlaced);
        room.edits.append (playlist, { song }, notePlaced);
        room.edits.remove (playlist, { content.entries[0].entryId }, note);
        room.edits.move (playlist, { content.entries[1].entryId }, -1, notePlaced);
        room.edits.clear (playlist, note);
        for (int i = 0; i < 5; ++i)
            room.edits.undo (note);
        room.edits.settle();
        if (failures > 0 || ::write (STDOUT_FILENO, ".", 1) != 1)
            return 1;
    }
}
