#pragma once

#include <juce_core/juce_core.h>

#include <functional>

/** Playlists as text, one line an entry. */
namespace M3u
{
/** Characters that are kept of a line; longer ones are no path and are left out. */
inline constexpr int maxLineLength = 1 << 15;

/** Called for each entry.
    @param line       without its end
    @param position   bytes of the file that are read
    @returns false to end the reading */
using EntryFunction = std::function<bool (const juce::String& line, juce::int64 position)>;

/** Hands over the lines of a playlist that are neither blank nor begin with "#". Lines end with a line feed, a carriage
    return or both; encodings are those of TextReader. Takes the same memory for any size. */
void read (juce::InputStream&, const EntryFunction&);

/** The file that an entry names: what begins with "file://" is taken out of its URL, other URLs are nobody's path; a path
    that does not exist is looked for in the playlist's folder, with backslashes taken for separators if need be.
    @returns nothing if no such file exists. Looks at the disk. */
juce::String findFile (const juce::String& line, const juce::File& folder);

/** True for ".m3u" and ".m3u8". */
bool isExtensionOf (const juce::File&);

/** The first line of a playlist. */
juce::String header();

/** The two lines of an entry. Line ends in the texts become blanks. @param seconds   of the song, whole */
juce::String entry (juce::int64 seconds, const juce::String& title, const juce::String& artist,
                    const juce::String& path);
}
