#pragma once

#include "library/songs/SongListKind.h"

#include <juce_core/juce_core.h>

#include <vector>

/** Names one list that can be edited: a playlist by its id, or the automix list or the recommendations. */
struct ListRef
{
    SongListKind kind = SongListKind::none;
    int32_t id = -1;

    bool operator== (const ListRef&) const = default;
};

/** Everything that is stored of a list, so that it can be put back. */
struct ListContent
{
    struct Entry
    {
        int32_t entryId = -1;
        int32_t songId = -1;

        bool operator== (const Entry&) const = default;
    };

    ListRef list;

    /** False for a playlist that isn't there. */
    bool exists = false;

    /** @name Of a playlist or smart playlist */
    juce::String name, layout, selection;
    int32_t sortOrder = -1;
    juce::String smartSql, smartRules;

    std::vector<Entry> entries;

    bool operator== (const ListContent&) const = default;
};
