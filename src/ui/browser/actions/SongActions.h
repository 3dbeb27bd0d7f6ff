#pragma once

#include "session/SongPreview.h"
#include "ui/browser/model/BrowserWorld.h"
#include "ui/browser/model/SongStatus.h"
#include "ui/browser/model/Source.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** Songs that a view has selected. */
struct SelectedSongs
{
    Source source;                 ///< in which they stand
    std::vector<int32_t> songIds;  ///< in their order
    std::vector<int32_t> entryIds; ///< of the rows of a list, as many as songs
    juce::StringArray paths;       ///< that are known, the one under the hand first

    bool isEmpty() const { return songIds.empty() && paths.isEmpty(); }
};

/** Carries out on songs what menus, keys and controllers ask for. Message thread. */
class SongActions
{
public:
    /** @param asker   while it is there, answers to questions count */
    SongActions (BrowserWorld&, const SongStatus&, juce::Component& asker);

    /** Loads a file, and asks before a playing deck loses its track. @param deck   0 to 3 */
    void load (const juce::String& path, int deck);

    /** Loads onto the first deck that is free, or says that none is. */
    void loadToFreeDeck (const juce::String& path);

    void appendToAutomix (const SelectedSongs&);

    /** The playlists, to any of which the songs are appended, and a new one. */
    juce::PopupMenu playlistMenu (const SelectedSongs&);

    /** Tells the playlists that there are. */
    std::function<std::vector<SourceItem>()> playlists;

    /** Asks for a name, and makes a playlist of songs. */
    std::function<void (std::vector<int32_t> songIds)> createPlaylist;

    /** Plays a song on the headphones; stops it if it is the one that plays. */
    void preview (const juce::String& path);

    void resetPlayedStatus (const SelectedSongs&);
    void resetPlayedStatistics (const SelectedSongs&);
    void reloadTags (const SelectedSongs&);
    void showInFolder (const juce::String& path);
    void analyse (const SelectedSongs&);

    /** Fills the recommendation list with songs that fit a track, and shows it. */
    void recommend (const juce::String& path);
    std::function<void()> showRecommendations; ///< may be left out

    /** The reason why a song stands in that list, or nothing. */
    juce::String matchOf (int32_t songId) const;

    /** Asks, and takes the songs out of their list; songs of no list out of the library. */
    void remove (const SelectedSongs&);

    /** The question of remove(): its title and its sentence. */
    struct Question
    {
        juce::String title, sentence;
    };
    static Question removalQuestion (const SelectedSongs&);

    void rate (int32_t songId, int stars);
    void edit (int32_t songId, SongField, const juce::String& text);

    /** Offers to take back the last edit of a list. */
    void addUndo (juce::PopupMenu&);

private:
    /** Of a browser without a session. */
    const std::unique_ptr<SongPreview> ownPlayer;

public:
    /** Plays on the headphones. */
    SongPreview& player;

private:
    LibraryEdits::Done done();
    void append (const SelectedSongs&, ListRef);
    void withPaths (const SelectedSongs&, std::function<void (const juce::StringArray&)>);

    BrowserWorld& world;
    const SongStatus& status;
    juce::Component& asker;
};
