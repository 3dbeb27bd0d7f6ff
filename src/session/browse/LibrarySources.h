#pragma once

#include "library/songs/SourceItem.h"
#include "session/browse/LibraryChange.h"
#include "session/browse/MessageCalls.h"
#include "support/Worker.h"

#include <functional>
#include <vector>

class LibraryRoom;

/** All that a tree of sources shows. */
struct SourceTree
{
    std::vector<SourceItem> playlists, smartPlaylists, foreignPlaylists;

    /** The sessions in which songs were played, the newest first; `id` names one to PlayHistory. */
    std::vector<SourceItem> history;

    /** Only while they are wanted. */
    juce::StringArray albums, artists, genres;

    bool operator== (const SourceTree&) const = default;
};

/** Keeps a tree of sources up to date for one view. Reads on a worker. Message thread. */
class LibrarySources : private LibraryListener
{
public:
    /** Begins to read. */
    explicit LibrarySources (LibraryRoom&);
    ~LibrarySources() override;

    /** The tree is another one. Layouts that are stored, and songs that are edited, change none. */
    std::function<void()> onChanged = [] {};

    /** The last that was read; empty at first. */
    const SourceTree& tree() const { return current; }

    /** Says which names of albums, artists and genres are shown. A library has thousands. */
    void wantValues (bool albums, bool artists, bool genres);

    /** Reads anew. */
    void refresh();

    /** Waits for the tree, and delivers it. For programs without a message loop. */
    void settle();

private:
    void libraryChanged (const LibraryChange&) override;

    LibraryRoom& room;
    SourceTree current;
    bool wantsAlbums = false, wantsArtists = false, wantsGenres = false;
    MessageCalls calls;
    Worker worker { "librarySources" }; ///< last: its jobs use all of the above
};
