#pragma once

#include "library/songs/SongRecord.h"

#include <functional>
#include <span>
#include <vector>

/** Songs on their way into the library. Tags and files are looked at while nothing is locked, and the songs stored in portions,
    each a transaction of some milliseconds: other tasks and programs read and write in between, and what is stored stays,
    whatever comes later. Any thread but the audio thread, one at a time. */
class SongBatch
{
public:
    /** Says in one sentence why no deck could load a file, or nothing. It may decode a little. */
    using Judge = std::function<juce::String (const juce::File&)>;

    /** @param j   is asked of new files that tell no length, and of very small ones; without it all files are taken */
    explicit SongBatch (SongDatabase& d, Judge j = {}) : database (d), judge (std::move (j)) {}

    /** Takes a file in, with what its tags tell, unless the library knows its path.
        @returns false once the library can't store any more; see code() */
    bool take (const juce::String& path);

    /** Takes a song in whose tags are read already, and whose path is new. @returns as take() */
    bool add (SongRecord);

    /** The files that were not taken because no deck could load them, each with the reason: "PATH: sentence". */
    const juce::StringArray& unplayable() const { return notPlayable; }

    /** Stores what was taken in last. Belongs at the end. @returns as take() */
    bool store();

    /** Songs that are stored, and that are not for a fault. Those that wait are in neither. */
    int added() const { return stored; }
    int refused() const { return notStored; }

    /** The code of LibraryCode, or SQLite's, of what ended the storing; 0 while it goes on. */
    int code() const { return failure; }

private:
    juce::String faultOf (const juce::String& path, const SongRecord&) const;
    std::span<const SongRecord> storeSome (std::span<const SongRecord>, int& done);

    SongDatabase& database;
    const Judge judge;
    std::vector<SongRecord> waiting;
    juce::StringArray notPlayable;
    size_t portion = 1; ///< small at first: a library that can't be written to shows at once
    int stored = 0, notStored = 0;
    int failure = 0;
};
