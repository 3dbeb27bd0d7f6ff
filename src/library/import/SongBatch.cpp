#include "library/import/SongBatch.h"

#include "library/database/SongDatabase.h"
#include "library/tags/ReadTags.h"
#include "support/AudioThread.h"

#include <algorithm>
#include <utility>

namespace
{
/** A portion takes some 10 ms to store. */
constexpr size_t largestPortion = 256;

/** Bytes below which a header may promise audio that is not there. */
constexpr juce::int64 smallFile = 4096;
}

juce::String SongBatch::faultOf (const juce::String& path, const SongRecord& song) const
{
    if (judge == nullptr)
        return {};
    const auto file = juce::File::createFileWithoutCheckingPath (path);
    return song[SongColumn::duration].getIntValue() > 0 && file.getSize() >= smallFile ? juce::String()
                                                                                       : judge (file);
}

bool SongBatch::take (const juce::String& path)
{
    assertMayBlock();
    if (failure != LibraryCode::ok)
        return false;
    const auto known = database.countFilename (path);
    if (known > 0)
        return true;
    SongRecord song;
    readTags (path, song);
    if (const auto fault = faultOf (path, song); fault.isNotEmpty())
    {
        notPlayable.add (path + ": " + fault);
        return true;
    }
    waiting.push_back (std::move (song));
    if (failure = LibraryCode::ofCount (known); failure != LibraryCode::ok)
        return store();
    return waiting.size() < portion || store();
}

bool SongBatch::store()
{
    const auto songs = std::exchange (waiting, {});
    portion = std::min (2 * portion, largestPortion);
    if (songs.empty())
        return failure == LibraryCode::ok;

    auto taken = 0, known = 0;
    auto code = failure;
    if (code == LibraryCode::ok)
    {
        auto transaction = database.beginTransaction();
        code = transaction.code();
        for (auto song = songs.begin(); song != songs.end() && transaction.stands(); ++song)
        {
            code = database.insertSong (*song);
            taken += code == LibraryCode::ok ? 1 : 0;
            // A path that came in meanwhile, or twice in one portion.
            known += code == LibraryCode::constraint ? 1 : 0;
            if (code != LibraryCode::ok && code != LibraryCode::constraint)
                break;
            code = LibraryCode::ok;
        }
        if (const auto committed = transaction.commit(); committed != LibraryCode::ok)
        {
            taken = known = 0;
            code = code != LibraryCode::ok ? code : committed;
        }
    }
    stored += taken;
    notStored += static_cast<int> (songs.size()) - taken - known;
    failure = code;
    return failure == LibraryCode::ok;
}
