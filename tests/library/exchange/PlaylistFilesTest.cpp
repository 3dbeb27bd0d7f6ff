#include "library/database/SongDatabase.h"
#include "library/exchange/ExportPlaylist.h"
#include "library/exchange/ImportPlaylist.h"
#include "shared/TemporaryFolder.h"
#include "shared/Watching.h"

namespace
{
class PlaylistFiles : public testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ (database.open (library), LibraryCode::ok); }

    juce::File song (const juce::String& name, const juce::String& title, const juce::String& artist,
                     int seconds)
    {
        const auto file = folder.file (name);
        file.create();
        SongRecord record;
        record[SongColumn::filename] = file.getFullPathName();
        record[SongColumn::title] = title;
        record[SongColumn::artist] = artist;
        record[SongColumn::album] = "Album";
        record[SongColumn::bpm] = "128.5";
        record[SongColumn::duration] = juce::String (seconds);
        record[SongColumn::filesize] = "1024";
        EXPECT_EQ (database.insertSong (record), LibraryCode::ok);
        return file;
    }

    SongList listOf (std::initializer_list<juce::File> files)
    {
        SongList list (SongListKind::playlist);
        list.name = "A & B";
        for (const auto& file : files)
        {
            SongListEntry entry;
            database.findByFilename (file.getFullPathName(), entry);
            list.add (entry);
        }
        return list;
    }

    juce::String exported (const SongList& list, const char* name, int steps = 1 << 30)
    {
        const auto file = folder.file (name);
        file.replaceWithText (juce::String::repeatedString ("old ", 5000));
        Watching progress (steps);
        EXPECT_TRUE (ExportPlaylist (&database, list, file).run (progress).isWritten);
        EXPECT_EQ (progress.texts, juce::StringArray ("Exporting to: " + file.getFullPathName()));
        return file.loadFileAsString();
    }

    std::vector<int32_t> imported (const std::string& bytes, const char* name = "list.m3u")
    {
        const auto file = folder.file (name);
        file.replaceWithData (bytes.data(), bytes.size());
        Watching progress;
        const auto result = ImportPlaylist (&database, file).run (progress);
        SongList list (SongListKind::playlist, result.playlistId);
        database.fillPlaylist (&list, result.playlistId, SongField::listOrder, true);
        std::vector<int32_t> ids;
        for (const auto& entry : list.entries())
            ids.push_back (entry.songId);
        return ids;
    }

    TemporaryFolder folder;
    juce::File library = folder.file ("library.sqlite");
    SongDatabase database;
};
}

TEST_F (PlaylistFiles, ATextListIsWrittenToTheLetterAndReadBackAsTheSame)
{
    const auto a = song ("a.mp3", "Title", "Artist", 245),
               b = song (juce::String::fromUTF8 ("\xc3\xa9 #1.ogg"), "T\n2", "", 59);
    const auto list = listOf ({ b, a, b });
    const auto text = exported (list, "list.m3u");
    const auto first = juce::String ("#EXTINF:59,T 2\n") + b.getFullPathName() + "\n";
    EXPECT_EQ (text,
               "#EXTM3U\n" + first + "#EXTINF:245,Title - Artist\n" + a.getFullPathName() + "\n" + first);
    EXPECT_EQ (imported (text.toStdString()), (std::vector<int32_t> { 2, 1, 2 }));
    EXPECT_EQ (database.countSongs(), 2);
    EXPECT_EQ (exported (SongList(), "empty.m3u"), "#EXTM3U\n");
}

