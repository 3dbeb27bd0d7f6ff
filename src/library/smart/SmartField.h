#pragma once

#include "library/songs/SongField.h"
#include "support/language/Translate.h"

#include <array>

/** The kind of value that the rules on a field compare. */
enum class SmartType
{
    text,
    number,
    date,   ///< seconds since 1970
    rating, ///< 0 to 5
    time    ///< seconds
};

/** By the number of the field. */
inline constexpr std::array<SmartType, songFieldCount> smartTypes {
    SmartType::text,   SmartType::text,   SmartType::number, SmartType::text,   SmartType::text,
    SmartType::number, SmartType::date,   SmartType::date,   SmartType::number, SmartType::text,
    SmartType::time,   SmartType::rating, SmartType::number, SmartType::number, SmartType::text,
    SmartType::text,   SmartType::number, SmartType::text,   SmartType::date,   SmartType::date,
    SmartType::number, SmartType::number, SmartType::number, SmartType::text
};

/** The name of a column's field in the editor of rules. */
constexpr const char* editorNameOf (SongField field)
{
    return field == SongField::filesize ? N_ ("Filesize (MB)")
           : field == SongField::bpm    ? N_ ("Bpm")
                                        : songFields[static_cast<size_t> (field)].displayName;
}
