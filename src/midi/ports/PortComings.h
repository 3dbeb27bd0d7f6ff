#pragma once

#include <juce_core/juce_core.h>

#include <map>
#include <mutex>

/** Counts the comings of each port. A port that went and came between two looks has the same name or number as before, but
    nobody is connected with it any more: its count tells. Any thread that may block. */
class PortComings
{
public:
    void add (const juce::String& port)
    {
        const std::scoped_lock sl (lock);
        ++counts[port];
    }

    int of (const juce::String& port) const
    {
        const std::scoped_lock sl (lock);
        const auto found = counts.find (port);
        return found != counts.end() ? found->second : 0;
    }

private:
    mutable std::mutex lock;
    std::map<juce::String, int> counts;
};
