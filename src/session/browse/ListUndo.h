#pragma once

#include "library/database/SongDatabase.h"

#include <deque>
#include <mutex>

/** Edits lists and remembers how they were, for the last 32 edits. Each operation is one transaction. Any thread that may
    block; text() never waits for the file. */
class ListUndo
{
public:
    static constexpr size_t most = 32;

    /** Changes a list's content. @returns a code; any but 0 leaves the list as it was */
    using Change = std::function<int (ListContent&)>;

    /** Reads a list, lets it be changed, and stores it.
        @param text     names the edit for the user
        @param result   the list as it is stored then; may be null */
    int edit (SongDatabase&, ListRef, const juce::String& text, const Change&, ListContent* result = nullptr);

    /** Puts the list of the last edit back. What others did to it since is kept.
        @returns 0 too if there is nothing to take back */
    int undo (SongDatabase&);

    /** Nothing if there is no edit. */
    juce::String text() const;

    /** Forgets all edits. */
    void clear();

private:
    struct Step
    {
        juce::String text;
        ListContent before, after;
    };

    mutable std::mutex lock;
    std::deque<Step> steps; ///< the newest last
};
