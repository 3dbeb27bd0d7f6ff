#pragma once

#include "library/tags/CoverArtCache.h"
#include "session/browse/MessageCalls.h"
#include "support/Worker.h"

#include <functional>

/** Gives views the pictures of songs without waiting for a disk. Message thread. */
class CoverArtLoader
{
public:
    /** @param side   pixels of the square into which the pictures are fitted */
    explicit CoverArtLoader (int side) : cache (side) {}

    /** A picture that was read before, or no image for a song that has none. @param read   called once it can be found,
        where nothing is given; the newest request is served alone. May be gone by then: capture what can tell.
        @returns nothing while it is being read */
    std::optional<juce::Image> find (const juce::String& path, std::function<void()> read);

private:
    CoverArtCache cache;
    MessageCalls calls;
    Worker worker { "libraryCovers" }; ///< last: its jobs use all of the above
};
