#include "app/audio/RealTimePriority.h"

#include <gtest/gtest.h>

#include <future>
#include <sched.h>
#include <signal.h>
#include <thread>
#include <unistd.h>

TEST (RealTimePriority, SaysWhatTheKernelGranted)
{
    std::promise<pid_t> started;
    std::promise<void> done;
    std::thread thread (
        [&]
        {
            started.set_value (::gettid());
            done.get_future().wait();
        });
    const auto id = started.get_future().get();
    EXPECT_EQ (RealTimePriority::describe (id), "ordinary");

    const auto isGranted = RealTimePriority::request (id, 5);
    EXPECT_EQ (isGranted, (::sched_getscheduler (id) & ~SCHED_RESET_ON_FORK) == SCHED_FIFO);
    EXPECT_EQ (RealTimePriority::describe (id), isGranted ? "real time, priority 5" : "ordinary");
    EXPECT_EQ (::sched_getscheduler (::gettid()), SCHED_OTHER) << "of the asking thread";

    done.set_value();
    thread.join();
    // A thread can be joined a little before the kernel has done away with it, and has its priority until then.
    while (::tgkill (::getpid(), id, 0) == 0)
        std::this_thread::yield();
    EXPECT_FALSE (RealTimePriority::request (id, 5)) << "of a thread that is gone";
    EXPECT_EQ (RealTimePriority::describe (id), "ordinary");
}
