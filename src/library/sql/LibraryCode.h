#pragma once

/** Codes that operations of the database give: 0 for success, values above 0 are SQLite's own. */
namespace LibraryCode
{
inline constexpr int ok = 0;

/** SQLite's: another program writes to the file, and was waited for. */
inline constexpr int busy = 5;

/** SQLite's: the task was told to stop. */
inline constexpr int interrupted = 9;

/** SQLite's: the disk is full. */
inline constexpr int full = 13;

/** SQLite's: the row stands against a rule of its table, such as a path that is there already. */
inline constexpr int constraint = 19;

/** A statement failed on which a later step depended. */
inline constexpr int failed = -1;
inline constexpr int notOpen = -4;

/** The list is not of the kind that the operation needs. */
inline constexpr int wrongKind = -5;
inline constexpr int emptyList = -6;

/** The field's number is above 24, or has no column where one is needed. */
inline constexpr int badField = -7;

/** The id is negative, or there is no list. */
inline constexpr int badArgument = -8;

/** A failure in place of a count or an id, where SQLite's code would look like one: -105 for busy.
    @param code   not 0 */
constexpr int inPlaceOfCount (int code)
{
    return code < 0 ? code : -100 - code;
}

/** The code that inPlaceOfCount() was given; 0 for a count. */
constexpr int ofCount (int count)
{
    return count >= 0 ? ok : count < -100 ? -100 - count : count;
}
}
