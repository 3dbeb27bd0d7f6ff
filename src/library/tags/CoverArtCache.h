#pragma once

#include <juce_graphics/juce_graphics.h>

#include <list>
#include <mutex>
#include <optional>

/** The pictures of the songs that were looked at last, scaled for a view. Any number of threads. */
class CoverArtCache
{
public:
    /** @param side       pixels of the square into which the pictures are fitted
        @param pictures   that are kept; songs without one count too */
    explicit CoverArtCache (int side, size_t pictures = 64);

    /** A picture that was read before, or no image for a song that has none. Waits for nothing and looks at no disk.
        @returns nothing if it is to be read first */
    std::optional<juce::Image> find (const juce::String& path);

    /** Reads a song's picture, unless it is known and the file has not changed. Not on the message thread. */
    juce::Image read (const juce::String& path);

private:
    struct Entry
    {
        juce::String path;
        juce::Time changed;
        juce::Image picture;
    };

    /** Moves an entry to the front. @returns the end if there is none */
    std::list<Entry>::iterator take (const juce::String& path);

    const int side;
    const size_t most;
    std::mutex lock;
    std::list<Entry> entries; ///< the last one first
};
