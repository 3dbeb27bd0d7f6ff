#pragma once

#include <juce_core/juce_core.h>

#include <optional>

/** The source of automix's tracks: the library, or a list on the command line. Message thread. */
class AutomixSource
{
public:
    virtual ~AutomixSource() = default;

    /** Automix is switched on: a list that was played to its end begins again. */
    virtual void begin() {}

    /** @returns the next track, which then counts as played; File() if there is none now; nothing while that can't be told,
                 because another program is at work in the library. It is asked again later. */
    virtual std::optional<juce::File> nextTrack() = 0;
};
