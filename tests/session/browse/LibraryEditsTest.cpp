#include "BrowseFixture.h"

#include "disk/FailingDisk.h"
#include "session/browse/LibraryFaults.h"

using testing::ElementsAre;

namespace
{
/** The disk is there before the library that lies on it. */
struct OnFailingDisk
{
    const FailingDisk disk;
};

struct Edits : BrowseFixture
{
    const std::vector<int32_t> songs = addSongs (5);
    const ListRef automix { SongListKind::automix };
    ListRef playlist = create ("p", { songs[0], songs[1], songs[0] });

    ListRef create (const char* name, const std::vector<int32_t>& ids)
    {
        ListRef made { SongListKind::playlist };
        room.edits.create (name, ids,
                           [&] (int code, int32_t id)
                           {
                               EXPECT_EQ (code, 0);
                               made.id = id;
                           });
        room.edits.settle();
        return made;
    }

    std::vector<int32_t> entriesOf (const ListRef& list)
    {
        ListContent content;
        EXPECT_EQ (database.readList (list, content), 0);
        std::vector<int32_t> ids;
        for (const auto& entry : content.entries)
            ids.push_back (entry.entryId);
        return ids;
    }

    void undo()
    {
        room.edits.undo ([] (int code) { EXPECT_EQ (code, 0); });
        room.edits.settle();
    }
};

struct EditsOnAFullDisk : OnFailingDisk, Edits
{
};
}

TEST_F (Edits, DoWhatTheySayAndAreTakenBackOneByOneToTheLastId)
{
    const auto other = create ("q", { songs[4] });
    auto& edits = room.edits;
    const auto ids = entriesOf (playlist);
    std::vector<int32_t> placed;
    const auto place = [&] (int code, const std::vector<int32_t>& made)
    {
        EXPECT_EQ (code, 0);
        placed = made;
    };
    const struct
    {
        std::function<void()> edit;
        ListRef list;
        std::vector<int32_t> expected;
        const char* text;
    } steps[] {
        { [&] {
             edits.append (playlist, { songs[2], songs[3] }, place);
         },
          playlist,
          { 1, 2, 1, 3, 4 },
          "Add 2 songs to p" },
        { [&] { edits.remove (playlist, { ids[0] }); }, playlist, { 2, 1, 3, 4 }, "Remove 1 song from p" },
        { [&] { edits.insert (playlist, 1, { songs[4] }, place); },
          playlist,
          { 2, 5, 1, 3, 4 },
          "Add 1 song to p" },
        { [&] {
             edits.move (playlist, { ids[1], placed[0] }, 4, place);
         },
          playlist,
          { 1, 3, 2, 5, 4 },
          "Move 2 songs in p" },
        { [&] {
             edits.reorder (playlist, { placed[1], placed[0] });
         },
          playlist,
          { 5, 2, 1, 3, 4 },
          "Put p in another order" },
        { [&] { edits.append (automix, { .kind = SongListKind::playlist, .id = playlist.id }, {}); },
          automix,
          { 5, 2, 1, 3, 4 },
          "Add 5 songs to the automix list" },
        { [&] { edits.clear (playlist); }, playlist, {}, "Clear p" },
        { [&] { edits.append (other, { songs[0] }); }, other, { 5, 1 }, "Add 1 song to q" },
        { [&] { edits.rename (other, "r's", {}); }, other, { 5, 1 }, "Rename q" },
        { [&] { edits.deleteList (playlist); }, playlist, {}, "Delete p" },
        { [&] {
             edits.deleteList ({ SongListKind::smartPlaylist, 2 });
         },
          automix,
          { 5, 2, 1, 3, 4 },
          "Delete Recently Added" },
    };
    std::vector<std::string> states;
    for (const auto& step : steps)
    {
        states.push_back (stored());
        step.edit();
        edits.settle();
        EXPECT_EQ (songsOf (step.list), step.expected) << step.text;
        EXPECT_EQ (edits.undoText(), step.text);
        EXPECT_NE (stored(), states.back()) << step.text;
    }
    for (auto state = states.rbegin(); state != states.rend(); ++state)
    {
        const auto text = edits.undoText();
        undo();
        EXPECT_EQ (stored(), *state) << text;
    }
}

TEST_F (Edits, TakenBackLeaveWhatOthersDidSince)
{
    const auto ids = entriesOf (playlist);
    room.edits.remove (playlist, { ids[1] });
    room.edits.settle();
    SongDatabase window (file);
    EXPECT_EQ (window.addFilesToPlaylist (playlist.id, { "/music/3" }), 0);
    EXPECT_EQ (window.removeEntries (playlist.id, std::array { ids[0] }), 0);
    undo();
    EXPECT_THAT (songsOf (playlist), ElementsAre (songs[1], songs[0], songs[3]));

    room.edits.deleteList (playlist);
    room.edits.settle();
    int32_t taken = -1;
    EXPECT_EQ (window.createPlaylist ("another", nullptr, 9, &taken), 0);
    ASSERT_EQ (taken, playlist.id) << "SQLite gives the number again";
    undo();
    EXPECT_THAT (songsOf ({ SongListKind::playlist, taken }), ElementsAre());
    EXPECT_THAT (songsOf ({ SongListKind::playlist, taken + 1 }), ElementsAre (songs[1], songs[0], songs[3]));
}

TEST_F (Edits, AreRememberedToTheLast32)
{
    for (int i = 0; i < 40; ++i)
        room.edits.append (automix, { songs[0] });
    room.edits.settle();
    for (int i = 0; i < 40; ++i)
        room.edits.undo();
    room.edits.settle();
    EXPECT_FALSE (room.edits.canUndo());
    EXPECT_EQ (songsOf (automix).size(), 8u);
}

