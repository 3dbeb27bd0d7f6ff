#pragma once

#include "library/database/ListContent.h"
#include "library/query/SongQuery.h"
#include "library/songs/SourceItem.h"

/** A list of songs that the tree offers and the table shows. */
struct Source
{
    SongListKind kind = SongListKind::library;
    int32_t id = -1;   ///< of a playlist, smart playlist, foreign playlist or session
    juce::String name; ///< of an album, artist or genre, else what the tree calls it

    bool operator== (const Source&) const = default;

    /** The place in which its layout and selection are kept. */
    ListRef layoutPlace() const
    {
        const auto isList = kind == SongListKind::playlist || kind == SongListKind::smartPlaylist
                            || kind == SongListKind::foreignPlaylist || kind == SongListKind::automix
                            || kind == SongListKind::recommendation;
        return isList ? ListRef { kind, id } : ListRef { SongListKind::library, -1 };
    }

    /** True for a list whose entries the user puts in, moves and takes out. */
    bool isEditable() const { return kind == SongListKind::playlist || kind == SongListKind::automix; }

    /** True for a list from which songs are taken without leaving the library. */
    bool isList() const { return isEditable() || kind == SongListKind::recommendation; }

    ListRef list() const { return { kind, kind == SongListKind::playlist ? id : -1 }; }

    SongQuery query() const
    {
        SongQuery made;
        made.kind = kind;
        made.id = id;
        made.name = name;
        return made;
    }
};
