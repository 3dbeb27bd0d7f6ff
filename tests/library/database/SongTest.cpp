#include "LibraryFixture.h"

#include <thread>

using SongDatabaseSongs = LibraryFixture;

TEST_F (SongDatabaseSongs, InsertionAsksTheFileAndBeginsCountersAtZero)
{
    const auto path = folder.file ("Song.MP3");
    ASSERT_TRUE (path.replaceWithText (juce::String::repeatedString ("x", 1234)));
    auto song = record (path.getFullPathName());
    for (int i = 0; i < songColumnCount; ++i)
        if (const auto column = static_cast<SongColumn> (i);
            infoOf (column).type == SongColumnType::integer && column != SongColumn::filesize
            && column != SongColumn::datecreated && column != SongColumn::datemodified)
            song[column] = juce::String (i + 1);
    song[SongColumn::bpm] = "128.456";
    const auto before = juce::Time::currentTimeMillis() / 1000;
    EXPECT_EQ (database.insertSong (song), 0);

    SongRecord read;
    EXPECT_EQ (database.readSong (1, read), 0);
    EXPECT_EQ (read.id, 1);
    EXPECT_EQ (read.database, &database);
    EXPECT_TRUE (read.present);
    EXPECT_EQ (read[SongColumn::filesize], "1234");
    EXPECT_EQ (read[SongColumn::bpm], "128.46");
    for (const auto column : { SongColumn::dateadded, SongColumn::datecreated, SongColumn::datemodified })
        EXPECT_NEAR (static_cast<double> (read[column].getLargeIntValue()), static_cast<double> (before),
                     5.0);
    for (const auto column : { SongColumn::analyzed, SongColumn::autoadvancedtimes, SongColumn::colour,
                               SongColumn::hashcode, SongColumn::lastplayed, SongColumn::playcount,
                               SongColumn::totalplayedtime, SongColumn::usereserved })
        EXPECT_EQ (read[column], "0") << nameOf (column);
    for (const auto column :
         { SongColumn::bitrate, SongColumn::channels, SongColumn::duration, SongColumn::rating,
           SongColumn::samplerate, SongColumn::tracknum, SongColumn::vbr, SongColumn::year })
        EXPECT_EQ (read[column], song[column]) << nameOf (column);

    EXPECT_GT (database.insertSong (song), 0) << "a path is unique";
    EXPECT_EQ (database.countSongs(), 1);
}

