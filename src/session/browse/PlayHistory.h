#pragma once

#include "library/songs/SourceItem.h"

#include <juce_core/juce_core.h>

#include <mutex>
#include <optional>
#include <vector>

/** A song that a deck has played. */
struct PlayedSong
{
    juce::Time time;
    int deck = 0; ///< 0 to 3
    juce::String path, title, artist;
};

/** The songs that were played, a file a session: lines of time, deck, path, title and artist with tabs between, written at
    once, so that a program that is killed loses none. A session begins with its first song. The library itself knows
    nothing of it, as other programs read its tables. Any thread that may block. */
class PlayHistory
{
public:
    /** @param folder   of the files; made with the first song */
    explicit PlayHistory (const juce::File& folder);

    /** Notes a song of this session. @returns false if the file can't be written; it is in the list all the same */
    bool note (const PlayedSong&);

    /** True if the song was played in this session, or in another window's that is still going on. */
    bool isPlayed (const juce::String& path) const;

    /** Forgets for isPlayed() that songs were played; the history keeps them. */
    void resetPlayed (const juce::StringArray& paths);

    /** All sessions, the newest first: their name is the time of their beginning, `id` names them to songs(). */
    std::vector<SourceItem> sessions() const;

    /** The songs of a session, in the order in which they were played; nothing for an unknown one. */
    std::vector<PlayedSong> songs (int32_t session) const;

    /** Writes a session as text with tabs (".txt", ".tsv"), as a playlist (".m3u", ".m3u8") or as a web page
        (".html", ".htm").
        @returns a sentence on why it can't be written, or nothing */
    juce::String exportTo (int32_t session, const juce::File&) const;

    /** Deletes a session that has ended. */
    bool remove (int32_t session);

    const juce::File folder;

private:
    static int32_t idOf (const juce::File&);
    static juce::String nameOf (const juce::File&);
    juce::File fileOf (int32_t session) const;

    mutable std::mutex lock;
    juce::File own; ///< this session's file; none before its first song
    std::vector<juce::String> played;
};
