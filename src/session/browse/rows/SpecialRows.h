#pragma once

#include "library/query/SongQuery.h"
#include "library/songs/SongList.h"
#include "library/songs/SongRecord.h"
#include "session/browse/PlayHistory.h"

#include <memory>
#include <stop_token>
#include <vector>

class LibraryRoom;

/** Rows that no query of the library gives. Any thread that may block. */
namespace SpecialRows
{
/** The rows of a session in which songs were played. */
struct Played
{
    std::vector<PlayedSong> songs; ///< an entry's id is the place of its song here

    /** Songs that the library lacks; their numbers begin at -2 and fall. */
    std::vector<std::shared_ptr<const SongRecord>> strangers;
};

/** Fills a list with what a session played; its order is that of playing, or falls from the last one. */
int fillHistory (LibraryRoom&, const SongQuery&, const std::stop_token&, SongList&, Played&);

/** Fills a list with the songs whose files are not there. Looks at the files of all songs. */
int fillMissing (LibraryRoom&, const SongQuery&, const std::stop_token&, SongList&);
}
