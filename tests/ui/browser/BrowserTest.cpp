#include "../UiBench.h"
#include "shared/ScriptedPrompts.h"
#include "ui/browser/rating/PlaylistTableItemRating.h"
#include "ui/browser/smart/SmartPlaylistEditor.h"
#include "ui/browser/table/TableColumn.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
using Key = juce::KeyPress;

/** A browser of its own over an engine and a library of a few songs. */
struct BrowserBench
{
    BrowserBench()
    {
        Session::Options options;
        options.folders.root = bench.folder;
        options.library.folder = bench.folder.file ("Songs");
        options.prompts = prompts;
        session = std::make_shared<Session> (std::move (options));
        auto& library = session->browser()->database;
        for (const auto* line :
             { "Zulu|Ada|120|10A", "Alpha|Bob|126|D", "Mike|Cid|90|Am", "Deep Alpha|Dee|60|" })
        {
            const auto parts = juce::StringArray::fromTokens (line, "|", {});
            SongRecord song;
            song[SongColumn::title] = parts[0];
            song[SongColumn::artist] = parts[1];
            song[SongColumn::bpm] = parts[2];
            song[SongColumn::key] = parts[3];
            song[SongColumn::filename] = bench.folder.file (parts[0] + ".wav").getFullPathName();
            bench.halfLoudTrack (1.0).copyFileTo (juce::File (song[SongColumn::filename]));
            EXPECT_EQ (library.insertSong (song), 0);
        }
        session->browser()->watch.look();
        browser = std::make_unique<SongManager> (bench.engine, session.get());
        browser->setBounds (0, 0, 1280, 400);
        browser->setVisible (true);
        browser->settle();
    }

    juce::StringArray titles()
    {
        juce::StringArray all;
        auto& library = session->browser()->database;
        for (const auto& entry : browser->songs().list().entries())
        {
            juce::String title;
            EXPECT_EQ (library.readField (SongField::title, entry.songId, title), 0);
            all.add (title);
        }
        return all;
    }

    void search (const juce::String& text)
    {
        browser->searchField().setText (text);
        browser->settle();
    }

    void press (int key, int modifiers = 0)
    {
        EXPECT_TRUE (browser->songs().keyPressed (Key (key, juce::ModifierKeys (modifiers), 0)));
        browser->settle();
    }

    void command (const char* constant, float value = 1.0f)
    {
        bench.engine.setParameter (CommandTable::numberOf (constant), value);
        browser->PollingView::refresh();
        browser->settle();
    }

    int32_t makePlaylist (const juce::String& name, std::vector<int32_t> songs)
    {
        int32_t made = -1;
        session->browser()->edits.create (name, std::move (songs), [&made] (int, int32_t id) { made = id; });
        browser->settle();
        return made;
    }

    juce::String onDeck (int deck)
    {
        bench.wait (deck);
        return juce::File (bench.engine.decks.deck (deck)->texts().filePath).getFileNameWithoutExtension();
    }

    std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    UiBench bench { prompts };
    std::shared_ptr<Session> session;
    std::unique_ptr<SongManager> browser;
};

juce::StringArray wordsOf (const juce::PopupMenu& menu)
{
    juce::StringArray words;
    for (juce::PopupMenu::MenuItemIterator item (menu); item.next();)
        words.add (item.getItem().text);
    return words;
}
}

TEST (Browser, ShowsTheLibraryByArtistAndSortsByAColumn)
{
    BrowserBench b;
    EXPECT_EQ (b.titles().joinIntoString (","), "Zulu,Alpha,Mike,Deep Alpha");
    b.browser->songs().sortBy (TableColumn::of (SongField::bpm), false);
    b.browser->settle();
    EXPECT_EQ (b.titles().joinIntoString (","), "Alpha,Zulu,Mike,Deep Alpha");
    ASSERT_GT (b.makePlaylist ("Warm Up", { 1, 2, 3, 4 }), 0);
    for (const auto* source : { "Library", "Warm Up" })
    {
        ASSERT_TRUE (b.browser->showSourceNamed (source));
        b.browser->songs().sortBy (TableColumn::of (SongField::key), true);
        b.browser->settle();
        EXPECT_EQ (b.titles().joinIntoString (","), "Deep Alpha,Mike,Zulu,Alpha")
            << "around the circle of fifths";
    }
}

