#include "ui/browser/actions/SongActions.h"

#include "session/SimilarRoom.h"
#include "support/language/Translate.h"
#include "ui/browser/actions/EditAnswers.h"
#include "ui/decks/TrackLoad.h"

namespace
{
/** The preview that the session keeps for the engine, if it does. */
SongPreview* playerOf (const BrowserWorld& world)
{
    return world.session != nullptr ? world.session->previewOf (world.engine) : nullptr;
}
}

SongActions::SongActions (BrowserWorld& w, const SongStatus& s, juce::Component& a)
    : ownPlayer (playerOf (w) == nullptr ? std::make_unique<SongPreview> (w.engine.preview) : nullptr),
      player (ownPlayer != nullptr ? *ownPlayer : *playerOf (w)),
      world (w),
      status (s),
      asker (a)
{
}

LibraryEdits::Done SongActions::done()
{
    return EditAnswers::say (world, asker);
}

void SongActions::load (const juce::String& path, int deck)
{
    if (path.isNotEmpty() && deck >= 0 && deck < world.decks())
        TrackLoad::onto (world.engine, status.decks()[static_cast<size_t> (deck)], juce::File (path), asker);
}

void SongActions::loadToFreeDeck (const juce::String& path)
{
    const auto deck = TrackLoad::freeDeck (status.decks().first (static_cast<size_t> (world.decks())));
    if (deck >= 0)
        return load (path, deck);
    if (path.isNotEmpty() && world.prompts() != nullptr)
        world.prompts()->notify (
            tr ("No free deck"),
            tr ("All decks are playing. Stop one, or load onto one with its menu or key."));
}

void SongActions::append (const SelectedSongs& songs, ListRef list)
{
    if (world.room != nullptr && !songs.songIds.empty())
        world.room->edits.append (list, songs.songIds,
                                  [said = done()] (int code, const std::vector<int32_t>&) { said (code); });
}

void SongActions::appendToAutomix (const SelectedSongs& songs)
{
    append (songs, { SongListKind::automix, -1 });
}

juce::PopupMenu SongActions::playlistMenu (const SelectedSongs& songs)
{
    juce::PopupMenu menu;
    for (const auto& list : playlists != nullptr ? playlists() : std::vector<SourceItem>())
        menu.addItem (list.name,
                      [this, songs, id = list.id] {
                          append (songs, { SongListKind::playlist, id });
                      });
    if (menu.getNumItems() > 0)
        menu.addSeparator();
    menu.addItem (tr ("Create Playlist"), createPlaylist != nullptr, false,
                  [this, ids = songs.songIds] { createPlaylist (ids); });
    return menu;
}

void SongActions::preview (const juce::String& path)
{
    if (path.isNotEmpty())
        player.toggle (path);
}

void SongActions::resetPlayedStatus (const SelectedSongs& songs)
{
    withPaths (songs,
               [this] (const juce::StringArray& paths)
               {
                   world.room->history.resetPlayed (paths);
                   asker.repaint();
               });
}

void SongActions::resetPlayedStatistics (const SelectedSongs& songs)
{
    if (world.room != nullptr)
        world.room->edits.clearPlayed (songs.songIds, done());
}

void SongActions::reloadTags (const SelectedSongs& songs)
{
    if (world.room != nullptr)
        world.room->edits.reloadTags (songs.songIds, done());
}

void SongActions::showInFolder (const juce::String& path)
{
    if (path.isNotEmpty())
        juce::File (path).revealToUser();
}

void SongActions::analyse (const SelectedSongs& songs)
{
    withPaths (songs, [this] (const juce::StringArray& paths)
               { world.room->jobs.analyse (world.engine.batchAnalysis, paths); });
}

void SongActions::recommend (const juce::String& path)
{
    if (world.session == nullptr || path.isEmpty())
        return;
    auto& similar = SimilarRoom::of (*world.session);
    if (auto* const list = similar.recommendations())
        list->recommend (path, similar.weights(),
                         [this, there = juce::Component::SafePointer (&asker)] (int)
                         {
                             if (there != nullptr && showRecommendations != nullptr)
                                 showRecommendations();
                         });
}

juce::String SongActions::matchOf (int32_t songId) const
{
    auto* const list =
        world.session != nullptr ? SimilarRoom::of (*world.session).recommendations() : nullptr;
    return list != nullptr ? list->reasonOf (songId) : juce::String();
}

/** Calls with the paths of all songs, of which a view knows but those in sight. */
void SongActions::withPaths (const SelectedSongs& songs, std::function<void (const juce::StringArray&)> take)
{
    if (world.room == nullptr || songs.isEmpty())
        return;
    if (static_cast<size_t> (songs.paths.size()) >= songs.songIds.size() || isForeign (songs.source.kind))
        return take (songs.paths);
    world.room->edits.pathsOf (
        songs.songIds,
        [take = std::move (take),
         alive = juce::Component::SafePointer<juce::Component> (&asker)] (const juce::StringArray& paths)
        {
            if (alive != nullptr)
                take (paths);
        });
}

SongActions::Question SongActions::removalQuestion (const SelectedSongs& songs)
{
    const auto count = static_cast<int> (songs.songIds.size());
    const auto isList = songs.source.isList();
    return { trPlural ("REMOVE ITEM", "REMOVE ITEMS", count),
             isList ? trPlural ("Are you sure you want to remove the selected song from the list?",
                                "Are you sure you want to remove %1 songs from the list?", count)
                    : trPlural ("Are you sure you want to remove the selected song from your library?",
                                "Are you sure you want to remove %1 songs from your library?", count) };
}

void SongActions::remove (const SelectedSongs& songs)
{
    if (world.room == nullptr || world.prompts() == nullptr || songs.songIds.empty()
        || isForeign (songs.source.kind) || songs.source.kind == SongListKind::history)
        return;
    const auto question = removalQuestion (songs);
    world.prompts()->askYesNo (
        question.title, question.sentence,
        [this, songs, alive = juce::Component::SafePointer<juce::Component> (&asker)] (bool yes)
        {
            if (!yes || alive == nullptr || world.room == nullptr)
                return;
            if (songs.source.isList())
                world.room->edits.remove (songs.source.list(), songs.entryIds, done());
            else
                world.room->edits.deleteSongs (songs.songIds, done());
        });
}

void SongActions::rate (int32_t songId, int stars)
{
    if (world.room != nullptr)
        world.room->edits.setRating ({ songId }, stars, done());
}

void SongActions::edit (int32_t songId, SongField field, const juce::String& text)
{
    if (world.room != nullptr)
        world.room->edits.setField (songId, field, text, done());
}

void SongActions::addUndo (juce::PopupMenu& menu)
{
    EditAnswers::addUndo (menu, world, asker);
}
