#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

/** The right to run the code of one script, which one thread has at a time.

    The library's strings and arrays break when two threads change one of them, so the threads of a script take turns. Whoever
    runs script code offers the turn between any two lines: callbacks mix line by line, as if they ran at once. To keep
    threads from waking each other up at every line, the turn is theirs for `slice` once they have it. They get it in the
    order in which they asked. Any thread that may block. */
class ScriptTurn
{
public:
    /** The time for which a turn is not handed over, as a line takes some 30 ns and a change of threads 5 us. */
    static constexpr std::chrono::microseconds slice { 50 };

    /** Holds the turn for a scope. */
    class Holder
    {
    public:
        explicit Holder (ScriptTurn& t) : turn (t) { turn.take(); }
        ~Holder() { turn.give(); }
        Holder (const Holder&) = delete;
        Holder& operator= (const Holder&) = delete;

    private:
        ScriptTurn& turn;
    };

    /** Leaves the turn to others for a scope, while its holder does what may block. */
    class Pause
    {
    public:
        explicit Pause (ScriptTurn& t) : turn (t) { turn.give(); }
        ~Pause() { turn.take(); }
        Pause (const Pause&) = delete;
        Pause& operator= (const Pause&) = delete;

    private:
        ScriptTurn& turn;
    };

    void take();
    void give();

    /** Lets those who wait have the turn, and returns with it. Its holder only. */
    void offer()
    {
        if (waiting.load (std::memory_order_relaxed) > 0 && Clock::now() - since >= slice)
            handOver();
    }

private:
    using Clock = std::chrono::steady_clock;

    void handOver();
    void waitFor (uint64_t ticket, std::unique_lock<std::mutex>&);

    std::mutex lock;
    std::condition_variable served;
    uint64_t nextTicket = 0; ///< of whoever asks next
    uint64_t serving = 0;    ///< the ticket that has the turn, or will
    std::atomic<int> waiting { 0 };
    Clock::time_point since; ///< the moment at which the holder got the turn
};
