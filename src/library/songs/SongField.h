#pragma once

#include "library/songs/SongColumn.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/** The fields that views, sorting, searching and smart playlists name by number. */
enum class SongField : int32_t
{
    artist = 0,
    album,
    year,
    genre,
    title,
    trackNumber,
    dateAdded,
    lastPlayed,
    filesize,
    format,
    time,
    rating,
    playCount,
    bitrate,
    filename,
    comment,
    bpm,
    key,
    dateCreated,
    dateModified,
    samplerate,
    channels,
    analyzed,
    grouping,

    /** Not a column: the order in which a list is stored. */
    listOrder
};

inline constexpr int songFieldCount = 24;

/** The name and the column of a field. */
struct SongFieldInfo
{
    const char* displayName;
    SongColumn column;
};

/** One row a field, by its number. */
inline constexpr std::array<SongFieldInfo, songFieldCount> songFields {
    SongFieldInfo { "Artist", SongColumn::artist },
    SongFieldInfo { "Album", SongColumn::album },
    SongFieldInfo { "Year", SongColumn::year },
    SongFieldInfo { "Genre", SongColumn::genre },
    SongFieldInfo { "Title", SongColumn::title },
    SongFieldInfo { "Track Number", SongColumn::tracknum },
    SongFieldInfo { "Date Added", SongColumn::dateadded },
    SongFieldInfo { "Last Played", SongColumn::lastplayed },
    SongFieldInfo { "Filesize", SongColumn::filesize },
    SongFieldInfo { "Format", SongColumn::format },
    SongFieldInfo { "Time", SongColumn::duration },
    SongFieldInfo { "Rating", SongColumn::rating },
    SongFieldInfo { "Play Count", SongColumn::playcount },
    SongFieldInfo { "Bitrate", SongColumn::bitrate },
    SongFieldInfo { "Filename", SongColumn::filename },
    SongFieldInfo { "Comment", SongColumn::comment },
    SongFieldInfo { "BPM", SongColumn::bpm },
    SongFieldInfo { "Key", SongColumn::key },
    SongFieldInfo { "Date Created", SongColumn::datecreated },
    SongFieldInfo { "Date Modified", SongColumn::datemodified },
    SongFieldInfo { "Samplerate", SongColumn::samplerate },
    SongFieldInfo { "Channels", SongColumn::channels },
    SongFieldInfo { "Analyzed", SongColumn::analyzed },
    SongFieldInfo { "Grouping", SongColumn::grouping },
};

/** True for 0 to 23, the fields that are columns. */
constexpr bool hasColumn (SongField field)
{
    return field >= SongField::artist && field < SongField::listOrder;
}

/** The column of a field that has one. */
constexpr SongColumn columnOf (SongField field)
{
    return songFields[static_cast<size_t> (field)].column;
}

/** The field with this column name ("tracknum"), or nothing. */
constexpr std::optional<SongField> fieldOfColumn (std::string_view name)
{
    for (size_t i = 0; i < songFields.size(); ++i)
        if (name == nameOf (songFields[i].column))
            return static_cast<SongField> (i);
    return {};
}
