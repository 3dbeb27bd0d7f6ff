#pragma once

#include "session/browse/LibraryJobs.h"

#include "library/import/ImportProgress.h"

#include <atomic>
#include <memory>
#include <mutex>

/** A job of LibraryJobs while it goes: what its thread says of it, and what views ask. Outlives both. */
class LibraryJobs::Task : public ImportProgress
{
public:
    using Counter = std::shared_ptr<std::atomic<uint64_t>>;

    Task (int jobId, const juce::String& title, Counter);

    LibraryJob job() const;
    const int id;

    /** @name The job's own thread */
    void begin();

    /** @param sentence   a fault that ended it, or nothing */
    void end (const juce::String& summary, const juce::String& sentence = {});
    void setProgress (double part) override;
    void setStatusText (const juce::String& item) override;
    void setCount (int done, int total);
    /** @param failure   "PATH: sentence" */
    void addFailure (const juce::String& failure);
    bool shouldExit() const override { return isCancelled; }

    /** @name Any thread */
    void cancel();

private:
    void change (const std::function<void (LibraryJob&)>&);

    const Counter changes;
    mutable std::mutex lock; ///< of the job
    LibraryJob current;
    juce::uint32 began = 0;
    std::atomic<bool> isCancelled { false };
};
