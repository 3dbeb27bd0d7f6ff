#pragma once

#include "library/database/ListContent.h"
#include "library/songs/SongField.h"
#include "library/songs/SongList.h"
#include "library/songs/SongRecord.h"
#include "library/songs/SourceItem.h"
#include "library/sql/LibraryCode.h"
#include "library/sql/ReadConnections.h"
#include "library/sql/SqlTransaction.h"

#include <atomic>
#include <functional>
#include <span>
#include <string>
#include <vector>

struct LinkTable;

/** The library: one SQLite file, and the only class that speaks SQL.

    Operations give 0 for success, a code of LibraryCode or SQLite's own code; where one gives a count or an id, that is
    0 or more, or a code below 0 as LibraryCode::inPlaceOfCount() makes it. None throws. An operation that writes gives 0
    only when the file holds what it wrote; it waits 5 s for another program, and after any other code nothing of it is
    stored unless its comment says so.

    Every operation may be called on any thread but the audio thread. Reading waits for nobody: each thread that reads has
    a connection of its own, except within its own transaction and for foreign songs and recommendations, which live in
    the writing connection. Writing is one task at a time: a transaction keeps the tasks of other threads waiting until it
    ends, so it is short. Lists and records are the caller's own. A null list gives -8 everywhere.

    Every operation that fills a list empties it first, and leaves its kind, its name and its playlist's id alone. */
class SongDatabase
{
public:
    /** The place of a session's rows. */
    enum class Storage
    {
        file,

        /** In memory, beginning with what the file holds, if it can be read. Nothing is stored. */
        memory
    };

    /** Says one sentence to the user. Called on the thread that opens. */
    using Notice = std::function<void (const juce::String&)>;

    /** The names that views show and those of the columns, by the number of a SongField. */
    static const std::array<const char*, songFieldCount> displayNames, columnNames;

    /** Closed. */
    SongDatabase();

    /** Opens the file, which is created if it is missing. */
    explicit SongDatabase (const juce::File&, Storage = Storage::file, Notice = {});

    ~SongDatabase();
    SongDatabase (const SongDatabase&) = delete;
    SongDatabase& operator= (const SongDatabase&) = delete;

    /** @name Connection */
    /** Opens, after closing what was open, and makes what is missing of the schema. A file that another program keeps locked
        is not opened. No other thread may be using the database. */
    int open (const juce::File&, Storage = Storage::file, const Notice& = {});

    /** Closes; as open(), only while no other thread is using the database. */
    void close();
    bool isOpen() const;

    /** The file that holds what is stored; none while closed, and for a session in memory. */
    const juce::File& file() const noexcept { return storedIn; }

    /** Sets how long an operation waits for other programs, at first 5 s. */
    void setPatience (int milliseconds);

    /** Begins a transaction of the calling thread around several operations. The tasks of other threads wait until it ends. */
    SqlTransaction beginTransaction() { return { connection, SqlTransaction::Purpose::writing }; }

    /** The same around operations that write to the foreign library alone, which keeps no other program waiting. */
    SqlTransaction beginForeignTransaction() { return { connection, SqlTransaction::Purpose::reading }; }

    /** Writes a whole copy of the library as it stands to a file, replacing it. */
    int copyTo (const juce::File&);

    /** @name Reading songs */
    /** Reads one song and looks whether its file is there. A song that does not exist gives 0 and an empty record with
        id -1. */
    int readSong (int32_t id, SongRecord&);
    int readForeignSong (int32_t id, SongRecord&);

    /** The search for the files of songs that are read. */
    enum class Presence
    {
        looked,
        skipped
    };

    /** Reads the songs of the entries `first` to `last` - 1, clipped to the list, inside one transaction.
        @param records   as many as entries that are left, in their order
        @param presence  skipped leaves `present` false: looking for the files takes longer than all else */
    int readSongs (const SongList*, int first, int last, std::vector<SongRecord>& records,
                   Presence presence = Presence::looked);

