#pragma once

#include "library/database/SongDatabase.h"

#include <optional>
#include <string>
#include <vector>

/** Order and search of a source's songs. */
struct LibraryOrder
{
    SongField sort = SongField::listOrder;
    bool ascending = true;
    std::vector<SongField> searchIn; ///< none for no search
    juce::String term;
};

/** A source of songs, as named by the option --kind and a name. */
struct LibrarySource
{
    SongListKind kind = SongListKind::library;
    juce::String name;
    int32_t id = -1;

    /** The words of --kind, for the help. */
    static juce::String kindWords();

    /** Finds the source of a kind's word. @param arguments   the name comes from its front, if the kind needs one, and is
        taken out. @returns nothing after a report */
    static std::optional<LibrarySource> find (SongDatabase&, const juce::String& kindWord,
                                              juce::StringArray& arguments);

    /** Replaces the songs of a list by those of the source. @returns a code as the database gives it */
    int fill (SongDatabase&, SongList&, LibraryOrder) const;
};