TEST_F (PlaylistFiles, EntriesAreFoundHoweverTheyAreWritten)
{
    const auto a = song ("sub/a b.mp3", "A", "", 1),
               b = song (juce::String::fromUTF8 ("caf\xc3\xa9.mp3"), "B", "", 1);
    const auto path = a.getFullPathName().toStdString();
    const std::pair<std::string, std::vector<int32_t>> lists[] {
        { "#EXTM3U\r\nsub/a b.mp3\r\n\r\ncaf\xc3\xa9.mp3\r\n", { 1, 2 } },
        { "\xef\xbb\xbf"
          "caf\xc3\xa9.mp3\n./sub/../sub/a b.mp3",
          { 2, 1 } },
        { "caf\xe9.mp3\rsub\\a b.mp3", { 2, 1 } },
        { path + "\nfile://" + path + "\nfile://localhost"
              + juce::String (path).replace (" ", "%20").toStdString(),
          { 1, 1, 1 } },
        { "http://host/" + path + "\nrtp://x\nhttp://\nfile://\nfile://sub/a b.mp3\nnothing.mp3\nsub\n..\n",
          {} },
        { "#sub/a b.mp3\n  \n", {} },
        { "\n", {} },
    };
    for (const auto& [text, ids] : lists)
        EXPECT_EQ (imported (text), ids) << text;
    EXPECT_EQ (database.countSongs(), 2);
    std::vector<SourceItem> playlists;
    database.listPlaylists (playlists);
    EXPECT_EQ (playlists.size(), std::size (lists));
    EXPECT_EQ (playlists.back().name, "Playlist");

    EXPECT_TRUE (imported (path, "list.txt").empty());
    EXPECT_EQ (imported (path, "list.m3u8"), std::vector<int32_t> { 1 });
    const auto newOne = folder.file ("new.wav");
    newOne.create();
    folder.file ("more.M3U").replaceWithText ("new.wav\nnew.wav\n" + b.getFullPathName());
    SqlConnection other;
    ASSERT_EQ (other.open (library.getFullPathName()), 0);
    ASSERT_EQ (other.run ("BEGIN IMMEDIATE"), 0);
    Watching locked;
    database.setPatience (0);
    EXPECT_TRUE (
        ImportPlaylist (&database, folder.file ("more.M3U"), playlists[0].id).run (locked).isLocked());
    other.close();
    Watching cancels (2);
    const auto result = ImportPlaylist (&database, folder.file ("more.M3U"), playlists[0].id).run (cancels);
    EXPECT_TRUE (result.isCancelled);
    EXPECT_EQ (result.added, 1);
    SongList list;
    database.fillPlaylist (&list, playlists[0].id, SongField::listOrder, true);
    EXPECT_EQ (list.size(), 4);
}

TEST_F (PlaylistFiles, APageIsWrittenToTheLetter)
{
    const auto a = song ("a.mp3", "<T>", "A & B", 3723);
    const auto page = [] (const char* caption, const char* rows)
    {
        return juce::String (
                   "<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 Transitional//EN\" "
                   "\"http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd\">\n"
                   "<html xmlns=\"http://www.w3.org/1999/xhtml\">\n<head>\n"
                   "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"/>\n"
                   "<title>A &amp; B</title>\n<style type=\"text/css\">\n<!--\nbody {margin: 10px;}\n"
                   "body,td,th {font-family: Verdana, Arial, Helvetica, sans-serif; font-size: 11px;}\n"
                   "table.border {border: 1px solid #000000; border-collapse: collapse;}\n"
                   "th {font-weight: bold; vertical-align: top; padding: 5px; text-align: left; background: "
                   "#D4D0C8;}\n"
                   "td {vertical-align: top; padding: 5px; text-align: left; border-top: 1px solid #000000; "
                   "border-right: 1px solid #000000;}\n"
                   "caption {caption-side: bottom; font-weight: bold; padding: 5px; text-align: "
                   "right;}\n-->\n</style>\n"
                   "</head>\n<body>\n<table cellpadding=\"0\" cellspacing=\"0\" class=\"border\" "
                   "width=\"100%\">\n<caption>")
               + caption
               + "</caption><tr>\n<th>#</td>\n<th>Title</td>\n<th>Artist</td>\n<th>Album</td>\n<th>BPM</td>\n"
                 "<th>Time</td>\n</tr>\n"
               + rows + "</table>\n</body>\n</html>\n";
    };
    EXPECT_EQ (
        exported (listOf ({ a }), "list.html"),
        page ("1 song, 1:02:03, 1.00 KB",
              "<tr>\n<td>1</td>\n<td>&lt;T&gt;</td>\n<td>A &amp; B</td>\n<td>Album</td>\n<td>128.50</td>\n"
              "<td>1:02:03</td>\n</tr>\n"));
    EXPECT_EQ (exported (listOf ({}), "empty.html"), page ("0 songs, 0:00, 0.00 B", ""));
}

TEST_F (PlaylistFiles, ACancelStopsAtTheNextRowAndAFolderIsNoTarget)
{
    SongList list = listOf ({ song ("a.mp3", "A", "", 1) });
    for (int i = 0; i < 450; ++i)
        list.add (list[0]);
    EXPECT_EQ (juce::StringArray::fromLines (exported (list, "cut.m3u", 333)).size(), 1 + 2 * 333 + 1);
    EXPECT_TRUE (exported (list, "all.html").contains ("<td>451</td>"));
    Watching progress;
    EXPECT_FALSE (ExportPlaylist (&database, list, folder).run (progress).isWritten);
}
