#include "library/exchange/ImportPlaylist.h"

#include "library/database/SongDatabase.h"
#include "library/formats/Location.h"
#include "library/formats/M3u.h"
#include "library/formats/PropertyList.h"
#include "library/import/SongBatch.h"
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
          batch (d),
          progress (p),
          result (r)
    {
    }

    bool take (const juce::String& song, double part)
    {
        if (song.isNotEmpty())
        {
            progress.setStatusText (song);
            if (!batch.take (song))
                return false;
            paths.add (song);
        }
        progress.setProgress (part);
        result.isCancelled = progress.shouldExit();
        return !result.isCancelled;
    }

    /** Stores the last songs. @returns all that were taken, in their order */
    SongList end()
    {
        SongList list (SongListKind::playlist);
        batch.store();
        result.added = batch.added();
        result.code = batch.code();
        for (auto path = paths.begin(); path != paths.end() && result.code == LibraryCode::ok; ++path)
        {
            SongListEntry entry;
            result.code = database.findByFilename (*path, entry);
            if (entry.songId >= 0)
                list.add (entry);
        }
        return list;
    }

private:
    SongDatabase& database;
    SongBatch batch;
    ImportProgress& progress;
    ImportPlaylist::Result& result;
    juce::StringArray paths;
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

/** @returns a code as the database gives it */
int findOrderBehindOthers (SongDatabase& database, int32_t& order)
{
    std::vector<SourceItem> playlists;
    const auto code = database.listPlaylists (playlists);
    int32_t last = 0;
    for (const auto& playlist : playlists)
        last = std::max (last, playlist.sortOrder);
    order = last < std::numeric_limits<int32_t>::max() ? last + 1 : last;
    return code;
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
    const auto isM3u = M3u::isExtensionOf (path);
    if (database == nullptr || !path.existsAsFile() || !(isM3u || path.hasFileExtension ("xml")))
        return result;

    Gathering gathering (*database, progress, result);
    result.isRead = isM3u ? readM3u (path, gathering) : readPropertyList (path, gathering);
    const auto list = gathering.end();
    // A property list that is none at all makes no playlist.
    if (result.code == LibraryCode::ok && (result.isRead || !list.isEmpty()))
        result.code = makePlaylist (list, result);
    return result;
}

int ImportPlaylist::makePlaylist (const SongList& list, Result& result) const
{
    auto code = LibraryCode::ok;
    auto id = playlistId, order = sortOrder;
    if (id >= 0)
        code = list.isEmpty() ? code : database->addListToPlaylist (id, &list);
    else
    {
        if (order < 0)
            code = findOrderBehindOthers (*database, order);
        if (code == LibraryCode::ok)
            code = database->createPlaylist (name, &list, order, &id);
    }
    if (code == LibraryCode::ok)
    {
        result.playlistId = id;
        result.songs = list.size();
    }
    return code;
}
