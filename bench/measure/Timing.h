#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <vector>

/** Time as the benchmarks take it: a steady clock, every measurement kept, nothing subtracted. */
namespace Timing
{
inline int64_t nanoseconds() noexcept
{
    return std::chrono::duration_cast<std::chrono::nanoseconds> (
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/** Processor time in nanoseconds: of the calling thread, or of all others of the process together. Where the machine has
    other work too, a ratio of processor times says more than one of clock times. */
enum class Threads
{
    own,
    others
};

inline int64_t processorNanoseconds (Threads which) noexcept
{
    const auto used = [] (int who)
    {
        rusage usage {};
        getrusage (who, &usage);
        const auto of = [] (const timeval& time)
        { return (time.tv_sec * int64_t { 1'000'000 } + time.tv_usec) * 1000; };
        return of (usage.ru_utime) + of (usage.ru_stime);
    };
    const auto own = used (RUSAGE_THREAD);
    return which == Threads::own ? own : used (RUSAGE_SELF) - own;
}

/** Measurements in nanoseconds. */
class Durations
{
public:
    explicit Durations (size_t expected = 0) { all.reserve (expected); }

    void add (int64_t duration) { all.push_back (duration); }
    size_t count() const { return all.size(); }

    double mean() const
    {
        double sum = 0.0;
        for (const auto each : all)
            sum += static_cast<double> (each);
        return all.empty() ? 0.0 : sum / static_cast<double> (all.size());
    }

    /** The least mean of `length` measurements in a row, before any quantile(): what the work takes where the machine
        had a quiet moment. */
    double leastMean (size_t length) const
    {
        double sum = 0.0, least = 0.0;
        for (size_t i = 0; i < all.size(); ++i)
        {
            sum += static_cast<double> (all[i]);
            if (i < length)
                least = sum;
            else if (sum -= static_cast<double> (all[i - length]); sum < least)
                least = sum;
        }
        return all.empty() ? 0.0 : least / static_cast<double> (std::min (length, all.size()));
    }

    /** The least value that `part` of the measurements (0 to 1) do not exceed; 0.5 is the median, 1 the maximum. */
    double quantile (double part)
    {
        if (all.empty())
            return 0.0;
        std::sort (all.begin(), all.end());
        const auto rank = static_cast<size_t> (part * static_cast<double> (all.size()));
        return static_cast<double> (all[std::min (rank, all.size() - 1)]);
    }

    size_t countAbove (int64_t limit) const
    {
        return static_cast<size_t> (
            std::count_if (all.begin(), all.end(), [=] (auto each) { return each > limit; }));
    }

private:
    std::vector<int64_t> all;
};
}
