#pragma once

#include "library/songs/SongField.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

/** The text of a search field, taken apart.

        deep "night drive"        words in any order, each in any chosen field; a phrase keeps its blanks
        bpm:120-126  bpm:128      a tempo: a range, either end first, or what is shown as that number
        year:1990-  rating:>3     from, up to, above, below: 1990-  -1999  >3  <3  >=3  <=3
        grid:<50                  the confidence in its grid, 1 to 100
        key:8A,9A                 whole values, any of them
        artist:moby  genre:"deep house"   a word in that field, whichever are chosen

    Letters count in any case, with and without accents; "%" stands for any text and "_" for any character. A condition
    that is still being typed ("bpm:") leaves all songs; one that is none ("mix:2") is a word. */
struct QueryTerms
{
    /** A text that has to be somewhere in a field. */
    struct Word
    {
        std::string folded; ///< by FoldedText

        /** The field that was named; nothing for any of those chosen. */
        std::optional<SongField> field {};

        bool hasWildcards() const { return folded.find_first_of ("%_") != std::string::npos; }
    };

    /** A number that has to be within limits, both included. */
    struct Range
    {
        SongField field = SongField::bpm; ///< bpm, year, rating or analyzed
        double least = 0.0, most = 0.0;
    };

    /** Values of which a field has to be one. */
    struct Choice
    {
        SongField field = SongField::key;
        std::vector<std::string> folded;
    };

    std::vector<Word> words;
    std::vector<Range> ranges;
    std::vector<Choice> choices;

    bool isEmpty() const { return words.empty() && ranges.empty() && choices.empty(); }

    /** Any thread. */
    static QueryTerms parse (const juce::String& typed);
};

/** The parts of a cell's text for which its row was found, in characters, sorted and apart from each other.
    @param field   of the cell
    @param chosen  the fields of the search. Any thread. */
std::vector<juce::Range<int>> marksIn (const juce::String& cell, const QueryTerms&, SongField field,
                                       std::span<const SongField> chosen);