TEST_F (Edits, OfALockedFileSayOneSentenceAndLoseNothing)
{
    const auto before = stored();
    database.setPatience (1);
    SongDatabase window (file);
    auto codes = std::vector<int>();
    {
        const auto held = window.beginTransaction();
        const auto note = [&] (int code) { codes.push_back (code); };
        room.edits.clear (playlist, note);
        room.edits.deleteSongs ({ songs[0] }, note);
        room.edits.setRating ({ songs[0] }, 5, note);
        room.edits.undo (note);
        room.edits.settle();
    }
    EXPECT_THAT (codes, testing::AllOf (testing::SizeIs (4), testing::Each (LibraryCode::busy)));
    EXPECT_EQ (stored(), before);
    EXPECT_TRUE (LibraryFaults::sentence (LibraryCode::busy).startsWith ("Another program"));
    EXPECT_EQ (room.edits.undoText(), "Create p") << "still to be taken back";
}

TEST_F (Edits, ThatWaitForALockKeepNoLayoutAway)
{
    SongDatabase window (file);
    std::vector<juce::String> seen;
    const auto load = [&] (ListRef list)
    {
        room.edits.loadLayout (list, [&seen] (const juce::String& layout, const juce::String& selection)
                               { seen.push_back (layout + "|" + selection); });
    };
    room.edits.saveLayout (playlist, "<before/>", "<one/>");
    room.edits.settle();
    {
        const auto held = window.beginTransaction();
        room.edits.setRating ({ songs[0] }, 5);
        room.edits.saveLayout (playlist, "<after/>", "<two/>");
        load (playlist);
        load ({ SongListKind::library });
        room.edits.settleViews();
        EXPECT_TRUE (room.edits.isBusy());
        EXPECT_THAT (seen, testing::UnorderedElementsAre ("<after/>|<two/>", testing::_));
    }
    room.edits.settle();
    load (playlist);
    room.edits.settle();
    EXPECT_EQ (seen[2], "<after/>|<two/>") << "stored by now";
}

TEST_F (Edits, MoveListsInTheTreeThatShareAPlace)
{
    SongDatabase other (file);
    EXPECT_EQ (other.createPlaylist ("q", nullptr, 1), 0);
    EXPECT_EQ (other.createPlaylist ("r", nullptr, 1), 0);
    std::vector<SourceItem> before, after;
    database.listPlaylists (before);
    room.edits.moveInTree ({ SongListKind::playlist, before[2].id }, -1);
    room.edits.moveInTree ({ SongListKind::playlist, before[0].id }, -1);
    room.edits.settle();
    database.listPlaylists (after);
    EXPECT_EQ (after[1].id, before[2].id);
    EXPECT_EQ (after[2].id, before[1].id);
    EXPECT_EQ (after[0].id, before[0].id) << "the first stays";
}

TEST_F (EditsOnAFullDisk, SayOneSentenceAndLoseNothing)
{
    auto& edits = room.edits;
    const auto ids = entriesOf (playlist);
    using Done = LibraryEdits::Done;
    const std::function<void (Done)> cases[] {
        [&] (Done done) { edits.remove (playlist, { ids[1] }, done); },
        [&] (Done done) { edits.clear (playlist, done); },
        [&] (Done done) {
            edits.reorder (playlist, { ids[2], ids[0], ids[1] }, done);
        },
        [&] (Done done) { edits.rename (playlist, "another", done); },
        [&] (Done done) { edits.deleteList (playlist, done); },
    };
    const auto before = stored();
    for (const auto& edit : cases)
    {
        auto code = -1;
        for (int writes = 0; code != 0; ++writes)
        {
            ASSERT_LT (writes, 100);
            const auto undoText = edits.undoText();
            FailingDisk::fillAfter (writes);
            edit ([&code] (int c) { code = c; });
            edits.settle();
            const auto isFull = FailingDisk::makeRoom();
            if (code == 0)
                break;
            EXPECT_TRUE (isFull);
            EXPECT_NE (LibraryFaults::sentence (code), "");
            EXPECT_EQ (stored(), before) << "after " << writes << " writes";
            EXPECT_EQ (edits.undoText(), undoText);
        }
        // An undo that finds no room stays to be done.
        FailingDisk::fillAfter (0);
        edits.undo ([&code] (int c) { code = c; });
        edits.settle();
        EXPECT_TRUE (FailingDisk::makeRoom());
        EXPECT_NE (code, 0);
        undo();
        EXPECT_EQ (stored(), before);
    }
}

TEST_F (Edits, OfRulesAreTakenBackUnlessAnotherHandHasThemSince)
{
    ListRef smart { SongListKind::smartPlaylist };
    room.edits.createSmart ("s", " (rating > 3); ", "<old/>", [&] (int, int32_t id) { smart.id = id; });
    room.edits.settle();
    const auto rules = [&]
    {
        juce::String xml;
        room.edits.loadSmart (smart.id,
                              [&xml] (int code, const juce::String& read) { xml = code == 0 ? read : "?"; });
        room.edits.settle();
        return xml;
    };
    room.edits.setSmart (smart.id, " (year > 1990); ", "<new/>");
    EXPECT_EQ (rules(), "<new/>");
    undo();
    EXPECT_EQ (rules(), "<old/>");
    room.edits.setSmart (smart.id, " (year > 1990); ", "<new/>");
    room.edits.settle();
    SongDatabase window (file);
    EXPECT_EQ (window.setSmartRules (smart.id, "<theirs/>"), 0);
    undo();
    EXPECT_EQ (rules(), "<theirs/>");
}