    /** Reads only some columns of the songs of the entries `first` to `last` - 1, clipped to the list, by their ids, which is the
        quickest order.
        @param row   gets the entry's place in the list and a row whose columns are `columns`; an entry whose song is gone is left out */
    int scanEntries (const SongList&, int first, int last, std::span<const SongColumn> columns,
                     const std::function<void (int place, const SqlRow&)>& row);

    /** The stored text of one field. bpm comes as SQLite prints it. */
    int readField (SongField, int32_t id, juce::String& text);
    int readForeignField (SongField, int32_t id, juce::String& text);

    int countSongs();
    int countAutomix();
    int countDistinct (SongField);
    int countWhere (SongField, const juce::String& value);

    /** Entries of a foreign playlist. */
    int countPlaylistEntries (int32_t playlistId);

    /** All values that a field has, once each, by their lower case. */
    int listDistinct (SongField, juce::StringArray& values);

    /** Finds the song with exactly this path. Where there is none, the entry's song id is -1. */
    int findByFilename (const juce::String& path, SongListEntry&);
    int countFilename (const juce::String& path);

    /** @returns -1 if no song has this path; below that it is not known, see LibraryCode::ofCount() */
    int32_t idOfFilename (const juce::String& path);

    /** A value that is as long as the longest one that the list's songs have, for the width of a column. */
    int longestValue (SongField, const SongList*, juce::String& value);

    /** The text that a view shows of a field: sizes and times as people write them, dates by the local time zone, nothing for an
        unknown number. Field 24 gives nothing. */
    static juce::String fieldText (const SongRecord&, SongField);

    /** @name Filling a list */
    int fillLibrary (SongList*, SongField sort, bool ascending);
    int fillPlaylist (SongList*, int32_t id, SongField sort, bool ascending);
    int fillForeignPlaylist (SongList*, int32_t id, SongField sort, bool ascending);
    int fillAutomix (SongList*, SongField sort, bool ascending);
    int fillRecommendation (SongList*, SongField sort, bool ascending);

    /** Runs the stored query. Where that has an order of its own, the sort comes second. */
    int fillSmartPlaylist (SongList*, int32_t id, SongField sort, bool ascending);
    int fillByField (const juce::String& value, SongField, SongList*, SongField sort, bool ascending);

    /** Puts what a list holds in a new order, by the list's kind, and notes in kinds 7, 12, 14 and 16 whether that is
        away from the stored one. */
    int sortList (SongList*, SongField, bool ascending);

    /** @name Searching
        A song is found if any of the fields has the term in it, in any letter case; "%" stands for any text and "_" for any
        character. No fields find nothing. */
    using SearchFields = std::span<const SongField>;

    int searchLibrary (SongList*, SearchFields, const juce::String& term, SongField sort, bool ascending);
    int searchPlaylist (SongList*, int32_t id, SearchFields, const juce::String& term, SongField sort,
                        bool ascending);
    int searchForeignPlaylist (SongList*, int32_t id, SearchFields, const juce::String& term, SongField sort,
                               bool ascending);
    int searchAutomix (SongList*, SearchFields, const juce::String& term, SongField sort, bool ascending);
    int searchRecommendation (SongList*, SearchFields, const juce::String& term, SongField sort,
                              bool ascending);
    int searchSmartPlaylist (SongList*, int32_t id, SearchFields, const juce::String& term, SongField sort,
                             bool ascending);

    /** Among the songs where `field` equals `value`: one album, artist or genre. */
    int searchWithinField (SongList*, SongField field, const juce::String& value, SearchFields,
                           const juce::String& term, SongField sort, bool ascending);
    int searchAmongIds (SongList*, std::span<const int32_t> ids, SearchFields, const juce::String& term,
                        SongField sort, bool ascending);

