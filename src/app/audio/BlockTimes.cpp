#include "app/audio/BlockTimes.h"

#include <algorithm>
#include <chrono>

int64_t BlockTimes::now() noexcept
{
    return std::chrono::duration_cast<std::chrono::nanoseconds> (
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void BlockTimes::add (int64_t waited, int64_t took, int64_t length) noexcept
{
    blocks += 1;
    if (length > 0 && took > length)
        late += 1;
    longest = std::max (longest.get(), took);
    longestWait = std::max (longestWait.get(), waited);
}

juce::String BlockTimes::line() const
{
    const auto milliseconds = [] (int64_t time)
    { return juce::String (static_cast<double> (time) / 1e6, 3) + " ms"; };
    return juce::String (blocks.get()) + " blocks, " + juce::String (late.get()) + " late, longest "
           + milliseconds (longest) + ", longest wait for the lock " + milliseconds (longestWait);
}
