#include "library/import/SongBatch.h"

#include "library/database/SongDatabase.h"
#include "library/tags/ReadTags.h"
#include "support/AudioThread.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace
{
constexpr size_t largestPortion = 256;

/** A transaction keeps other edits of this program waiting, so it ends after this time; but not below so many songs, for each
    waits for the disk. */
constexpr std::chrono::milliseconds longestTransaction { 8 };
constexpr int leastOfTransaction = 16;

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
    if (failure = LibraryCode::ofCount (known); failure != LibraryCode::ok)
    {
        waiting.push_back (std::move (song));
        return store();
    }
    return add (std::move (song));
}

bool SongBatch::add (SongRecord song)
{
    SongDatabase::completeFromFile (song);
    waiting.push_back (std::move (song));
    return waiting.size() < portion || store();
}

bool SongBatch::store()
{
    const auto songs = std::exchange (waiting, {});
    portion = std::min (2 * portion, largestPortion);
    auto done = 0;
    for (std::span<const SongRecord> rest (songs); !rest.empty() && failure == LibraryCode::ok;)
        rest = storeSome (rest, done);
    notStored += static_cast<int> (songs.size()) - done;
    return failure == LibraryCode::ok;
}

/** Stores songs in one transaction. @param done   gets those that are in the library now @returns the songs that are left */
std::span<const SongRecord> SongBatch::storeSome (std::span<const SongRecord> songs, int& done)
{
    auto taken = 0, known = 0;
    auto transaction = database.beginTransaction();
    auto code = transaction.code();
    const auto begin = std::chrono::steady_clock::now();
    while (!songs.empty() && transaction.stands()
           && (taken + known < leastOfTransaction
               || std::chrono::steady_clock::now() - begin < longestTransaction))
    {
        code = database.insertSong (songs.front());
        taken += code == LibraryCode::ok ? 1 : 0;
        // A path that came in meanwhile, or twice in one portion.
        known += code == LibraryCode::constraint ? 1 : 0;
        if (code != LibraryCode::ok && code != LibraryCode::constraint)
            break;
        code = LibraryCode::ok;
        songs = songs.subspan (1);
    }
    if (const auto committed = transaction.commit(); committed != LibraryCode::ok)
    {
        taken = known = 0;
        code = code != LibraryCode::ok ? code : committed;
    }
    stored += taken;
    done += taken + known;
    failure = code;
    return songs;
}
