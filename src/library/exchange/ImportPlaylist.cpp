#include "library/exchange/ImportPlaylist.h"

#include "library/database/SongDatabase.h"
#include "library/formats/Location.h"
#include "library/formats/M3u.h"
#include "library/formats/PropertyList.h"
#include "library/import/ImportRun.h"
#include "library/import/ImportSong.h"
#include "support/AudioThread.h"

#include <algorithm>
#include <limits>

namespace
{
/** Takes one path after the other into the library and a list, until the user cancels. */
class Gathering
{
public:
    Gathering (SongDatabase& d, ImportProgress& p, ImportPlaylist::Result& r)
        : database (d),
          progress (p),
          result (r)
    {
        database.beginTransaction();
    }

    ~Gathering() { result.isLocked |= endPatiently (database) == LibraryCode::busy; }

    bool take (const juce::String& song, double part)
    {
        if (song.isNotEmpty())
        {
            progress.setStatusText (song);
            const auto outcome = tryImportSong (database, song);
            result.isLocked = outcome == SongImport::locked;
            if (result.isLocked)
                return false;
            result.added += outcome == SongImport::added ? 1 : 0;
            SongListEntry entry;
            if (database.findByFilename (song, entry) == LibraryCode::ok && entry.songId >= 0)
                list.add (entry);
        }
        progress.setProgress (part);
        result.isCancelled = progress.shouldExit();
        return !result.isCancelled;
    }

    SongList list { SongListKind::playlist };

private:
    SongDatabase& database;
    ImportProgress& progress;
    ImportPlaylist::Result& result;
};

bool readM3u (const juce::File& path, Gathering& gathering)
{
    const auto stream = path.createInputStream();
    if (stream == nullptr)
        return false;
    const auto length = static_cast<double> (std::max<juce::int64> (1, stream->getTotalLength()));
    M3u::read (*stream,
               [&] (const juce::String& line, juce::int64 position)
               {
                   return gathering.take (M3u::findFile (line, path.getParentDirectory()),
                                          std::min (1.0, static_cast<double> (position) / length));
               });
    return true;
}

bool readPropertyList (const juce::File& path, Gathering& gathering)
{
    PropertyList::Visitor visitor;
    visitor.onTrack = [&] (const PropertyList::Track& track, double part)
    {
        const auto location = track.find (PropertyList::TrackKey::location);
        return gathering.take (location != track.end() ? decodeLocation (location->second) : juce::String(),
                               part);
    };
    return PropertyList::read (path.createInputStream(), visitor);
}

int32_t orderBehindOthers (SongDatabase& database)
{
    std::vector<SourceItem> playlists;
    database.listPlaylists (playlists);
    int32_t last = 0;
    for (const auto& playlist : playlists)
        last = std::max (last, playlist.sortOrder);
    return last < std::numeric_limits<int32_t>::max() ? last + 1 : last;
}
}

ImportPlaylist::ImportPlaylist (SongDatabase* d, const juce::File& p, int32_t id, const juce::String& n,
                                int32_t order)
    : database (d),
      path (p),
      playlistId (id),
      name (n),
      sortOrder (order)
{
}

ImportPlaylist::Result ImportPlaylist::run (ImportProgress& progress)
{
    assertMayBlock();
    Result result;
    const auto isM3u = path.hasFileExtension ("m3u");
    if (database == nullptr || !path.existsAsFile() || !(isM3u || path.hasFileExtension ("xml")))
        return result;

    SongList list;
    {
        Gathering gathering (*database, progress, result);
        result.isRead = isM3u ? readM3u (path, gathering) : readPropertyList (path, gathering);
        list = std::move (gathering.list);
    }
    // A property list that is none at all makes no playlist.
    if (result.isLocked || (!result.isRead && list.isEmpty()))
        return result;

    if (playlistId < 0)
        database->createPlaylist (name, &list, sortOrder >= 0 ? sortOrder : orderBehindOthers (*database),
                                  &result.playlistId);
    else if (list.isEmpty() || database->addListToPlaylist (playlistId, &list) == LibraryCode::ok)
        result.playlistId = playlistId;
    result.songs = result.playlistId >= 0 ? list.size() : 0;
    return result;
}
