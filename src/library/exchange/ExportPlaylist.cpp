#include "library/exchange/ExportPlaylist.h"

#include "library/database/SongDatabase.h"
#include "library/exchange/ExchangeTexts.h"
#include "library/exchange/ListSummary.h"
#include "library/exchange/PlaylistPage.h"
#include "library/formats/M3u.h"
#include "support/AudioThread.h"
#include "support/language/Translate.h"

#include <algorithm>

namespace
{
constexpr int rowsAtOnce = 200;

juce::String m3uEntry (const SongRecord& record)
{
    return M3u::entry (record[SongColumn::duration].getLargeIntValue(), record[SongColumn::title],
                       record[SongColumn::artist], record[SongColumn::filename]);
}

bool write (juce::OutputStream& stream, const juce::String& text)
{
    return stream.write (text.toRawUTF8(), text.getNumBytesAsUTF8());
}
}

ExportPlaylist::ExportPlaylist (SongDatabase* d, const SongList& l, const juce::File& p)
    : database (d),
      list (l),
      path (p)
{
}

ExportPlaylist::Result ExportPlaylist::run (ImportProgress& progress)
{
    assertMayBlock();
    Result result;
    if (database == nullptr)
        return result;
    progress.setStatusText (tr ("Exporting to: %1", path.getFullPathName()));
    juce::FileOutputStream stream (path);
    if (!stream.openedOk() || !stream.setPosition (0) || stream.truncate().failed())
        return result;

    const auto isM3u = M3u::isExtensionOf (path);
    auto isGood =
        write (stream, isM3u ? M3u::header() : PlaylistPage::header (list.name, listSummaryOfFile (list)));
    std::vector<SongRecord> records;
    for (int row = 0; isGood && row < list.size(); ++row)
    {
        result.isCancelled = progress.shouldExit();
        if (result.isCancelled)
            break;
        if (row % rowsAtOnce == 0)
            isGood = database->readSongs (&list, row, std::min (row + rowsAtOnce, list.size()), records,
                                          SongDatabase::Presence::skipped)
                     == LibraryCode::ok;
        const auto place = static_cast<size_t> (row % rowsAtOnce);
        if (!isGood || place >= records.size())
            break;
        const auto& record = records[place];
        if (record.id >= 0) // else it left the library since the list was filled
            isGood = write (stream, isM3u ? m3uEntry (record) : PlaylistPage::row (result.rows + 1, record));
        result.rows += record.id >= 0 ? 1 : 0;
        progress.setProgress (static_cast<double> (row + 1) / list.size());
    }
    if (!isM3u && !result.isCancelled && isGood)
        isGood = write (stream, PlaylistPage::footer());
    stream.flush();
    result.isWritten = isGood && stream.getStatus().wasOk();
    return result;
}