TEST (Browser, FindsWordsInAnyOrderAndRangesAndNothingWithoutFields)
{
    BrowserBench b;
    for (const auto& [text, found] :
         std::map<juce::String, juce::String> { { "alpha", "Alpha,Deep Alpha" },
                                                { "alpha dee", "Deep Alpha" },
                                                { "bpm:100-130", "Zulu,Alpha" },
                                                { "  ", "Zulu,Alpha,Mike,Deep Alpha" },
                                                { "nobody", "" } })
    {
        b.search (text);
        EXPECT_EQ (b.titles().joinIntoString (","), found) << text;
    }
    b.browser->searchField().setFields ({});
    b.search ("alpha");
    EXPECT_EQ (b.titles().size(), 0);
}

TEST (Browser, SourcesKeepLayoutAndSelection)
{
    BrowserBench b;
    const auto id = b.makePlaylist ("Warm Up", { 3, 1, 2 });
    ASSERT_GT (id, 0);
    ASSERT_TRUE (b.browser->showSourceNamed ("Warm Up"));
    EXPECT_EQ (b.titles().joinIntoString (","), "Mike,Zulu,Alpha");
    auto& table = b.browser->songs();
    EXPECT_TRUE (table.getHeader().isColumnVisible (TableColumn::order));
    table.getHeader().setColumnWidth (TableColumn::of (SongField::title), 321);
    table.selectRow (2);
    ASSERT_TRUE (b.browser->showSourceNamed ("Library"));
    EXPECT_FALSE (table.getHeader().isColumnVisible (TableColumn::order));
    EXPECT_NE (table.getHeader().getColumnWidth (TableColumn::of (SongField::title)), 321);
    ASSERT_TRUE (b.browser->showSourceNamed ("Warm Up"));
    EXPECT_EQ (table.getHeader().getColumnWidth (TableColumn::of (SongField::title)), 321);
    EXPECT_EQ (table.getSelectedRow(), 2);
}

TEST (Browser, AColumnGetsTheWidthOfItsTexts)
{
    BrowserBench b;
    auto& table = b.browser->songs();
    const auto title = TableColumn::of (SongField::title), artist = TableColumn::of (SongField::artist);
    const auto width = [&table] (int column) { return table.getHeader().getColumnWidth (column); };
    for (const auto before : { 30, 600 })
    {
        table.getHeader().setColumnWidth (title, before);
        table.getHeader().setColumnWidth (artist, before);
        table.autoSizeColumn (title);
        EXPECT_EQ (width (artist), before);
        table.autoSizeAllColumns();
        EXPECT_GT (width (title), width (artist)) << "of long texts, from " << before;
        EXPECT_LT (width (title), 200) << "from " << before;
        EXPECT_GT (width (artist), 30) << "its name is longer than its texts";
    }
    table.setFontSize (22);
    const auto small = width (title);
    table.autoSizeColumn (title);
    EXPECT_GT (width (title), small);
}

