#include "library/tags/ReadTags.h"
#include "library/tags/WriteTag.h"
#include "session/browse/LibraryEdits.h"
#include "session/browse/LibraryFaults.h"
#include "session/browse/LibraryRoom.h"

#include <algorithm>

// The edits of songs, and what views keep.

namespace
{
constexpr size_t tagsAtOnce = 100;

SongList listOf (const std::vector<int32_t>& songIds)
{
    SongList list (SongListKind::library);
    for (const auto id : songIds)
        list.add ({ 0, 0, id, -1, nullptr });
    return list;
}
}

void LibraryEdits::deleteSongs (std::vector<int32_t> songIds, Done done)
{
    post (
        [this, list = listOf (songIds)]
        {
            // All or none: half of a selection would be a puzzle.
            auto transaction = database.beginTransaction();
            return transaction.commitIf (transaction.code() == LibraryCode::ok ? database.deleteSongs (&list)
                                                                               : transaction.code());
        },
        std::move (done));
}

void LibraryEdits::clearLibrary (Done done)
{
    post (
        [this]
        {
            const auto code = database.clearLibrary();
            if (code == LibraryCode::ok)
                history.clear();
            return code;
        },
        std::move (done));
}

void LibraryEdits::setRating (std::vector<int32_t> songIds, int stars, Done done)
{
    post (
        [this, songIds = std::move (songIds), stars]
        {
            auto transaction = database.beginTransaction();
            auto code = transaction.code();
            for (auto id = songIds.begin(); id != songIds.end() && code == LibraryCode::ok; ++id)
                code = database.setRating (*id, std::clamp (stars, 0, 5));
            return transaction.commitIf (code);
        },
        std::move (done));
}

void LibraryEdits::setField (int32_t songId, SongField field, const juce::String& text, Done done)
{
    post (
        [this, songId, field, text]
        {
            if (!hasColumn (field))
                return LibraryCode::badField;
            const auto column = columnOf (field);
            auto code = 0;
            if (infoOf (column).type == SongColumnType::text)
                code = database.setTextField (field, songId, text);
            else if (field == SongField::bpm)
                code = database.setBpm (songId, text.replaceCharacter (',', '.').getDoubleValue());
            else
                code = database.setIntField (field, songId, text.getLargeIntValue());
            if (code != LibraryCode::ok)
                return code;
            SongRecord record;
            code = database.readSong (songId, record);
            if (code == LibraryCode::ok && record.present && !writeTag (record, field))
                return LibraryFaults::tagNotWritten;
            return code;
        },
        std::move (done));
}

void LibraryEdits::clearPlayed (std::vector<int32_t> songIds, Done done)
{
    post (
        [this, list = listOf (songIds)]
        {
            auto transaction = database.beginTransaction();
            return transaction.commitIf (transaction.code() == LibraryCode::ok ? database.clearPlayed (&list)
                                                                               : transaction.code());
        },
        std::move (done));
}

void LibraryEdits::reloadTags (std::vector<int32_t> songIds, Done done)
{
    post (
        [this, songIds = std::move (songIds)]
        {
            std::vector<SongRecord> read;
            for (size_t first = 0; first < songIds.size(); first += tagsAtOnce)
            {
                // The files are read before the transaction, which keeps everybody else from writing.
                read.clear();
                const auto last = std::min (first + tagsAtOnce, songIds.size());
                for (auto i = first; i < last; ++i)
                {
                    SongRecord record;
                    if (const auto code = database.readSong (songIds[i], record); code != LibraryCode::ok)
                        return code;
                    if (!record.present)
                        continue;
                    readTags (record[SongColumn::filename], record);
                    read.push_back (std::move (record));
                }
                auto transaction = database.beginTransaction();
                auto code = transaction.code();
                for (auto song = read.begin(); song != read.end() && code == LibraryCode::ok; ++song)
                    code = database.updateSong (*song);
                if (code = transaction.commitIf (code); code != LibraryCode::ok)
                    return code;
            }
            return LibraryCode::ok;
        },
        std::move (done));
}

void LibraryEdits::saveLayout (ListRef list, const juce::String& layoutXml, const juce::String& selectionXml,
                               Done done)
{
    const auto saved = std::make_shared<const Layout> (Layout { list, layoutXml, selectionXml });
    {
        const std::scoped_lock scope (layoutLock);
        std::erase_if (layoutsToCome, [&list] (const auto& each) { return each->list == list; });
        layoutsToCome.push_back (saved);
    }
    post (
        [this, saved]
        {
            const SongList named (saved->list.kind, saved->list.id);
            const auto code = database.saveLayout (&named, saved->layout, saved->selection);
            const std::scoped_lock scope (layoutLock);
            if (code == LibraryCode::ok) // else it holds for this session
                std::erase (layoutsToCome, saved);
            return code;
        },
        std::move (done));
}

void LibraryEdits::loadLayout (ListRef list,
                               std::function<void (const juce::String&, const juce::String&)> answer)
{
    std::shared_ptr<const Layout> newest;
    {
        const std::scoped_lock scope (layoutLock);
        for (const auto& each : layoutsToCome)
            if (each->list == list)
                newest = each;
    }
    if (newest != nullptr)
        return calls.post ([answer = std::move (answer), newest]
                           { answer (newest->layout, newest->selection); });
    readers.post ({ [this, list, answer = std::move (answer)] (const std::stop_token&)
                    {
                        const SongList named (list.kind, list.id);
                        juce::String layout, selection;
                        // Unread, a view has its default.
                        juce::ignoreUnused (database.loadLayout (&named, layout),
                                            database.loadSelection (&named, selection));
                        calls.post ([answer, layout, selection] { answer (layout, selection); });
                    } });
}

void LibraryEdits::pathsOf (std::vector<int32_t> songIds,
                            std::function<void (const juce::StringArray&)> answer)
{
    readers.post (
        { [this, songIds = std::move (songIds), answer = std::move (answer)] (const std::stop_token&)
          {
              juce::StringArray paths;
              for (const auto id : songIds)
              {
                  juce::String path;
                  if (database.readField (SongField::filename, id, path) == LibraryCode::ok
                      && path.isNotEmpty())
                      paths.add (path);
              }
              calls.post ([answer, paths] { answer (paths); });
          } });
}
