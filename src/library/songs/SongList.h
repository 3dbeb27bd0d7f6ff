#pragma once

#include "library/songs/SongListEntry.h"
#include "library/songs/SongListKind.h"

#include <juce_core/juce_core.h>

#include <span>
#include <vector>

/** The rows of one source, as a view shows them, with running totals. The entries lie in one block of memory, so a list of
    a million songs is one allocation; an address of an entry holds until the list changes.
    Not locked; each thread uses its own. */
class SongList
{
public:
    SongList() = default;
    explicit SongList (SongListKind listKind, int32_t id = -1) : kind (listKind), playlistId (id) {}

    SongListKind kind = SongListKind::none;

    /** The id of the playlist, smart playlist or foreign playlist; -1 for other kinds. */
    int32_t playlistId = -1;

    juce::String name, filterValue;

    /** True while the list is sorted away from its stored order. */
    bool sorted = false;

    int size() const { return static_cast<int> (rows.size()); }
    bool isEmpty() const { return rows.empty(); }
    const SongListEntry& operator[] (int index) const { return rows[static_cast<size_t> (index)]; }
    std::span<const SongListEntry> entries() const { return rows; }

    /** The numbers of all songs, in the list's order. */
    std::vector<int32_t> songIds() const;

    /** Seconds. */
    uint32_t totalDuration() const { return seconds; }

    /** Bytes. */
    double totalSize() const { return bytes; }

    void add (const SongListEntry&);

    /** Puts an entry in front of the one at `index`, which is clipped to the list. */
    void insert (int index, const SongListEntry&);

    /** Takes one entry out; an index outside the list does nothing. */
    void remove (int index);

    /** Takes an entry out and puts it back so that it ends up at `to`. Indexes outside the list do nothing. */
    void move (int from, int to);

    /** Empties the list; what it shows stays named. */
    void clear();

    /** Tells every entry its database. */
    void setDatabase (SongDatabase*);

    /** Gives the entries new numbers, in the list's order; another count of numbers does nothing. */
    void setEntryIds (std::span<const int32_t>);

private:
    std::vector<SongListEntry> rows;
    uint32_t seconds = 0;
    double bytes = 0.0;
};