    /** @name Writing songs */
    /** Adds a song, under the record's id or, where that is -1, a new one. What the record does not say of size, times,
        drive and volume is asked of the file. The columns that begin at 0 are written as 0, whatever the record holds. */
    int insertSong (const SongRecord&);

    /** Fills in what the record leaves open and the file system knows, once: before a transaction, in which a slow drive would
        keep others waiting. insertSong() does it by itself. May block. */
    static void completeFromFile (SongRecord&);
    int insertForeignSong (const SongRecord&);

    /** Writes all columns. An id of -1 gives -8. */
    int updateSong (const SongRecord&);
    int setRating (int32_t id, int rating);
    int setIntField (SongField, int32_t id, int64_t value);
    int setTextField (SongField, int32_t id, const juce::String& value);
    int setBpm (int32_t id, double bpm);

    /** Last played is now, and one play more. */
    int markPlayed (int32_t id);

    /** Never played, for all songs of the list. Ends at the first failure, which leaves the songs before it changed. */
    int clearPlayed (const SongList*);

    /** Takes a song out of the library, the playlists and the automix list, not out of the recommendations. */
    int deleteSong (int32_t id);
    int deleteSongs (const SongList*); ///< ends at the first failure, the songs before it being gone

    /** Empties everything and brings the default smart playlists back. */
    int clearLibrary();

    /** Empties the foreign library. */
    int clearForeign();

    /** @name Playlists and the automix list */
    /** @param list   songs to begin with, or null
        @param newId   where the new playlist's id goes, or null */
    int createPlaylist (const juce::String& name, const SongList* list, int32_t sortOrder,
                        int32_t* newId = nullptr);
    int createForeignPlaylist (const juce::String& name, const SongList* list, int32_t sortOrder,
                               int32_t* newId = nullptr);

    /** Append songs, up to a failure. Paths that are not in the library are left out. No paths give -6. */
    int addFilesToPlaylist (int32_t id, const juce::StringArray& paths);
    int addListToPlaylist (int32_t id, const SongList*);
    int addFilesToAutomix (const juce::StringArray& paths);
    int addListToAutomix (const SongList*);
    int addListToRecommendation (const SongList*);

    /** Makes the stored list what this one holds, whose entries get their new entry ids. A failure leaves both as they were. */
    int replacePlaylistEntries (SongList*);
    int replaceAutomixEntries (SongList*);

    int removeEntries (int32_t playlistId, std::span<const int32_t> entryIds);
    int removeAutomixEntries (std::span<const int32_t> entryIds);
    int clearAutomix();
    int clearRecommendation();
    int renamePlaylist (int32_t id, const juce::String& name);
    int deletePlaylist (int32_t id);

    /** By sort order; the order among equals is open. */
    int listPlaylists (std::vector<SourceItem>&);
    int listSmartPlaylists (std::vector<SourceItem>&);
    int listForeignPlaylists (std::vector<SourceItem>&);

    /** Stores the place of a playlist or smart playlist among its kind. Other kinds do nothing. */
    int setSortOrder (const SourceItem&);

    /** @name Smart playlists */
    /** @param sql   the query from its condition on
        @param rules   the editor's document */
    int createSmartPlaylist (const juce::String& name, const juce::String& sql, const juce::String& rules,
                             int32_t sortOrder, int32_t* newId = nullptr);
    int setSmartSql (int32_t id, const juce::String& sql);
    int setSmartRules (int32_t id, const juce::String& xml);
    int getSmartRules (int32_t id, juce::String& xml);
    int renameSmartPlaylist (int32_t id, const juce::String& name);
    int deleteSmartPlaylist (int32_t id);

    /** @name Layouts
        Texts that a view stores for the list's kind or playlist; opaque here. */
    int saveLayout (const SongList*, const juce::String& layoutXml, const juce::String& selectionXml);
    int loadLayout (const SongList*, juce::String& layoutXml);
    int loadSelection (const SongList*, juce::String& selectionXml);

