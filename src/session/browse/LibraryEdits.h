#pragma once

#include "library/database/SongDatabase.h"
#include "library/query/SongQuery.h"
#include "session/browse/ListUndo.h"
#include "session/browse/MessageCalls.h"
#include "support/Worker.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class LibraryRoom;

/** Writes to the library for all views of a process, one edit after the other on a worker, each in one transaction: it is
    stored whole or not at all. Message thread; `Done` is called there too, with a code of which LibraryFaults::sentence()
    makes a sentence. A file that another program has locked is waited for, 5 s, while everything goes on. */
class LibraryEdits
{
public:
    using Done = std::function<void (int code)>;
    using Created = std::function<void (int code, int32_t id)>;

    /** The entries that an edit made or moved, by their new ids, to keep them selected. */
    using Placed = std::function<void (int code, const std::vector<int32_t>& entryIds)>;

    explicit LibraryEdits (LibraryRoom&);

    /** @name Lists: playlists, the automix list, and, without undo, the recommendations */
    void append (ListRef list, std::vector<int32_t> songIds, Placed done = {})
    {
        insert (list, -1, std::move (songIds), std::move (done));
    }

    /** Appends what a query finds. */
    void append (ListRef, const SongQuery&, Placed = {});

    /** @param place   in the list's own order; -1 for its end */
    void insert (ListRef, int place, std::vector<int32_t> songIds, Placed = {});
    void remove (ListRef, std::vector<int32_t> entryIds, Done = {});

    /** Moves entries so that they stand together, in their order, in front of the one that stood at `place`. */
    void move (ListRef, std::vector<int32_t> entryIds, int place, Placed = {});
    void clear (ListRef, Done = {});

    /** Stores a list in another order. @param entryIds   of all entries; those that are not named stand at the end */
    void reorder (ListRef, std::vector<int32_t> entryIds, Done = {});

    /** Makes a playlist, behind the others. */
    void create (const juce::String& name, std::vector<int32_t> songIds, Created = {});
    void createSmart (const juce::String& name, const juce::String& sql, const juce::String& rules,
                      Created = {});

    /** Gives a smart playlist another query and the document of its editor; an empty text leaves what is stored. */
    void setSmart (int32_t id, const juce::String& sql, const juce::String& rules, Done = {});

    /** Reads the document of a smart playlist's editor. */
    void loadSmart (int32_t id, std::function<void (int code, const juce::String& rules)>);

    /** @param list   a playlist or smart playlist */
    void rename (ListRef list, const juce::String& name, Done = {});
    void deleteList (ListRef, Done = {});

    /** Swaps a playlist or smart playlist with its neighbour. @param by   -1 up, 1 down */
    void moveInTree (ListRef, int by, Done = {});

    /** @name Undo of the last 32 edits of lists */
    bool canUndo() const { return undoText().isNotEmpty(); }

    /** The edit that undo() takes back: "Remove 3 songs from Warm up"; nothing if there is none. */
    juce::String undoText() const;

    /** Takes the last edit back: the list has its name, its place and its entries again, with their ids. What others have
        added or removed since stays added or removed. */
    void undo (Done = {});

    /** @name Songs */
    void deleteSongs (std::vector<int32_t> songIds, Done = {});
    void clearLibrary (Done = {});
    void setRating (std::vector<int32_t> songIds, int stars, Done = {});

    /** Stores a field, and writes it into the file's tag where tags have it.
        @param done   also gets LibraryFaults::tagNotWritten where only the library has the new text */
    void setField (int32_t songId, SongField, const juce::String& text, Done = {});
    void clearPlayed (std::vector<int32_t> songIds, Done = {});

    /** Reads the songs' tags again. */
    void reloadTags (std::vector<int32_t> songIds, Done = {});

    /** @name Views; what they ask for does not wait for edits */
    void saveLayout (ListRef, const juce::String& layoutXml, const juce::String& selectionXml, Done = {});

    /** Reads what was saved last; texts are empty where there is none. */
    void loadLayout (ListRef,
                     std::function<void (const juce::String& layoutXml, const juce::String& selectionXml)>);

    /** Reads the paths of songs, in their order; songs that are gone are left out. */
    void pathsOf (std::vector<int32_t> songIds, std::function<void (const juce::StringArray&)>);

    bool isBusy() const { return worker.isBusy(); }

    /** Waits for what views have asked for, not for edits. For programs without a message loop. */
    void settleViews();

    /** Waits for all edits. For programs without a message loop, and before the library is closed. */
    void settle();

private:
    void post (std::function<int()> edit, Done);

    /** A change of a list, as ListUndo makes it, that tells which entries are to be named. */
    using ListChange = std::function<int (ListContent&, std::vector<size_t>& placed)>;
    /** A layout on its way into the file, or one that could not be stored. */
    struct Layout
    {
        ListRef list;
        juce::String layout, selection;
    };

    void make (ListContent, Created);
    int runEdit (ListRef, const juce::String& verb, const ListChange&, std::vector<int32_t>& entryIds);
    void editList (ListRef, const juce::String& verb, ListChange, Placed);

    LibraryRoom& room;
    SongDatabase& database;
    ListUndo history;
    std::mutex layoutLock; ///< of the one below
    std::vector<std::shared_ptr<const Layout>> layoutsToCome;
    MessageCalls calls;
    Worker readers { "libraryViews" };
    Worker worker { "libraryEdits" }; ///< last, with the one above: their jobs use the rest
};
