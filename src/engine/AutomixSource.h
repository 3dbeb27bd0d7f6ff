#pragma once

#include <juce_core/juce_core.h>

/** Where automix gets its tracks from: the library, or a list on the command line. Message thread. */
class AutomixSource
{
public:
    virtual ~AutomixSource() = default;

    /** @returns the next track, which then counts as played; File() if there is none now. It is asked again later. */
    virtual juce::File nextTrack() = 0;
};
