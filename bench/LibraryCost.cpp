#include "measure/Machine.h"
#include "measure/MadeUpSongs.h"
#include "measure/Timing.h"

#include "library/database/Schema.h"
#include "library/database/SongDatabase.h"
#include "library/sql/DatabaseFile.h"
#include "shared/TemporaryFolder.h"

#include <sqlite3.h>

#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

// bench_library [--songs=N]...: what the library's operations cost, beside the same statements given to SQLite alone.

namespace
{
constexpr int rowsOnScreen = 200;

/** SQLite as a plain program uses it: text in, rows out through the callback, with the same settings. */
class PlainSqlite
{
public:
    explicit PlainSqlite (const juce::File& file)
    {
        check (sqlite3_open (file.getFullPathName().toRawUTF8(), &handle));
        for (const auto& pragma : Schema::pragmas())
            juce::ignoreUnused (sqlite3_exec (handle, pragma.c_str(), nullptr, nullptr, nullptr));
    }

    ~PlainSqlite() { sqlite3_close (handle); }

    void run (const std::string& sql)
    {
        check (sqlite3_exec (handle, sql.c_str(), nullptr, nullptr, nullptr));
    }

    struct Entry
    {
        int id, duration, filesize;
    };

    std::vector<Entry> list (const std::string& sql)
    {
        std::vector<Entry> entries;
        check (sqlite3_exec (
            handle, sql.c_str(),
            [] (void* to, int, char** values, char**)
            {
                static_cast<std::vector<Entry>*> (to)->push_back (
                    { std::atoi (values[0]), std::atoi (values[1]), std::atoi (values[2]) });
                return 0;
            },
            &entries, nullptr));
        return entries;
    }

    std::vector<std::string> row (const std::string& sql)
    {
        std::vector<std::string> texts;
        check (sqlite3_exec (
            handle, sql.c_str(),
            [] (void* to, int count, char** values, char**)
            {
                for (int i = 0; i < count; ++i)
                    static_cast<std::vector<std::string>*> (to)->emplace_back (values[i]);
                return 0;
            },
            &texts, nullptr));
        return texts;
    }

private:
    static void check (int code)
    {
        if (code != SQLITE_OK)
        {
            std::printf ("SQLite gave %d\n", code);
            std::exit (1);
        }
    }

