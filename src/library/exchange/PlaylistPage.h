#pragma once

#include <juce_core/juce_core.h>

#include <span>

struct SongRecord;

/** A playlist as a web page. Texts are escaped; the markup is fixed to the letter, with the closing tags of its headings as
    readers of older pages know them. */
namespace PlaylistPage
{
juce::String header (const juce::String& name, const juce::String& summary);

/** @param number   of the row, from 1 */
juce::String row (int number, const SongRecord&);

/** The same for a table of other columns than a song's. */
juce::String header (const juce::String& name, const juce::String& summary,
                     std::span<const char* const> columns);
juce::String row (const juce::StringArray& cells);

juce::String footer();
}
