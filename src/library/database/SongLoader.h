#pragma once

#include "library/songs/SongList.h"
#include "support/Worker.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>

/** Fills lists on a thread of its own, so that a search can follow each letter that is typed: a newer request ends the one
    that is under way, and an older answer is never shown. */
class SongLoader
{
public:
    /** An operation of SongDatabase that fills a list. @returns its code */
    using Fill = std::function<int (SongList&)>;

    struct Result
    {
        SongList list;
        int code = 0;
    };

    /** Asks for a list in place of the one that was asked for before. Never waits.
        @param list   its kind and its name stay
        @param fill   runs on the loader's thread; its statements end when a newer request comes */
    void request (SongList list, Fill fill);

    /** Gives up the last request. */
    void cancel();

    /** The answer to the last request, once; nothing while there is none. Never waits: a view asks at each tick. */
    std::optional<Result> take();

    /** Waits for the answer to the last request. */
    void wait() const { worker.wait(); }

private:
    std::mutex lock;
    uint64_t generation = 0;
    std::optional<Result> result;
    Worker worker { "library" }; ///< last: its job uses all of the above
};