TEST (Browser, MenusHaveTheirWordsInTheirOrder)
{
    BrowserBench b;
    auto& table = b.browser->songs();
    table.selectRow (0);
    const auto row = wordsOf (table.rowMenu (0, TableColumn::status));
    EXPECT_EQ (row.joinIntoString (","),
               "Edit,Load to Deck 1,Load to Deck 2,Append To Automix List,Preview,Reset Played Status,"
               "Reset Played Statistics,Reload Tags,Show in Explorer,Analyze,Find Similar Songs,Remove,,"
               "Add To Playlist");
    b.bench.engine.settings.editor[EditorPreference::fourDeckMode] = 1;
    EXPECT_TRUE (wordsOf (table.rowMenu (0, TableColumn::status)).contains ("Load to Deck 4"));

    using Role = TreeNode::Role;
    auto& tree = b.browser->sources();
    const auto words = [&tree] (Role role) {
        return wordsOf (tree.menuOf ({ role, "x", 1 })).joinIntoString (",");
    };
    EXPECT_TRUE (words (Role::library).startsWith ("Import Music Folders,Create Backup,Clear Collection"));
    EXPECT_EQ (words (Role::playlists), "Create Playlist,Import Playlist");
    EXPECT_EQ (words (Role::playlist),
               "Delete,Rename,Move Up,Move Down,Append to Automix List,Export,Copy To Play Order");
    EXPECT_EQ (words (Role::smartPlaylist),
               "Edit Smart Playlist,Delete,Rename,Move Up,Move Down,Append to Automix List,Export");
    EXPECT_EQ (words (Role::automix), "Clear List,Export,Continue with Similar Songs");
}

TEST (Browser, RemovingAsksAndGoesByTheSource)
{
    BrowserBench b;
    ASSERT_GT (b.makePlaylist ("Warm Up", { 1, 2, 1 }), 0);
    ASSERT_TRUE (b.browser->showSourceNamed ("Warm Up"));
    auto& table = b.browser->songs();
    table.selectRow (2);
    b.press (Key::deleteKey);
    EXPECT_EQ (b.prompts->asked[0],
               "REMOVE ITEM|Are you sure you want to remove the selected song from the list?");
    EXPECT_EQ (table.list().size(), 3) << "the answer was no";
    b.prompts->yes = true;
    b.press (Key::deleteKey);
    EXPECT_EQ (b.titles().joinIntoString (","), "Zulu,Alpha") << "of two equal songs the chosen one";
    EXPECT_TRUE (b.session->browser()->edits.canUndo());
    b.session->browser()->edits.undo();
    b.browser->settle();
    EXPECT_EQ (b.titles().joinIntoString (","), "Zulu,Alpha,Zulu");

    ASSERT_TRUE (b.browser->showSourceNamed ("Library"));
    table.selectRangeOfRows (0, 1);
    b.press (Key::deleteKey);
    EXPECT_EQ (b.prompts->asked[b.prompts->asked.size() - 1],
               "REMOVE ITEMS|Are you sure you want to remove 2 songs from your library?");
    EXPECT_EQ (table.list().size(), 2);
}

TEST (Browser, RowsBelongToTheirListUntilThoseOfTheNextOneAreThere)
{
    BrowserBench b;
    const auto id = b.makePlaylist ("Warm Up", { 1, 2, 3, 4 });
    ASSERT_GT (id, 0);
    ASSERT_TRUE (b.browser->showSourceNamed ("Library"));
    auto& table = b.browser->songs();
    table.selectRow (0);
    table.setSource ({ SongListKind::playlist, id, "Warm Up" });
    ASSERT_EQ (table.getSelectedRow(), 0) << "the old rows are still there";
    b.prompts->yes = true;
    b.press (Key::deleteKey);
    EXPECT_EQ (b.prompts->asked[0],
               "REMOVE ITEM|Are you sure you want to remove the selected song from your library?");
    EXPECT_EQ (b.titles().size(), 3);
    ASSERT_TRUE (b.browser->showSourceNamed ("Library"));
    EXPECT_EQ (b.titles().size(), 3);
}

TEST (Browser, ReturnLoadsTheFirstFreeDeckAndKeysLoadTheirs)
{
    BrowserBench b;
    auto& table = b.browser->songs();
    table.selectRow (1);
    b.press (Key::returnKey);
    EXPECT_EQ (b.onDeck (0), "Alpha");
    b.press (Key::downKey);
    b.press (Key::returnKey);
    EXPECT_EQ (b.onDeck (1), "Mike") << "an empty deck comes first";
    b.press ('1', juce::ModifierKeys::ctrlModifier);
    EXPECT_EQ (b.onDeck (0), "Mike");
    for (int deck = 0; deck < 2; ++deck)
        b.bench.engine.setParameter (CommandTable::numberOf ("PLAY_PAUSE_A") + deck, 1.0f);
    b.press (Key::returnKey);
    EXPECT_TRUE (b.prompts->asked[b.prompts->asked.size() - 1].startsWith ("No free deck|"));
}

