#pragma once

#include "library/database/SongDatabase.h"
#include "library/query/QueryTerms.h"
#include "library/query/SongQuery.h"
#include "library/query/TextColumn.h"

#include <array>
#include <condition_variable>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <stop_token>

/** All songs in memory, as far as searches and orders need them: a search over a million songs reads no file. About 20 MB
    for 100,000 songs.

    Any number of threads may ask while none of them is the message thread: one that brings the index up to date reads the file
    beside them, and keeps them waiting for less than a millisecond. Gives the codes of SongDatabase; a stopped token gives LibraryCode::interrupted. */
class SongIndex
{
public:
    /** The fields that the index holds as texts; others are asked of the database. */
    static constexpr std::array textFields { SongField::artist,   SongField::album,   SongField::title,
                                             SongField::genre,    SongField::comment, SongField::grouping,
                                             SongField::filename, SongField::key,     SongField::format,
                                             SongField::year };

    enum class Songs
    {
        library,
        foreign
    };

    /** Reads all songs. Those who ask go on with what was there. */
    int build (SongDatabase&, Songs = Songs::library);
    bool isBuilt() const;

    /** @returns false if the token was stopped, or building failed, before there was an index */
    bool waitUntilBuilt (const std::stop_token&) const;

    /** Reads songs again that came, went or were edited.
        @returns false if that is too much, and build() is due */
    bool update (SongDatabase&, const std::vector<int32_t>& songIds);

    /** Fills a list with all songs of the library or, with a filter, with those that it leaves. */
    int fill (SongDatabase&, const SongQuery&, SongList&, const std::stop_token& = {}) const;

    /** Takes out of a list of songs of the library those that the query's filter does not leave. The order stays. */
    int filter (SongDatabase&, const SongQuery&, SongList&, const std::stop_token& = {}) const;

    /** The next row of a list of songs of the library whose field begins with a text, from a row on and around the end; -1 if
        there is none, or for a field without texts. */
    int findFirst (const SongList&, SongField, const juce::String& prefix, int from) const;

    int size() const;
    size_t bytesUsed() const;

private:
    struct Column
    {
        TextColumn texts;
        std::vector<uint32_t> values;        ///< of each song
        mutable std::vector<uint32_t> ranks; ///< of each text, up to those that were there at the last sort
    };

    /** A song as the file has it. */
    struct Song
    {
        int32_t id = -1;
        uint32_t duration = 0, size = 0;
        double bpm = 0.0;
        int16_t year = 0;
        uint8_t rating = 0, confidence = 0;
        std::array<std::string, textFields.size()> texts;

        void read (const SqlRow&);
    };

    struct Table
    {
        std::vector<int32_t> ids; ///< rising
        std::vector<uint32_t> durations, sizes;
        std::vector<double> bpm;
        std::vector<int16_t> year;
        std::vector<uint8_t> rating, confidence; ///< the latter in the grid; 0 where nobody knows it
        std::vector<uint8_t> there;              ///< 0 for a song that was deleted
        std::array<Column, textFields.size()> columns;
        uint32_t deleted = 0;

        /** Of numbers, and of each song. */
        mutable std::map<SongField, std::vector<uint32_t>> ranks;

        /** Of each song, of fields that the file alone has, from the first sort by one on. */
        mutable std::map<SongField, std::vector<double>> stored;

        int positionOf (int32_t id) const;
        void put (const Song&, size_t position);
        void append (const Song&);
    };

    /** Numbers of some songs, by their ids, of each field in Table::stored. */
    using StoredNumbers = std::map<SongField, std::vector<std::pair<int32_t, double>>>;

    /** 1 for each song that is left; empty for all. */
    using Mask = std::vector<uint8_t>;

    int maskOf (SongDatabase&, const SongQuery&, const std::stop_token&, Mask&) const;
    int keepWord (SongDatabase&, const QueryTerms::Word&, std::span<const SongField>, Mask&) const;
    void keepRange (const QueryTerms::Range&, Mask&) const;
    void keepChoice (const QueryTerms::Choice&, Mask&) const;
    void keepTempo (double bpm, double percent, Mask&) const;
    void keepHits (const Column&, const std::vector<uint8_t>& hits, Mask& found) const;
    const Column* columnOf (SongField) const;
    int sortPositions (SongDatabase&, SongField, bool ascending, std::vector<uint32_t>&) const;
    int readStored (SongDatabase&, SongField, std::vector<double>&) const;
    int readStoredOf (SongDatabase&, const std::vector<int32_t>& songIds, StoredNumbers&) const;
    int rankNumbers (SongDatabase&, SongField, std::vector<uint32_t>&) const;
    SongListEntry entryOf (SongDatabase&, uint32_t position) const;

    mutable std::shared_mutex lock; ///< of the songs
    mutable std::condition_variable_any builtOrFailed;
    mutable std::mutex rankLock; ///< of all ranks; behind the one above
    bool built = false, failed = false;
    Table songs;
};
