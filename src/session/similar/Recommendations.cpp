#include "session/similar/Recommendations.h"

#include <algorithm>

namespace
{
/** The newest question replaces one that waits. */
constexpr Worker::Key question = 0;
}

Recommendations::Recommendations (LibraryRoom& r, SoundSession& s) : room (r), sounds (s) {}

void Recommendations::recommend (const juce::String& path, SimilarSongs::Weights weights,
                                 std::function<void (int)> done)
{
    asked = path;
    worker.post (question, { [this, path, weights, done = std::move (done)] (const std::stop_token&)
                             { fill (path, weights, done); } });
}

void Recommendations::reorder (SimilarSongs::Weights weights)
{
    if (asked.isNotEmpty())
        recommend (asked, weights);
}

void Recommendations::fill (const juce::String& path, SimilarSongs::Weights weights,
                            const std::function<void (int)>& done)
{
    SimilarSongs::Options options;
    options.limit = limit;
    options.weights = weights;
    options.isLeftOut = [this] (const juce::String& other) { return room.history.isPlayed (other); };
    auto found = SimilarSongs::find (room.database, sounds, path, options);
    SongList list (SongListKind::recommendation);
    for (const auto& song : found)
    {
        SongListEntry entry;
        entry.songId = song.songId;
        list.add (entry);
    }
    const auto count = static_cast<int> (found.size());
    {
        const std::scoped_lock scope (lock);
        songs = std::move (found);
    }
    // A list in memory: nothing of it fails but a closed library's, which shows nothing.
    juce::ignoreUnused (room.database.clearRecommendation());
    juce::ignoreUnused (room.database.addListToRecommendation (&list));
    room.watch.tell ({ .lists = true });
    if (done != nullptr)
        calls.post ([done, count] { done (count); });
}

juce::String Recommendations::reasonOf (int32_t songId) const
{
    const std::scoped_lock scope (lock);
    const auto found = std::find_if (songs.begin(), songs.end(),
                                     [songId] (const SimilarSong& song) { return song.songId == songId; });
    return found != songs.end() ? found->reason() : juce::String();
}

void Recommendations::settle()
{
    worker.wait();
    calls.deliver();
    room.settle();
}
