#pragma once

#include "session/browse/LibraryRoom.h"
#include "session/similar/SimilarSongs.h"

#include <mutex>

/** Fills the recommendation list with songs that fit one, and keeps why. One per session, beside the library's room. */
class Recommendations
{
public:
    Recommendations (LibraryRoom&, SoundSession&);

    static constexpr size_t limit = 20;

    /** Replaces the list by the songs that fit a track and were not played in this session; for a track that was not
        analysed it becomes empty. Returns at once; the views hear of the change. Message thread.
        @param done   called on the message thread with the number of songs */
    void recommend (const juce::String& path, SimilarSongs::Weights,
                    std::function<void (int songs)> done = {});

    /** Asks the last question again with other weights. */
    void reorder (SimilarSongs::Weights);

    /** The reason why a song stands in the list, or nothing. Any thread that may block. */
    juce::String reasonOf (int32_t songId) const;

    /** Waits for what was asked, and tells of it. For programs without a message loop. */
    void settle();

private:
    void fill (const juce::String& path, SimilarSongs::Weights, const std::function<void (int)>& done);

    LibraryRoom& room;
    SoundSession& sounds;
    juce::String asked;
    mutable std::mutex lock; ///< of the songs
    std::vector<SimilarSong> songs;
    MessageCalls calls;
    Worker worker { "recommendations" }; ///< last: its jobs use all of the above
};
