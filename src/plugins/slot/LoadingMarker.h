#pragma once

#include <juce_core/juce_core.h>

#include <array>
#include <functional>

/** The names of plug-ins that have just come into the program, in a file for as long as they are new: a program that dies
    meanwhile leaves it behind, and the next start knows which ones to blame. Message thread. */
class LoadingMarker
{
public:
    static constexpr int slots = 4;

    /** @param file       none without a name: nothing is written
        @param mayWrite   false while another program has the folder, be it one that is still dying: the file stays as it is */
    LoadingMarker (juce::File file, std::function<bool()> mayWrite);

    /** The plug-ins that were new when the program died, by slot; empty for none. The file forgets them, or the next set()
        has it do so. */
    std::array<juce::String, slots> takeBlamed();

    /** Notes before a plug-in is loaded that it is new. @param name   empty: it has proved itself, or is gone */
    void set (int slot, const juce::String& name);

private:
    const juce::File file;
    const std::function<bool()> mayWrite;
    std::array<juce::String, slots> names;
};
