#include "session/browse/JobTask.h"

namespace
{
constexpr juce::uint32 estimateAfterMs = 1000;
}

LibraryJobs::Task::Task (int jobId, const juce::String& title, Counter c)
    : id (jobId),
      changes (std::move (c))
{
    current.id = jobId;
    current.title = title;
}

LibraryJob LibraryJobs::Task::job() const
{
    const std::scoped_lock scope (lock);
    auto job = current;
    const auto took = juce::Time::getMillisecondCounter() - began;
    if (job.state == LibraryJob::State::running && took >= estimateAfterMs && job.part > 0.001)
        job.secondsLeft = juce::roundToInt (0.001 * took * (1.0 - job.part) / job.part);
    return job;
}

void LibraryJobs::Task::change (const std::function<void (LibraryJob&)>& set)
{
    {
        const std::scoped_lock scope (lock);
        set (current);
    }
    ++*changes;
}

void LibraryJobs::Task::begin()
{
    change (
        [this] (LibraryJob& job)
        {
            job.state = LibraryJob::State::running;
            began = juce::Time::getMillisecondCounter();
        });
}

void LibraryJobs::Task::end (const juce::String& summary, const juce::String& sentence)
{
    change (
        [&] (LibraryJob& job)
        {
            job.state = sentence.isNotEmpty() ? LibraryJob::State::failed
                        : isCancelled         ? LibraryJob::State::cancelled
                                              : LibraryJob::State::ended;
            job.summary = (summary + " " + sentence).trim();
            job.item.clear();
            if (job.state == LibraryJob::State::ended)
                job.part = 1.0;
        });
}

void LibraryJobs::Task::setProgress (double part)
{
    change ([part] (LibraryJob& job) { job.part = juce::jlimit (0.0, 1.0, part); });
}

void LibraryJobs::Task::setStatusText (const juce::String& item)
{
    change (
        [&item] (LibraryJob& job)
        {
            job.item = item;
            if (job.total == 0)
                ++job.done;
        });
}

void LibraryJobs::Task::setCount (int done, int total)
{
    change (
        [done, total] (LibraryJob& job)
        {
            job.done = done;
            job.total = total;
            job.part = total > 0 ? static_cast<double> (done) / total : 0.0;
        });
}

void LibraryJobs::Task::addFailure (const juce::String& failure)
{
    change ([&] (LibraryJob& job) { job.failures.add (failure); });
}

void LibraryJobs::Task::cancel()
{
    isCancelled = true;
    change (
        [] (LibraryJob& job)
        {
            if (job.state == LibraryJob::State::waiting)
                job.state = LibraryJob::State::cancelled;
        });
}
