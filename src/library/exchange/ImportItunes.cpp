#include "library/exchange/ImportItunes.h"

#include "library/database/SongDatabase.h"
#include "library/formats/Location.h"
#include "library/formats/PropertyList.h"
#include "support/AudioThread.h"

#include <array>
#include <memory>
#include <utility>

using PropertyList::TrackKey;

namespace
{
constexpr int tracksOfPortion = 500;

constexpr std::array<std::pair<TrackKey, SongColumn>, 15> columnsOfKeys { {
    { TrackKey::name, SongColumn::title },
    { TrackKey::artist, SongColumn::artist },
    { TrackKey::album, SongColumn::album },
    { TrackKey::grouping, SongColumn::grouping },
    { TrackKey::genre, SongColumn::genre },
    { TrackKey::kind, SongColumn::format },
    { TrackKey::size, SongColumn::filesize },
    { TrackKey::totalTime, SongColumn::duration },
    { TrackKey::trackNumber, SongColumn::tracknum },
    { TrackKey::year, SongColumn::year },
    { TrackKey::bitRate, SongColumn::bitrate },
    { TrackKey::sampleRate, SongColumn::samplerate },
    { TrackKey::playCount, SongColumn::playcount },
    { TrackKey::comments, SongColumn::comment },
    { TrackKey::rating, SongColumn::rating },
} };

/** The foreign library counts milliseconds, and twenty for a star. */
void takeOurUnits (SongRecord& record)
{
    constexpr juce::int64 millisecondsOfSecond = 1000, pointsOfStar = 20;
    const auto divide = [&record] (SongColumn column, juce::int64 divisor)
    {
        if (record[column].isNotEmpty())
            record[column] = juce::String (record[column].getLargeIntValue() / divisor);
    };
    divide (SongColumn::duration, millisecondsOfSecond);
    divide (SongColumn::rating, pointsOfStar);
}

SongRecord recordOf (const PropertyList::Track& track)
{
    SongRecord record;
    for (const auto& [key, value] : track)
    {
        if (key == TrackKey::trackId)
            record.id = PropertyList::idOf (value);
        else if (key == TrackKey::location)
            record[SongColumn::filename] = decodeLocation (value);
        for (const auto& [known, column] : columnsOfKeys)
            if (key == known)
                record[column] = value;
    }
    takeOurUnits (record);
    return record;
}

SongList listOf (const PropertyList::Playlist& playlist)
{
    SongList list (SongListKind::foreignPlaylist);
    for (const auto id : playlist.trackIds)
    {
        SongListEntry entry;
        entry.songId = id;
        list.add (entry);
    }
    return list;
}
}

ImportItunes::ImportItunes (SongDatabase* d, const juce::File& l) : database (d), library (l) {}

ImportItunes::Result ImportItunes::run (ImportProgress& progress)
{
    assertMayBlock();
    Result result;
    if (database == nullptr)
        return result;
    if (database->clearForeign() != LibraryCode::ok || !library.existsAsFile())
        return result;
    progress.setStatusText (library.getFullPathName());

    // Portions, so that other tasks of this program come in between.
    std::unique_ptr<SqlTransaction> portion;
    auto inPortion = 0;
    const auto beginNext = [&]
    {
        if (inPortion++ % tracksOfPortion != 0)
            return;
        if (portion)
            juce::ignoreUnused (portion->commit()); // memory, which the next statement would miss too
        portion.reset();
        portion.reset (new SqlTransaction (database->beginForeignTransaction()));
    };
    const auto goOn = [&] (double part)
    {
        progress.setProgress (part);
        result.isCancelled = progress.shouldExit();
        return !result.isCancelled;
    };

    PropertyList::Visitor visitor;
    visitor.onTrack = [&] (const PropertyList::Track& track, double part)
    {
        beginNext();
        // A track without a number could be in no list, and under a new number in the wrong ones.
        const auto record = recordOf (track);
        if (record.id >= 0 && database->insertForeignSong (record) == LibraryCode::ok)
            ++result.tracks;
        return goOn (part);
    };
    visitor.onPlaylist = [&] (const PropertyList::Playlist& playlist, double part)
    {
        beginNext();
        const auto list = listOf (playlist);
        if (!playlist.isSpecial
            && database->createForeignPlaylist (playlist.name, &list, result.playlists + 1)
                   == LibraryCode::ok)
            ++result.playlists;
        return goOn (part);
    };
    result.isRead = PropertyList::read (library.createInputStream(), visitor);
    if (portion)
        juce::ignoreUnused (portion->commit());
    portion.reset();

    if (!result.isRead)
    {
        juce::ignoreUnused (database->clearForeign());
        result.tracks = result.playlists = 0;
    }
    return result;
}
