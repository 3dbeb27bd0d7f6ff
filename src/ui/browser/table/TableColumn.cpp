#include "ui/browser/table/TableColumn.h"

#include <algorithm>
#include <array>

namespace TableColumn
{
namespace
{
using F = SongField;

// clang-format off
constexpr Row rows[] {
    { status,             "Status",        60, true },
    { order,              "#",             60, false, true },
    { playedAt,           "Played",        70, true,  false, SongListKind::history },
    { playedOn,           "Deck",          46, true,  false, SongListKind::history },
    { of (F::title),      "Title",        250, true },
    { match,              "Match",        320, true,  false, SongListKind::recommendation },
    { of (F::artist),     "Artist",       150, true },
    { of (F::album),      "Album",        150, true },
    { of (F::time),       "Time",          55, true,  true },
    { of (F::bpm),        "BPM",           50, true,  true },
    { of (F::key),        "Key",           50, true },
    { of (F::genre),      "Genre",        100 },
    { of (F::comment),    "Comments",     150 },
    { of (F::grouping),   "Grouping",     100 },
    { of (F::trackNumber),"Track Number",  60, false, true },
    { of (F::year),       "Year",          50, false, true },
    { rating,             "Rating",        90 },
    { of (F::playCount),  "Play Count",    60, false, true },
    { of (F::lastPlayed), "Last Played",  140 },
    { of (F::filename),   "Filename",     250 },
    { of (F::format),     "Format",        60 },
    { of (F::bitrate),    "Bitrate",       60, false, true },
    { of (F::filesize),   "Filesize",      80, false, true },
    { of (F::samplerate), "Samplerate",    80, false, true },
    { of (F::channels),   "Channels",      60, false, true },
    { of (F::dateAdded),  "Date Added",   140 },
    { of (F::dateCreated),"Date Created", 140 },
    { of (F::dateModified),"Date Modified",140 },
    { of (F::analyzed),   "Analyzed",      60, false, true },
};
// clang-format on

constexpr std::array editable { F::artist,      F::album,   F::year,     F::genre, F::title,
                                F::trackNumber, F::comment, F::grouping, F::bpm,   F::key };
}

std::span<const Row> all()
{
    return rows;
}

std::optional<SongField> fieldOf (int id)
{
    if (id < 1 || id > order)
        return {};
    return static_cast<SongField> (id - 1);
}

bool isEditable (int id)
{
    const auto field = fieldOf (id);
    return field && std::find (editable.begin(), editable.end(), *field) != editable.end();
}
}
