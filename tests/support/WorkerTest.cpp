#include "support/Worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <memory>
#include <new>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{
/** A job that tells when it has begun, and ends when it is let go or stopped. */
struct Gate
{
    Worker::Job job()
    {
        return { [this] (const std::stop_token& stop)
                 {
                     std::stop_callback onStop (stop, [this] { end.release(); });
                     begun.count_down();
                     end.acquire();
                     wasStopped = stop.stop_requested();
                 } };
    }

    std::latch begun { 1 };
    std::binary_semaphore end { 0 };
    std::atomic<bool> wasStopped { false };
};

Worker::Job add (std::string& log, char letter)
{
    return { [&log, letter] (const std::stop_token&) { log += letter; } };
}
}

TEST (Worker, JobsRunInOrderAndTheNewestOfAKeyTakesThePlaceOfItsLike)
{
    std::string log;
    Gate gate;
    Worker worker ("test");
    worker.post (gate.job());
    gate.begun.wait();
    worker.post (1, add (log, 'a'));
    worker.post (2, add (log, 'b'));
    worker.post (add (log, 'c'));
    worker.post (add (log, 'd'));
    worker.post (1, add (log, 'A'));
    worker.post (3, add (log, 'x'));
    worker.cancel (3);
    EXPECT_TRUE (worker.isBusy (1));
    EXPECT_FALSE (worker.isBusy (3));
    worker.wait (3);
    gate.end.release();
    worker.wait (2);
    worker.wait();
    EXPECT_EQ (log, "Abcd");
    EXPECT_FALSE (worker.isBusy());
    EXPECT_FALSE (gate.wasStopped);
}

TEST (Worker, ARunningJobStopsForItsLikeForCancelAndForTheEnd)
{
    for (const auto* how : { "like", "key", "all", "end" })
    {
        std::string log;
        Gate gate;
        {
            Worker worker ("test");
            worker.post (7, gate.job());
            gate.begun.wait();
            worker.post (add (log, 'l'));
            if (how == std::string ("like"))
                worker.post (7, add (log, 'n'));
            else if (how == std::string ("key"))
                worker.cancel (7);
            else if (how == std::string ("all"))
                worker.cancel();
            if (how != std::string ("end"))
                worker.wait();
        }
        EXPECT_TRUE (gate.wasStopped) << how;
        EXPECT_EQ (log, how == std::string ("like") ? "ln" : (how == std::string ("key") ? "l" : "")) << how;
    }
}

TEST (Worker, AJobThatThrowsEndsWithASentenceAndTheNextOneRuns)
{
    std::string log;
    Worker worker ("test");
    const auto failed = [&log] (const char* reason) { log += std::string (reason) + '|'; };
    worker.post ({ [] (const std::stop_token&) { throw std::bad_alloc(); }, failed });
    worker.post ({ [] (const std::stop_token&) { throw std::runtime_error ("That went wrong."); }, failed });
    worker.post ({ [] (const std::stop_token&) { throw 5; }, failed });
    worker.post ({ [] (const std::stop_token&) { throw 6; } });
    worker.post ({ [] (const std::stop_token&) { throw 7; }, [] (const char*) { throw 8; } });
    worker.post (add (log, 'n'));
    worker.wait();
    EXPECT_EQ (log, "There is not enough memory.|That went wrong.|It failed for an unknown reason.|n");
}

TEST (Worker, WhatAJobHoldsIsGoneWhenItHasEnded)
{
    Worker worker ("test");
    auto held = std::make_shared<int>();
    worker.post ({ [held] (const std::stop_token&) {} });
    worker.wait();
    EXPECT_EQ (held.use_count(), 1);
}

TEST (Worker, ManyPostersLoseNoJobAndAJobMayPost)
{
    constexpr int posters = 4, each = 5000;
    std::atomic<int> done { 0 };
    Worker worker ("test");
    {
        std::vector<std::jthread> threads;
        for (int p = 0; p < posters; ++p)
            threads.emplace_back (
                [&]
                {
                    for (int i = 0; i < each; ++i)
                        worker.post ({ [&] (const std::stop_token&) { ++done; } });
                });
    }
    worker.post (
        { [&] (const std::stop_token&) { worker.post ({ [&] (const std::stop_token&) { ++done; } }); } });
    worker.wait();
    EXPECT_EQ (done, posters * each + 1);
}
