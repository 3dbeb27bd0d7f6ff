#pragma once

/** What an operation of the database gives. Values above 0 are SQLite's own codes. */
namespace LibraryCode
{
inline constexpr int ok = 0;

/** SQLite's: another program writes to the file, and was waited for. */
inline constexpr int busy = 5;

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
}
