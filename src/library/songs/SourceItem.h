#pragma once

#include "library/songs/SongListKind.h"

#include <juce_core/juce_core.h>

/** One list in the tree of sources. */
struct SourceItem
{
    juce::String name, parentName;
    SongListKind kind = SongListKind::none;
    int32_t id = -1;
    int32_t sortOrder = -1;

    /** The album, artist or genre that a node stands for, and the text that the tree shows for it. */
    juce::String filterValue, displayText;

    bool operator== (const SourceItem&) const = default;
};
