#pragma once

#include "library/songs/SongField.h"
#include "library/songs/SongListKind.h"

#include <juce_graphics/juce_graphics.h>

#include <optional>
#include <span>

/** The columns of the table of songs, by the ids that stored layouts name: a field's number plus 1, the status, what a history tells
    and the reason of a recommendation. */
namespace TableColumn
{
inline constexpr int order = static_cast<int> (SongField::listOrder) + 1, status = order + 1,
                     playedAt = status + 1, playedOn = playedAt + 1,
                     match = playedOn + 1; ///< the reason why a song is recommended

constexpr int of (SongField field)
{
    return static_cast<int> (field) + 1;
}

inline constexpr int rating = of (SongField::rating);

/** A column as it is without a stored layout. */
struct Row
{
    int id = 0;
    const char* text = ""; ///< of the header
    int width = 100;
    bool isShown = false;
    bool isRightAligned = false;
    std::optional<SongListKind> onlyOf {}; ///< the kind that alone has it
};

/** All of them, in their first order. */
std::span<const Row> all();

/** The field that a column shows and sorts by; listOrder for the place in the list, nothing for what is no field of a song. */
std::optional<SongField> fieldOf (int id);

/** True for a field that is edited in its cell. */
bool isEditable (int id);

inline constexpr int leastWidth = 24, mostWidth = 2000;
}
