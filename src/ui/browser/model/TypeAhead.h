#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** Letters typed into a list, to go to the next row that begins with them. Letters that follow each other within 0.9 s are one
    word; one letter alone goes on from row to row. Message thread. */
class TypeAhead
{
public:
    /** Takes a key. @returns false for one that types nothing */
    bool take (const juce::KeyPress&);

    const juce::String& word() const noexcept { return letters; }

    /** The row at which a search begins. @param selected   the selected row, or below 0 */
    int from (int selected) const { return std::max (0, selected) + (letters.length() == 1 ? 1 : 0); }

    /** The next row that begins with the word, around the end. @returns -1 if none does */
    int find (int selected, int rows, const std::function<juce::String (int)>& nameOf) const;

private:
    juce::String letters;
    juce::uint32 typedAt = 0;
};
