#include "ui/browser/table/TableColumn.h"

#include "support/language/Translate.h"

#include <algorithm>
#include <array>

namespace TableColumn
{
namespace
{
using F = SongField;

// clang-format off
constexpr Row rows[] {
    { status,             N_ ("Status"),        60, true },
    { order,              "#",             60, false, true },
    { playedAt,           N_ ("Played"),        70, true,  false, SongListKind::history },
    { playedOn,           N_ ("Deck"),          46, true,  false, SongListKind::history },
    { of (F::title),      N_ ("Title"),        250, true },
    { match,              N_ ("Match"),        320, true,  false, SongListKind::recommendation },
    { of (F::artist),     N_ ("Artist"),       150, true },
    { of (F::album),      N_ ("Album"),        150, true },
    { of (F::time),       N_ ("Time"),          55, true,  true },
    { of (F::bpm),        N_ ("BPM"),           50, true,  true },
    { of (F::key),        N_ ("Key"),           50, true },
    { of (F::genre),      N_ ("Genre"),        100 },
    { of (F::comment),    N_ ("Comments"),     150 },
    { of (F::grouping),   N_ ("Grouping"),     100 },
    { of (F::trackNumber),N_ ("Track Number"),  60, false, true },
    { of (F::year),       N_ ("Year"),          50, false, true },
    { rating,             N_ ("Rating"),        90 },
    { of (F::playCount),  N_ ("Play Count"),    60, false, true },
    { of (F::lastPlayed), N_ ("Last Played"),  140 },
    { of (F::filename),   N_ ("Filename"),     250 },
    { of (F::format),     N_ ("Format"),        60 },
    { of (F::bitrate),    N_ ("Bitrate"),       60, false, true },
    { of (F::filesize),   N_ ("Filesize"),      80, false, true },
    { of (F::samplerate), N_ ("Samplerate"),    80, false, true },
    { of (F::channels),   N_ ("Channels"),      60, false, true },
    { of (F::dateAdded),  N_ ("Date Added"),   140 },
    { of (F::dateCreated),N_ ("Date Created"), 140 },
    { of (F::dateModified),N_ ("Date Modified"),140 },
    { of (F::analyzed),   N_ ("Analyzed"),      60, false, true },
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
