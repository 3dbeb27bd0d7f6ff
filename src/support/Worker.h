#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

/** A thread that carries out jobs in the order in which they were posted.

    A job may have a key. Of two waiting jobs with one key the newer takes the older's place in the line, and a running
    job whose like is posted is asked to stop: the newest request wins, and whoever posts never waits. A job that throws
    ends with its `failed`, and the worker goes on. The owner of what jobs use owns the worker too, as its last member,
    for the destructor joins the thread. A worker without jobs sleeps without waking up. */
class Worker
{
public:
    using Key = int;
    static constexpr Key noKey = -1;

    enum class Priority
    {
        normal,
        idle ///< runs with the processor time that nobody else wants
    };

    /** Work for the thread. A function that is replaced or cancelled before it runs is just dropped. */
    struct Job
    {
        /** Does the work; a long one looks at the token now and then and returns once it is stopped. */
        std::function<void (const std::stop_token&)> run;

        /** Called on the thread, with one sentence, if `run` threw: memory that could not be had, as a rule. */
        std::function<void (const char* reason)> failed {};
    };

    /** @param name   shown by debuggers; 15 characters at most count */
    explicit Worker (const char* name, Priority = Priority::normal);

    /** Drops the jobs that wait, asks the running one to stop, and joins the thread. */
    ~Worker();
    Worker (const Worker&) = delete;
    Worker& operator= (const Worker&) = delete;

    /** Appends a job. Any thread that may block, also the worker's own. */
    void post (Job job) { post (noKey, std::move (job)); }

    /** Appends a job in place of its like.
        @param key   of the job's kind, not below 0 */
    void post (Key, Job);

    /** Drops the waiting jobs of a key and asks a running one to stop. Does not wait for it. */
    void cancel (Key);

    /** Cancels all jobs. */
    void cancel();

    /** True while a job waits or runs. Any thread that may block. */
    bool isBusy() const;
    bool isBusy (Key) const;

    /** Waits until no job waits or runs. Not on the worker's own thread. */
    void wait() const;
    void wait (Key) const;

private:
    struct Entry
    {
        Key key = noKey;
        Job job;
    };

    void run (const std::stop_token&);
    bool isBusyLocked (Key) const;

    mutable std::mutex lock;
    std::condition_variable_any wake;         ///< for the thread: a job has come
    mutable std::condition_variable jobEnded; ///< for those who wait
    std::deque<Entry> waiting;
    bool isRunning = false;
    Key runningKey = noKey;
    std::stop_source runningStop;
    std::jthread thread; ///< last: it uses all of the above
};
