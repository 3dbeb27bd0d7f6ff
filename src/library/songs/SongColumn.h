#pragma once

#include <array>
#include <cstddef>

/** The columns of a song beside its id, in the order of the table. */
enum class SongColumn
{
    album,
    analyzed,
    artist,
    autoadvancedtimes,
    bitrate,
    bpm,
    channels,
    colour,
    comment,
    dateadded,
    datecreated,
    datemodified,
    duration,
    filename,
    filesize,
    format,
    genre,
    grouping,
    hashcode,
    key,
    lastplayed,
    playcount,
    rating,
    removabledrive,
    samplerate,
    title,
    totalplayedtime,
    tracknum,
    usereserved,
    vbr,
    volumelabel,
    year
};

inline constexpr int songColumnCount = 32;

/** The SQL type of a column. */
enum class SongColumnType
{
    text,
    integer,
    real
};

struct SongColumnInfo
{
    const char* name;
    SongColumnType type;
};

/** One row a column, in the order of the table. */
inline constexpr std::array<SongColumnInfo, songColumnCount> songColumns {
    SongColumnInfo { "album", SongColumnType::text },
    SongColumnInfo { "analyzed", SongColumnType::integer },
    SongColumnInfo { "artist", SongColumnType::text },
    SongColumnInfo { "autoadvancedtimes", SongColumnType::integer },
    SongColumnInfo { "bitrate", SongColumnType::integer },
    SongColumnInfo { "bpm", SongColumnType::real },
    SongColumnInfo { "channels", SongColumnType::integer },
    SongColumnInfo { "colour", SongColumnType::integer },
    SongColumnInfo { "comment", SongColumnType::text },
    SongColumnInfo { "dateadded", SongColumnType::integer },
    SongColumnInfo { "datecreated", SongColumnType::integer },
    SongColumnInfo { "datemodified", SongColumnType::integer },
    SongColumnInfo { "duration", SongColumnType::integer },
    SongColumnInfo { "filename", SongColumnType::text },
    SongColumnInfo { "filesize", SongColumnType::integer },
    SongColumnInfo { "format", SongColumnType::text },
    SongColumnInfo { "genre", SongColumnType::text },
    SongColumnInfo { "grouping", SongColumnType::text },
    SongColumnInfo { "hashcode", SongColumnType::integer },
    SongColumnInfo { "key", SongColumnType::text },
    SongColumnInfo { "lastplayed", SongColumnType::integer },
    SongColumnInfo { "playcount", SongColumnType::integer },
    SongColumnInfo { "rating", SongColumnType::integer },
    SongColumnInfo { "removabledrive", SongColumnType::integer },
    SongColumnInfo { "samplerate", SongColumnType::integer },
    SongColumnInfo { "title", SongColumnType::text },
    SongColumnInfo { "totalplayedtime", SongColumnType::integer },
    SongColumnInfo { "tracknum", SongColumnType::integer },
    SongColumnInfo { "usereserved", SongColumnType::integer },
    SongColumnInfo { "vbr", SongColumnType::integer },
    SongColumnInfo { "volumelabel", SongColumnType::text },
    SongColumnInfo { "year", SongColumnType::integer },
};

constexpr const SongColumnInfo& infoOf (SongColumn column)
{
    return songColumns[static_cast<size_t> (column)];
}

constexpr const char* nameOf (SongColumn column)
{
    return infoOf (column).name;
}