    /** @name Lists as a whole, for edits that can be taken back */
    /** Reads all that is stored of a list: a playlist, a smart playlist, the automix list or the recommendations. One that
        isn't there gives 0 and `exists` false. */
    int readList (const ListRef&, ListContent&);

    /** Makes a list what the content says: makes or deletes it, gives it its name, place and entries. Entries keep their ids,
        which rise with the order; those without one, or whose id another list has, and all behind them get new ones. The layout
        texts are written only where a list is made. @param content   gets the ids */
    int writeList (ListContent& content);

    /** @name Whole columns, for an index of all songs */
    /** Hands over rows of id, duration, filesize and then the fields, by rising id.
        @param only   the songs to read; null for all */
    int scanSongs (std::span<const SongField>, const std::vector<int32_t>* only,
                   const SqlConnection::RowFunction&);
    int scanForeignSongs (std::span<const SongField>, const SqlConnection::RowFunction&);

    /** @name Changes */
    struct Changes
    {
        std::vector<int32_t> songs; ///< that this object changed; in rising order, each once
        bool allSongs = false;      ///< or any of them
        bool lists = false;         ///< this object changed something else
        bool byOthers = false;      ///< other programs wrote something

        bool any() const { return !songs.empty() || allSongs || lists || byOthers; }
    };

    /** True if takeChanges() has something of this object's own. Never waits. */
    bool hasStored() const { return connection.hasStored(); }

    /** Takes what was stored since the last call; for one caller. May wait for a transaction that is under way. */
    Changes takeChanges();

private:
    int openStorage (const juce::File&, Storage);
    int createSchema();
    void prepare (SqlConnection&) const;
    ReadConnections::Loan reading();
    int runAll (std::span<const std::string> statements);

    /** Runs statements of which all are stored or none. */
    int runTogether (std::span<const std::string> statements);
    static int readText (SqlConnection&, const std::string& sql, juce::String& text);
    static int count (SqlConnection&, const std::string& sql);

    int readSongFrom (SqlConnection&, bool foreign, int32_t id, SongRecord&, Presence = Presence::looked);
    int readFieldFrom (SqlConnection&, const char* table, SongField, int32_t id, juce::String& text);
    int insertInto (const char* table, const SongRecord&);
    int setField (SongField, int32_t id, const std::string& value);

    int fill (SqlConnection&, SongList*, const std::string& sql, bool linked);
    int fillSorted (SongList*, const std::string& sql, SongField sort, bool ascending);
    int fillLinked (const LinkTable&, SongList*, int32_t id, const std::string& condition, SongField sort,
                    bool ascending);
    int searchLinked (const LinkTable&, SongList*, int32_t id, SearchFields, const juce::String& term,
                      SongField sort, bool ascending);

    int insertRow (const std::string& sql, int32_t* newId);
    int createListIn (const LinkTable&, const char* playlists, const juce::String& name, const SongList*,
                      int32_t sortOrder, int32_t* newId);
    int addList (const LinkTable&, int32_t id, const SongList*);
    int addSongs (const LinkTable&, int32_t id, const SongList&, std::vector<int32_t>* entryIds = nullptr);
    int addFiles (const LinkTable&, int32_t id, const juce::StringArray& paths);
    int replaceEntries (const std::string& deleteOld, const LinkTable&, SongList&);
    int readEntries (const LinkTable&, int32_t id, std::vector<ListContent::Entry>&);
    int writeEntries (const LinkTable&, int32_t id, std::vector<ListContent::Entry>&);
    int writePlaylistRow (ListContent&, bool isThere);
    int insertPlaylistRow (ListContent&, const std::string& id);
    int readLayout (const SongList*, const char* what, juce::String& xml);
    int listSources (SqlConnection&, const char* table, SongListKind, std::vector<SourceItem>&);

    juce::File storedIn;
    SqlConnection connection; ///< writes, and holds the temporary tables
    ReadConnections readers;
    std::atomic<int> patience = SqlConnection::defaultPatience;
};
