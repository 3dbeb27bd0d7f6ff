#include "support/Worker.h"

#include "support/AudioThread.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <new>
#include <string>

namespace
{
constexpr int lowestPriority = 19;

void nameThisThread (const char* name, Worker::Priority priority)
{
    pthread_setname_np (pthread_self(), std::string (name).substr (0, 15).c_str());
    // Not SCHED_IDLE: on a busy machine a killed process would wait for its idle threads to be given a CPU to die on, and
    // keep its locks until then.
    if (priority == Worker::Priority::idle)
        setpriority (PRIO_PROCESS, static_cast<id_t> (gettid()), lowestPriority);
}

void report (const Worker::Job& job, const char* reason) noexcept
{
    try
    {
        if (job.failed != nullptr)
            job.failed (reason);
    }
    catch (...)
    {
        // Nobody is left to be told.
    }
}

void carryOut (const Worker::Job& job, const std::stop_token& token) noexcept
{
    try
    {
        job.run (token);
    }
    catch (const std::bad_alloc&)
    {
        report (job, "There is not enough memory.");
    }
    catch (const std::exception& error)
    {
        report (job, error.what());
    }
    catch (...)
    {
        report (job, "It failed for an unknown reason.");
    }
}
}

Worker::Worker (const char* name, Priority priority)
    : thread (
        [this, name, priority] (const std::stop_token& ending)
        {
            nameThisThread (name, priority);
            run (ending);
        })
{
}

Worker::~Worker()
{
    thread.request_stop();
    cancel();
}

void Worker::post (Key key, Job job)
{
    assertMayBlock();
    {
        const std::lock_guard guard (lock);
        const auto like = key == noKey ? waiting.end()
                                       : std::find_if (waiting.begin(), waiting.end(),
                                                       [key] (const Entry& each) { return each.key == key; });
        if (like != waiting.end())
            std::swap (like->job, job); // the old one is destroyed behind the lock
        else
            waiting.push_back ({ key, std::move (job) });
        if (key != noKey && isRunning && runningKey == key)
            runningStop.request_stop();
    }
    wake.notify_one();
}

void Worker::cancel (Key key)
{
    assertMayBlock();
    std::deque<Entry> dropped; // destroyed behind the lock
    {
        const std::lock_guard guard (lock);
        std::erase_if (waiting,
                       [&] (Entry& each)
                       {
                           if (each.key != key)
                               return false;
                           dropped.push_back (std::move (each));
                           return true;
                       });
        if (isRunning && runningKey == key)
            runningStop.request_stop();
    }
    jobEnded.notify_all();
}

void Worker::cancel()
{
    assertMayBlock();
    std::deque<Entry> dropped;
    {
        const std::lock_guard guard (lock);
        dropped.swap (waiting);
        if (isRunning)
            runningStop.request_stop();
    }
    jobEnded.notify_all();
}

bool Worker::isBusyLocked (Key key) const
{
    return (isRunning && runningKey == key)
           || std::any_of (waiting.begin(), waiting.end(),
                           [key] (const Entry& each) { return each.key == key; });
}

bool Worker::isBusy() const
{
    const std::lock_guard guard (lock);
    return isRunning || !waiting.empty();
}

bool Worker::isBusy (Key key) const
{
    const std::lock_guard guard (lock);
    return isBusyLocked (key);
}

void Worker::wait() const
{
    assertMayBlock();
    std::unique_lock guard (lock);
    jobEnded.wait (guard, [this] { return !isRunning && waiting.empty(); });
}

void Worker::wait (Key key) const
{
    assertMayBlock();
    std::unique_lock guard (lock);
    jobEnded.wait (guard, [this, key] { return !isBusyLocked (key); });
}

void Worker::run (const std::stop_token& ending)
{
    for (;;)
    {
        Entry next;
        std::stop_token token;
        {
            std::unique_lock guard (lock);
            if (!wake.wait (guard, ending, [this] { return !waiting.empty(); }) || ending.stop_requested())
                return;
            next = std::move (waiting.front());
            waiting.pop_front();
            isRunning = true;
            runningKey = next.key;
            runningStop = {};
            token = runningStop.get_token();
        }
        carryOut (next.job, token);
        next.job = {}; // what it holds is gone before anybody hears that it has ended
        {
            const std::lock_guard guard (lock);
            isRunning = false;
        }
        jobEnded.notify_all();
    }
}
