#include "session/browse/LibrarySources.h"

#include "session/browse/LibraryRoom.h"

namespace
{
constexpr Worker::Key newest = 0;
}

LibrarySources::LibrarySources (LibraryRoom& r) : room (r)
{
    room.addListener (*this);
    refresh();
}

LibrarySources::~LibrarySources()
{
    room.removeListener (*this);
}

void LibrarySources::wantValues (bool albums, bool artists, bool genres)
{
    if (albums == wantsAlbums && artists == wantsArtists && genres == wantsGenres)
        return;
    wantsAlbums = albums;
    wantsArtists = artists;
    wantsGenres = genres;
    refresh();
}

void LibrarySources::refresh()
{
    worker.post (newest, { [this, albums = wantsAlbums, artists = wantsArtists,
                            genres = wantsGenres] (const std::stop_token& stop)
                           {
                               auto& database = room.database;
                               SourceTree tree;
                               auto code = database.listPlaylists (tree.playlists);
                               if (code == LibraryCode::ok)
                                   code = database.listSmartPlaylists (tree.smartPlaylists);
                               if (code == LibraryCode::ok)
                                   code = database.listForeignPlaylists (tree.foreignPlaylists);
                               tree.history = room.history.sessions();
                               if (code == LibraryCode::ok && albums)
                                   code = database.listDistinct (SongField::album, tree.albums);
                               if (code == LibraryCode::ok && artists)
                                   code = database.listDistinct (SongField::artist, tree.artists);
                               if (code == LibraryCode::ok && genres)
                                   code = database.listDistinct (SongField::genre, tree.genres);
                               // A tree that can't be read just now stays as it was.
                               if (code == LibraryCode::ok && !stop.stop_requested())
                                   calls.post (
                                       [this, tree = std::move (tree)]
                                       {
                                           if (tree == current)
                                               return;
                                           current = tree;
                                           onChanged();
                                       });
                           } });
}

void LibrarySources::libraryChanged (const LibraryChange& change)
{
    // Songs that are edited or come in may have new albums, artists or genres.
    if (change.lists || (change.songs && (wantsAlbums || wantsArtists || wantsGenres)))
        refresh();
}

void LibrarySources::settle()
{
    worker.wait();
    calls.deliver();
}