TEST (Browser, ControllersMoveLoadAndKeepTheirOrder)
{
    BrowserBench b;
    auto& table = b.browser->songs();
    table.selectRow (0);
    b.bench.engine.setParameter (CommandTable::numberOf ("PLAYLIST_SELECT"), CommandCall::stepUp);
    b.bench.engine.setParameter (CommandTable::numberOf ("PLAYLIST_DOWN"), 1.0f);
    b.bench.engine.setParameter (CommandTable::numberOf ("PLAYLIST_LOAD_B"), 1.0f);
    b.command ("PLAYLIST_UP");
    EXPECT_EQ (table.getSelectedRow(), 1);
    EXPECT_EQ (b.onDeck (1), "Mike");
    b.command ("PLAYLIST_SELECT", CommandCall::stepDown);
    EXPECT_EQ (table.getSelectedRow(), 0);

    b.command ("DIRECTORY_DOWN");
    EXPECT_EQ (b.browser->sources().selectedSource()->name, "Albums");
    b.command ("DIRECTORY_UP");
    EXPECT_EQ (b.browser->sources().selectedSource()->name, "Library");
}

TEST (Browser, ControllersOfAnEngineMoveItsOwnBrowserAlone)
{
    BrowserBench one, other;
    for (auto* b : { &one, &other })
        b->browser->songs().selectRow (0);
    one.bench.engine.setParameter (CommandTable::numberOf ("PLAYLIST_DOWN"), 1.0f);
    other.command ("PLAYLIST_DOWN");
    other.command ("PLAYLIST_DOWN");
    EXPECT_EQ (one.browser->songs().getSelectedRow(), 1) << "whoever hands the requests on";
    EXPECT_EQ (other.browser->songs().getSelectedRow(), 2);
}

TEST (Browser, AStarIsOneClickAndTheLastOneGoesOut)
{
    BrowserBench b;
    PlaylistTableItemRating stars;
    stars.setSize (90, 24);
    stars.show (2, 1);
    int rated = -1;
    stars.onRate = [&rated] (int row, int count) { rated = row * 10 + count; };
    const auto click = [&stars] (float x)
    {
        stars.mouseDown (mouseAt (stars, { x, 12.0f }));
        stars.mouseUp (mouseAt (stars, { x, 12.0f }));
    };
    click (4.0f + 3.5f * 16.0f);
    EXPECT_EQ (rated, 24);
    click (4.0f + 3.5f * 16.0f);
    EXPECT_EQ (rated, 23);
    click (1.0f);
    EXPECT_EQ (rated, 20);
}

TEST (Browser, APlayingDeckAsksBeforeItLosesItsTrack)
{
    BrowserBench b;
    const auto file = b.bench.halfLoudTrack();
    b.bench.load (file, 0);
    b.bench.engine.setParameter (CommandTable::numberOf ("PLAY_PAUSE_A"), 1.0f);
    b.browser->songs().selectRow (0);
    const auto loaded = [&]
    {
        b.press ('1', juce::ModifierKeys::ctrlModifier);
        return b.onDeck (0);
    };
    EXPECT_EQ (loaded(), "Half Loud") << "the answer is no";
    b.prompts->yes = true;
    b.bench.engine.settings.lockLoadedDecks = 1;
    EXPECT_EQ (loaded(), "Half Loud") << "locked";
    EXPECT_EQ (b.prompts->asked.size(), 1) << "a locked deck doesn't ask";
    b.bench.engine.settings.lockLoadedDecks = 0;
    EXPECT_EQ (loaded(), "Zulu") << "the answer is yes";
}

