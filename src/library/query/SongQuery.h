#pragma once

#include "library/songs/SongField.h"
#include "library/songs/SongListKind.h"

#include <juce_core/juce_core.h>

#include <vector>

/** A view's question to the library: which source, in which order, and what is left of it. */
struct SongQuery
{
    SongListKind kind = SongListKind::library;

    /** Of a playlist, smart playlist or foreign playlist. */
    int32_t id = -1;

    /** Of an album, artist or genre. */
    juce::String name {};

    /** SongField::listOrder gives, for a source without an order of its own, the order in which songs were added. */
    SongField sort = SongField::listOrder;
    bool ascending = true;

    /** As it was typed, see QueryTerms. Nothing but blanks is no search. */
    juce::String search {};

    /** The fields in which words are looked for; without any, words find nothing. */
    std::vector<SongField> fields {};

    /** Only songs whose tempo, half or double is within so many percent of this one, in BPM; 0 for all. */
    double fitBpm = 0.0, fitPercent = 0.0;

    /** Only songs whose grid is known, with less confidence than this, 1 to 100; 0 for all. */
    int confidenceBelow = 0;

    bool isFiltered() const { return search.trim().isNotEmpty() || fitBpm > 0.0 || confidenceBelow > 0; }
    bool operator== (const SongQuery&) const = default;
};
