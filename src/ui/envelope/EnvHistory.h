#pragma once

#include "instruments/envelope/Envelope.h"

#include <deque>
#include <vector>

/** The last edits of a set of envelopes, to be taken back and done again. An edit may change several at once. */
class EnvHistory
{
public:
    static constexpr size_t capacity = 200;

    struct Change
    {
        int lane = 0;
        Envelope before, after;
    };
    using Edit = std::vector<Change>;

    /** Takes up an edit that has been made. It ends what could have been done again. */
    void record (Edit);

    /** The edit that is taken back, or done again; null if there is none. Valid until the next call. */
    const Edit* undo();
    const Edit* redo();

    bool canUndo() const noexcept { return done > 0; }
    bool canRedo() const noexcept { return done < edits.size(); }
    void forget();

private:
    std::deque<Edit> edits;
    size_t done = 0; ///< edits that stand
};
