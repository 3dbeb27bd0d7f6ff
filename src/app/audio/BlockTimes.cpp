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
    {
        auto& block = lateBlocks[late % keptLate];
        block.end = now();
        block.took = took;
        late += 1;
    }
    longest = std::max (longest.get(), took);
    longestWait = std::max (longestWait.get(), waited);
}

namespace
{
juce::String milliseconds (int64_t time)
{
    return juce::String (static_cast<double> (time) / 1e6, 3) + " ms";
}
}

juce::String BlockTimes::lateLine() const
{
    const uint32_t count = late;
    juce::StringArray each;
    for (auto n = count - std::min<uint32_t> (count, keptLate); n < count; ++n)
    {
        const auto& block = lateBlocks[n % keptLate];
        each.add (juce::String (static_cast<double> (block.end) / 1e9, 4) + " s "
                  + milliseconds (block.took));
    }
    return each.isEmpty() ? juce::String() : "Late: " + each.joinIntoString (", ") + ".";
}

juce::String BlockTimes::line() const
{
    return juce::String (blocks.get()) + " blocks, " + juce::String (late.get()) + " late, longest "
           + milliseconds (longest) + ", longest wait for the lock " + milliseconds (longestWait);
}