    sqlite3* handle = nullptr;
};

std::string plainInsert (const SongRecord& song)
{
    std::string sql (" INSERT INTO songs VALUES (NULL");
    for (int i = 0; i < songColumnCount; ++i)
    {
        const auto column = static_cast<SongColumn> (i);
        const auto isText = infoOf (column).type == SongColumnType::text;
        const auto value = song[column].replace ("'", "''").toStdString();
        sql += isText ? ", '" + value + "'" : ", " + (value.empty() ? "0" : value);
    }
    return sql + ")";
}

/** Of this thread, and finer than the process's accounts, which count whole ticks. */
int64_t processorNanoseconds()
{
    timespec used {};
    clock_gettime (CLOCK_THREAD_CPUTIME_ID, &used);
    return used.tv_sec * int64_t { 1'000'000'000 } + used.tv_nsec;
}

/** One row of the table: medians of both, taken in turn. The ratio is of processor times, which other programs on the
    machine change least. */
void compare (const char* what, int repeats, const std::function<void()>& ours,
              const std::function<void()>& plain)
{
    Timing::Durations clock, own, other;
    for (int i = 0; i < repeats; ++i)
    {
        const auto started = Timing::nanoseconds();
        const auto begin = processorNanoseconds();
        ours();
        const auto middle = processorNanoseconds();
        clock.add (Timing::nanoseconds() - started);
        plain();
        own.add (middle - begin);
        other.add (processorNanoseconds() - middle);
    }
    const auto a = own.quantile (0.5), b = other.quantile (0.5);
    std::printf ("%-40s %11.3f %11.3f %11.3f %7.2f\n", what, clock.quantile (0.5) / 1e6, a / 1e6, b / 1e6,
                 a / b);
}

double milliseconds (const std::function<void()>& work)
{
    const auto begin = Timing::nanoseconds();
    work();
    return static_cast<double> (Timing::nanoseconds() - begin) / 1e6;
}

void measure (int songs)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("ours.sqlite"), plainFile = folder.file ("plain.sqlite");
    SongDatabase database (file);
    SongDatabase (plainFile).close();
    PlainSqlite plain (plainFile);
    std::printf ("\n%7d songs, ms %36s %11s %11s %7s\n", songs, "clock", "processor", "plain", "ratio");

    const auto insertOurs = [&]
    {
        MadeUpSongs source { songs };
        auto transaction = database.beginTransaction();
        for (int i = 0; i < songs; ++i)
            juce::ignoreUnused (database.insertSong (source.song (i)));
        juce::ignoreUnused (transaction.commit());
    };
    const auto insertPlain = [&]
    {
        MadeUpSongs source { songs };
        plain.run ("BEGIN TRANSACTION;");
        for (int i = 0; i < songs; ++i)
            plain.run (plainInsert (source.song (i)));
        plain.run ("END TRANSACTION;");
    };
    compare ("insert all (making the songs included)", 1, insertOurs, insertPlain);

    SongList list (SongListKind::library);
    const std::string all (" SELECT DISTINCT id,duration,filesize  FROM songs WHERE filename <> ''");
    const auto repeats = songs > 200'000 ? 3 : 7;
    const struct
    {
        const char* name;
        SongField field;
        const char* sort;
    } sorts[] { { "fill, stored order", SongField::listOrder, "" },
                { "fill by title (text)", SongField::title, " ORDER BY UPPER(title) asc" },
                { "fill by time (number)", SongField::time, " ORDER BY duration asc" },
                { "fill by BPM (number with an index)", SongField::bpm, " ORDER BY bpm asc" } };
    for (const auto& sort : sorts)
        compare (
            sort.name, repeats, [&] { database.fillLibrary (&list, sort.field, true); },
            [&] { plain.list (all + sort.sort); });
    const auto listMegabytes = static_cast<double> (list.entries().size_bytes()) / 1e6;

    const SongField eight[] {
        SongField::title,   SongField::artist,   SongField::album, SongField::genre,
        SongField::comment, SongField::grouping, SongField::year,  SongField::filename
    };
    std::string like;
    for (const auto field : eight)
        like += std::string (like.empty() ? "" : " OR") + " " + nameOf (columnOf (field)) + " LIKE '%abc%'";
    compare (
        "search over 8 fields", repeats,
        [&] { database.searchLibrary (&list, eight, "abc", SongField::title, true); },
        [&] {
            plain.list (" SELECT id,duration,filesize FROM songs WHERE" + like
                        + " ORDER BY UPPER(title) asc");
        });

    database.fillLibrary (&list, SongField::title, true);
    juce::Random random (5);
    auto first = 0;
    std::vector<SongRecord> records;
    std::vector<std::vector<std::string>> rows;
    std::string columns;
    for (const auto& column : songColumns)
        columns += (columns.empty() ? "" : ",") + std::string (column.name);
    compare (
        "scroll: 200 rows of the list by title", 100,
        [&]
        {
            first = random.nextInt (songs - rowsOnScreen);
            database.readSongs (&list, first, first + rowsOnScreen, records);
        },
        [&]
        {
            rows.clear();
            plain.run ("BEGIN TRANSACTION;");
            for (int i = first; i < first + rowsOnScreen; ++i)
                rows.push_back (plain.row (" SELECT " + columns
                                           + " FROM songs WHERE id = " + std::to_string (list[i].songId)));
            plain.run ("END TRANSACTION;");
        });

    auto some = list;
    while (some.size() > songs / 10)
        some.remove (some.size() - 1);
    some.kind = SongListKind::playlist;
    database.createPlaylist ("p", nullptr, 1, &some.playlistId);
    plain.run ("INSERT INTO playlists VALUES (NULL, 'p', 1, '', 0)");
    compare (
        "write a playlist of a tenth", repeats, [&] { database.replacePlaylistEntries (&some); },
        [&]
        {
            plain.run ("BEGIN TRANSACTION;");
            plain.run (" DELETE FROM playlists_songs WHERE playlist_id = 1; ");
            for (const auto& entry : some.entries())
                plain.run (" INSERT INTO playlists_songs VALUES (NULL, 1, " + std::to_string (entry.songId)
                           + "); ");
            plain.run ("END TRANSACTION;");
        });
    SongList played (SongListKind::playlist, some.playlistId);
    compare (
        "fill it by artist", repeats,
        [&] { database.fillPlaylist (&played, some.playlistId, SongField::artist, true); },
        [&]
        {
            plain.list (
                " SELECT songs.id as songid, songs.duration as duration, songs.filesize as filesize, "
                "playlists_songs.id as uniquestpid FROM songs, playlists_songs WHERE playlist_id = 1 AND "
                "songs.id=playlists_songs.song_id ORDER BY UPPER(artist) asc");
        });

    juce::StringArray artists;
    compare (
        "all artists", repeats, [&] { database.listDistinct (SongField::artist, artists); },
        [&]
        { plain.row (" SELECT DISTINCT artist FROM songs GROUP BY artist ORDER BY LOWER(artist) ASC; "); });
    compare (
        "set 1000 fields, a commit each", 3,
        [&]
        {
            for (int i = 1; i <= 1000; ++i)
                database.setTextField (SongField::key, i, "8A");
        },
        [&]
        {
            for (int i = 1; i <= 1000; ++i)
                plain.run (" UPDATE songs SET key = '8A' WHERE id = " + std::to_string (i));
        });

    std::printf ("a list of all: %.1f MB; %.1f MB resident, with what SQLite sorted in\n", listMegabytes,
                 Machine::residentMegabytes());
    database.close();
    const auto size = static_cast<double> (file.getSize()) / 1e6;
    const auto opened = milliseconds ([&] { database.open (file); });
    database.close();
    const auto checked = milliseconds ([&] { juce::ignoreUnused (DatabaseFile::check (file)); });
    const auto copied = milliseconds ([&] { DatabaseFile::copy (file, folder.file ("copy.sqlite")); });
    std::printf ("file %.1f MB: open %.1f ms, check %.0f ms, backup %.0f ms\n", size, opened, checked,
                 copied);
}
}

int main (int count, char** arguments)
{
    Machine::print();
    auto given = false;
    for (int i = 1; i < count; ++i)
        if (const juce::String option (arguments[i]); option.startsWith ("--songs="))
        {
            measure (juce::jmax (2 * rowsOnScreen,
                                 option.fromFirstOccurrenceOf ("=", false, false).getIntValue()));
            given = true;
        }
    for (const auto songs : { 10'000, 100'000 })
        if (!given)
            measure (songs);
    return 0;
}
