#pragma once

#include "library/query/SongQuery.h"
#include "library/songs/SongList.h"
#include "library/songs/SongRecord.h"
#include "session/browse/LibraryChange.h"
#include "session/browse/MessageCalls.h"
#include "session/browse/rows/SpecialRows.h"
#include "support/Worker.h"

#include <functional>
#include <memory>
#include <unordered_map>

class LibraryRoom;

/** The rows of one table: the ids of a source in order, and the fields of those rows that are looked at.

    Nothing here waits: a query is answered on a worker and broken off by the next one, fields are read ahead on another,
    and files are looked for on a third, as a drive that sleeps answers after seconds. The old rows stay until the new ones
    are there. When the library changes, the rows on screen are read again at once, and the same query is asked again by
    itself; one that is under way is answered first, so that an import, which changes the library all the time, keeps no rows
    away. Message thread. */
class RowSource : private LibraryListener, private juce::Timer
{
public:
    enum class Presence : uint8_t
    {
        unknown,
        present,
        missing
    };

    explicit RowSource (LibraryRoom&);
    ~RowSource() override;

    /** New rows are in place; or, with a code other than 0, the old ones stayed. */
    std::function<void (int code)> onOpened = [] (int) {};

    /** Fields of rows from `first` to `last` - 1 are known now, or their files came or went. */
    std::function<void (int first, int last)> onRows = [] (int, int) {};

    /** Asks for other rows; an older question is broken off. */
    void open (const SongQuery&);

    /** Asks the same again. */
    void reopen();
    bool isOpening() const noexcept { return asked != answered; }

    /** Counts the changes of the rows in place. */
    uint64_t generation = 0;

    /** The last question; its answer may be on its way. */
    const SongQuery& query() const noexcept { return current; }

    /** The rows in place: ids, entry ids, totals. */
    const SongList& list() const noexcept { return *rows; }
    int size() const noexcept { return rows->size(); }

    /** A row's fields, or null while they are not read; see want(). Holds until the message thread's next event. */
    const SongRecord* row (int index) const;

    /** The time and the deck of a row of a history; null in other sources. */
    const PlayedSong* playedSong (int index) const;

    /** A row's file, looked for when the fields were read and by lookForFiles(). */
    Presence presence (int index) const;

    /** Says which rows are on screen, `first` to `last` - 1: they are read if need be, and some ahead of the scrolling. */
    void want (int first, int last);

    /** Looks again for the files of the rows on screen, unless such a look is under way, as on a drive that sleeps. */
    void lookForFiles();

    /** The first row with this song, or -1. */
    int indexOfSong (int32_t songId) const;

    /** Looks for the next row whose field begins with a text, in any case and without regard to accents, from a row on and
        around the end. @param answer   a row or -1; dropped if rows change before */
    void findFirst (SongField, const juce::String& prefix, int from, std::function<void (int row)> answer);

    /** Waits for all that was asked, and delivers it. For programs without a message loop. */
    void settle();

    /** The same without waiting for the look at the rows' files. */
    void settleRows();

private:
    struct Cached
    {
        std::shared_ptr<const SongRecord> record;
        Presence presence = Presence::unknown;
        bool isStale = false;
        uint64_t used = 0;
    };

    struct Answer
    {
        SongList list;
        int code = 0;
        SpecialRows::Played played {}; ///< of a history
    };

    void libraryChanged (const LibraryChange&) override;
    void timerCallback() override;
    void askAgain();
    void take (uint64_t question, Answer);
    void takeRecords (const std::vector<std::shared_ptr<const SongRecord>>&);
    void takePresence (const std::vector<std::pair<int32_t, bool>>&);
    void lookForFiles (std::vector<std::pair<int32_t, juce::String>>);
    void tellRows (const std::vector<int32_t>& songIds);
    void dropUnused();
    const Cached* cachedOf (int index) const;

    LibraryRoom& room;
    SongQuery current;
    std::shared_ptr<const SongList> rows = std::make_shared<SongList>();
    std::vector<PlayedSong> played;
    uint64_t asked = 0, answered = 0; ///< questions are counted
    bool asksAgain = false;           ///< the library has changed since the last question
    juce::uint32 askedAtMs = 0, answeredAtMs = 0;
    bool isForeignCached = false;
    mutable uint64_t useCount = 0;
    int wantedFirst = 0, wantedLast = 0;
    mutable std::unordered_map<int32_t, Cached> cache; ///< by song
    MessageCalls calls;
    Worker files { "libraryFiles" };
    Worker reader { "libraryRows" };
    Worker opener { "libraryQuery" }; ///< last, with those above: their jobs use the rest
};