TEST (Browser, RulesComeBackOutOfTheirEditorAsTheyWentIn)
{
    const juce::ScopedJuceInitialiser_GUI gui;
    const auto rule = [] (SongField field, SmartOperator how, const char* value1, const char* value2 = "") {
        return SmartRule { static_cast<int32_t> (field), static_cast<int32_t> (how), value1, value2 };
    };
    SmartPlaylist given;
    given.rules = { rule (SongField::title, SmartOperator::contains, "it's"),
                    rule (SongField::bpm, SmartOperator::isInTheRange, "118", "126.5"),
                    rule (SongField::rating, SmartOperator::isGreaterThan, "3"),
                    rule (SongField::time, SmartOperator::isLessThan, "225"),
                    rule (SongField::lastPlayed, SmartOperator::isNotInTheLast, "2", "1"),
                    rule (SongField::dateAdded, SmartOperator::isAfter,
                          juce::String (juce::Time (2026, 1, 3, 0, 0).toMilliseconds() / 1000).toRawUTF8()) };
    given.matchAll = false;
    given.limited = true;
    given.limit = 25;
    given.orderField = "playcount";
    given.ascending = false;
    juce::String sql, xml;
    SmartPlaylistEditor editor (
        given,
        [&] (const juce::String& query, const juce::String& rules)
        {
            sql = query;
            xml = rules;
        },
        [] {});
    EXPECT_EQ (editor.playlist(), given);
    EXPECT_EQ (RuleValues::fromField ("31-13-2026", RuleValues::Form::date), "");
    EXPECT_EQ (RuleValues::fromField ("x:20", RuleValues::Form::time), "");

    editor.keyPressed (Key (Key::returnKey));
    EXPECT_EQ (sql, buildSql (given));
    EXPECT_EQ (xml, buildXml (given));
    SmartPlaylistEditor empty (
        {}, [&] (const auto&, const auto&) { FAIL() << "nothing to save"; }, [] {});
    empty.keyPressed (Key (Key::returnKey));
}

TEST (Browser, AHistoryHasColumnsOfItsOwnAndTakesNothingOutOfTheLibrary)
{
    BrowserBench b;
    auto& room = *b.session->browser();
    EXPECT_TRUE (room.history.note ({ juce::Time (2026, 0, 2, 3, 4, 5), 1,
                                      b.bench.folder.file ("Alpha.wav").getFullPathName(), "Alpha", "Bob" }));
    room.watch.tell ({ .lists = true });
    b.browser->settle();
    auto& table = b.browser->songs();
    ASSERT_TRUE (b.browser->showSourceNamed ("2026-01-02 03:04"));
    EXPECT_EQ (b.titles().joinIntoString (","), "Alpha");
    EXPECT_TRUE (table.getHeader().isColumnVisible (TableColumn::playedAt));
    table.selectRow (0);
    b.prompts->yes = true;
    b.press (Key::deleteKey);
    EXPECT_EQ (table.list().size(), 1);
    ASSERT_TRUE (b.browser->showSourceNamed ("Library"));
    EXPECT_EQ (table.list().size(), 4);
    EXPECT_FALSE (table.getHeader().isColumnVisible (TableColumn::playedAt));
}

TEST (Browser, SaysOfATaskWhatIsDoneLeftAndBrokenOff)
{
    using State = LibraryJob::State;
    LibraryJob job;
    job.title = "Analyzing";
    job.state = State::running;
    job.item = "/music/a b.mp3";
    job.done = 3;
    job.total = 12;
    EXPECT_EQ (JobLine::textOf (job), "Analyzing [3/12] : a b.mp3");
    job.secondsLeft = 9;
    EXPECT_EQ (JobLine::textOf (job), "Analyzing [3/12] : a b.mp3   about 9 s");
    job.state = State::cancelled;
    EXPECT_EQ (JobLine::textOf (job), "Analyzing: cancelled.") << "before it began";
    job.summary = "3 songs analysed.";
    EXPECT_EQ (JobLine::textOf (job), "Analyzing: cancelled. 3 songs analysed.");
    job.state = State::ended;
    EXPECT_EQ (JobLine::textOf (job), "3 songs analysed.");
}