TEST_F (SongDatabaseSongs, UpdateCarriesEveryColumn)
{
    auto song = record ("/x.mp3");
    song.id = 42;
    EXPECT_EQ (database.insertSong (song), 0);
    for (int i = 0; i < songColumnCount; ++i)
    {
        const auto column = static_cast<SongColumn> (i);
        song[column] = infoOf (column).type == SongColumnType::text      ? "it's text " + juce::String (i)
                       : infoOf (column).type == SongColumnType::integer ? juce::String (5'000'000'000 + i)
                                                                         : juce::String ("99.50");
    }
    EXPECT_EQ (database.updateSong (song), 0);
    SongRecord read;
    EXPECT_EQ (database.readSong (42, read), 0);
    EXPECT_EQ (read.columns, song.columns);
    EXPECT_FALSE (read.present);

    song.id = -1;
    EXPECT_EQ (database.updateSong (song), LibraryCode::badArgument);

    EXPECT_EQ (database.readSong (43, read), 0);
    EXPECT_EQ (read.id, -1);
    EXPECT_EQ (read.columns, SongRecord().columns);
}

TEST_F (SongDatabaseSongs, NumbersAreNumbersWhateverTheRecordSays)
{
    const struct
    {
        const char *bpm, *year, *shownBpm, *shownYear;
    } rows[] { { "", "", "0.00", "0" },
               { "nan", "1)); DROP TABLE songs; --", "0.00", "1" },
               { "1e999", "-5", "0.00", "-5" },
               { "174,5", "19x", "174.00", "19" } };
    for (const auto& row : rows)
    {
        const auto id = add (juce::String ("/") + row.bpm,
                             { { SongColumn::bpm, row.bpm }, { SongColumn::year, row.year } });
        SongRecord read;
        EXPECT_EQ (database.readSong (id, read), 0);
        EXPECT_EQ (read[SongColumn::bpm], row.shownBpm);
        EXPECT_EQ (read[SongColumn::year], row.shownYear);
    }
    EXPECT_EQ (database.setBpm (1, std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ (ask ("SELECT bpm FROM songs WHERE id = 1"), "0.0");
}

TEST_F (SongDatabaseSongs, FieldsAreSetAndPlaysCounted)
{
    const auto id = add ("/a.mp3"), other = add ("/b.mp3");
    ok ({ database.setRating (id, 4), database.setIntField (SongField::year, id, 1999),
          database.setTextField (SongField::key, id, "8A'"), database.setBpm (id, 127.98765),
          database.markPlayed (id), database.markPlayed (id) });
    EXPECT_EQ (database.markPlayed (-1), LibraryCode::badArgument);
    EXPECT_EQ (text (id, SongField::rating) + text (id, SongField::year) + text (id, SongField::key)
                   + text (id, SongField::bpm) + text (id, SongField::playCount),
               "419998A'127.987652");
    EXPECT_GT (text (id, SongField::lastPlayed).getLargeIntValue(), 1'700'000'000);
    EXPECT_EQ (text (other, SongField::playCount) + text (other, SongField::rating), "00");

    const auto list = listOf (SongListKind::library, -1, { id, other });
    EXPECT_EQ (database.clearPlayed (&list), 0);
    EXPECT_EQ (text (id, SongField::playCount) + text (id, SongField::lastPlayed), "00");
}

TEST_F (SongDatabaseSongs, CountsAndFindings)
{
    add ("/1.mp3", { { SongColumn::artist, "b" },
                     { SongColumn::duration, "61" },
                     { SongColumn::filesize, "6000000000" } });
    add ("/2.mp3", { { SongColumn::artist, "A" }, { SongColumn::title, "longest of all" } });
    add ("/3.mp3", { { SongColumn::artist, "b" }, { SongColumn::title, "short" } });
    EXPECT_EQ (database.countSongs(), 3);
    EXPECT_EQ (database.countDistinct (SongField::artist), 2);
    EXPECT_EQ (database.countWhere (SongField::artist, "b"), 2);
    EXPECT_EQ (database.countFilename ("/1.MP3") * 10 + database.countFilename ("/1.mp3"), 1);
    EXPECT_EQ (database.idOfFilename ("/4.mp3"), -1);
    juce::StringArray artists;
    EXPECT_EQ (database.listDistinct (SongField::artist, artists), 0);
    EXPECT_EQ (artists.joinIntoString (","), "A,b");

    SongListEntry entry;
    EXPECT_EQ (database.findByFilename ("/1.mp3", entry), 0);
    EXPECT_EQ (entry.songId, 1);
    EXPECT_EQ (entry.duration, 61u);
    EXPECT_EQ (entry.filesize, UINT32_MAX) << "beyond 32 bits";
    EXPECT_EQ (database.findByFilename ("/4.mp3", entry), 0);
    EXPECT_EQ (entry.songId, -1);

    juce::String longest;
    const auto list = listOf (SongListKind::library, -1, { 1, 3 });
    EXPECT_EQ (database.longestValue (SongField::title, &list, longest), 0);
    EXPECT_EQ (longest, "short");

    std::vector<SongRecord> records;
    EXPECT_EQ (database.readSongs (&list, -5, 99, records), 0);
    ASSERT_EQ (records.size(), 2u);
    EXPECT_EQ (records[1][SongColumn::title], "short");
    EXPECT_EQ (database.readSongs (&list, 1, 0, records), 0);
    EXPECT_TRUE (records.empty());
}

TEST_F (SongDatabaseSongs, ColumnsOfEntriesComeByIdWithTheirPlaces)
{
    for (const auto* title : { "one", "two", "three" })
        add (juce::String ("/") + title, { { SongColumn::title, title }, { SongColumn::year, "1999" } });
    // One song twice, one that there isn't.
    const auto list = listOf (SongListKind::playlist, 1, { 3, 99, 1, 3, 2 });
    constexpr std::array columns { SongColumn::year, SongColumn::title };
    const auto read = [&] (int first, int last)
    {
        juce::StringArray found;
        EXPECT_EQ (database.scanEntries (list, first, last, columns,
                                         [&] (int place, const SqlRow& row)
                                         { found.add (juce::String (place) + row.text (1) + row.text (0)); }),
                   0);
        return found.joinIntoString (" ");
    };
    EXPECT_EQ (read (-7, 99), "2one1999 4two1999 0three1999 3three1999");
    EXPECT_EQ (read (1, 3), "2one1999");
    EXPECT_EQ (read (1, 2), "");
    EXPECT_EQ (read (4, 4), "");
}

TEST_F (SongDatabaseSongs, FieldsWithoutAColumnAreRefused)
{
    SongList list = listOf (SongListKind::library, -1, { add ("/a.mp3") });
    juce::String value;
    juce::StringArray values;
    const SongField beyond[] { static_cast<SongField> (25), static_cast<SongField> (-1) };
    for (const auto field : beyond)
        EXPECT_THAT ((std::vector { database.fillLibrary (&list, field, true),
                                    database.fillPlaylist (&list, 1, field, true),
                                    database.sortList (&list, field, true),
                                    database.fillSmartPlaylist (&list, 1, field, true),
                                    database.readField (field, 1, value), database.countDistinct (field),
                                    database.countWhere (field, "x"), database.listDistinct (field, values),
                                    database.longestValue (field, &list, value),
                                    database.setIntField (field, 1, 1), database.setTextField (field, 1, "x"),
                                    database.fillByField ("x", field, &list, SongField::title, true),
                                    database.searchLibrary (&list, beyond, "x", SongField::title, true) }),
                     testing::Each (LibraryCode::badField));
    EXPECT_EQ (database.readField (SongField::listOrder, 1, value), LibraryCode::badField);
    EXPECT_EQ (list.size(), 1) << "nothing was emptied";
}

TEST_F (SongDatabaseSongs, ThreadsShareOneDatabase)
{
    const auto write = [this] (const char* prefix)
    {
        auto transaction = database.beginTransaction();
        EXPECT_EQ (transaction.code(), 0);
        for (int i = 0; i < 100; ++i)
            EXPECT_EQ (database.insertSong (record (prefix + juce::String (i))), 0);
        EXPECT_EQ (transaction.commit(), 0);
    };
    std::thread first (write, "/first"), second (write, "/second");
    SongList list;
    std::vector<SongRecord> records;
    while (database.countSongs() < 200)
    {
        ok ({ database.fillLibrary (&list, SongField::title, true),
              database.readSongs (&list, 0, 20, records) });
        EXPECT_EQ (list.size() % 100, 0) << "half of a transaction";
    }
    first.join();
    second.join();
    EXPECT_EQ (ask ("SELECT COUNT(*) FROM songs"), "200");
}

TEST_F (SongDatabaseSongs, ACopyHoldsEverything)
{
    add ("/a.mp3");
    const auto copy = folder.file ("copy.sqlite");
    copy.replaceWithText ("something else");
    EXPECT_EQ (database.copyTo (copy), 0);
    EXPECT_EQ (SongDatabase (copy).countSongs(), 1);

    SongDatabase inMemory (file, SongDatabase::Storage::memory);
    EXPECT_EQ (inMemory.insertSong (record ("/b.mp3")), 0);
    EXPECT_EQ (inMemory.countSongs(), 2);
    EXPECT_EQ (database.countSongs(), 1);
}

TEST (FieldText, IsWhatPeopleRead)
{
    const struct
    {
        SongField field;
        const char *stored, *shown;
    } rows[] {
        { SongField::title, "It's", "It's" },
        { SongField::playCount, "0", "0" },
        { SongField::rating, "5", "5" },
        { SongField::year, "0", "" },
        { SongField::year, "1999", "1999" },
        { SongField::trackNumber, "0", "" },
        { SongField::trackNumber, "7", "7" },
        { SongField::bpm, "0.00", "" },
        { SongField::bpm, "128.00", "128.00" },
        { SongField::dateAdded, "0", "" },
        { SongField::lastPlayed, "-5", "" },
        { SongField::dateCreated, "", "" },
        { SongField::dateModified, "9223372036854775807", "" },
        { SongField::dateAdded, "1699963200", "14 Nov 2023" },
        { SongField::filesize, "0", "0.00 B" },
        { SongField::filesize, "1023", "1023.00 B" },
        { SongField::filesize, "1024", "1.00 KB" },
        { SongField::filesize, "1048575", "1024.00 KB" },
        { SongField::filesize, "1048576", "1.00 MB" },
        { SongField::filesize, "1073741824", "1.00 GB" },
        { SongField::filesize, "1099511627776", "0.0 MB" },
        { SongField::time, "0", "0:00" },
        { SongField::time, "59", "0:59" },
        { SongField::time, "3599", "59:59" },
        { SongField::time, "3600", "1:00:00" },
        { SongField::time, "36061", "10:01:01" },
        { SongField::listOrder, "", "" },
    };
    for (const auto& row : rows)
    {
        SongRecord song;
        if (hasColumn (row.field))
            song[columnOf (row.field)] = row.stored;
        EXPECT_EQ (SongDatabase::fieldText (song, row.field), row.shown) << row.stored;
    }
}
