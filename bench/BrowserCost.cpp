#include "measure/Machine.h"
#include "measure/MadeUpSongs.h"
#include "measure/Timing.h"

#include "library/import/SongBatch.h"
#include "session/browse/LibraryRoom.h"
#include "session/browse/rows/RowSource.h"
#include "shared/TemporaryFolder.h"

#include <atomic>
#include <cstdio>
#include <thread>

// bench_browser [--songs=N]... [--import]: from a question of a view to its answer, at 1,000, 100,000 and 1,000,000 songs;
// --import with an import of files without tags beside it.

namespace
{
constexpr int rowsOnScreen = 40;

const std::vector<SongField> searched { SongField::title, SongField::artist,  SongField::album,
                                        SongField::genre, SongField::comment, SongField::grouping,
                                        SongField::year,  SongField::filename };

double milliseconds (const std::function<void()>& work)
{
    const auto begin = Timing::nanoseconds();
    work();
    return static_cast<double> (Timing::nanoseconds() - begin) / 1e6;
}

/** One view. */
class Bench
{
public:
    Bench (LibraryRoom& r, int n) : room (r), repeats (n) {}

    /** From the question until the rows on screen can be painted. */
    double showMilliseconds (const SongQuery& query)
    {
        return milliseconds (
            [&]
            {
                source.open (query);
                source.settleRows();
                source.want (0, rowsOnScreen);
                source.settleRows();
            });
    }

    void row (const char* what, const std::function<SongQuery (int)>& query)
    {
        Timing::Durations times;
        for (int i = 0; i < repeats; ++i)
            times.add (static_cast<int64_t> (1e6 * showMilliseconds (query (i))));
        std::printf ("%-44s %10.1f %10.1f %10d\n", what, times.quantile (0.5) / 1e6,
                     times.quantile (1.0) / 1e6, source.size());
    }

private:
    LibraryRoom& room;
    const int repeats;

public:
    RowSource source { room };
};

void fill (SongDatabase& database, int songs)
{
    MadeUpSongs source { songs };
    auto transaction = database.beginTransaction();
    for (int i = 0; i < songs; ++i)
        juce::ignoreUnused (database.insertSong (source.song (i)));
    juce::ignoreUnused (transaction.commit());
}

void measure (int songs, bool withImport)
{
    const TemporaryFolder folder;
    SongDatabase database (folder.file ("library.sqlite"));
    fill (database, songs);
    SongList tenth (SongListKind::library);
    database.fillLibrary (&tenth, SongField::artist, true);
    while (tenth.size() > songs / 10)
        tenth.remove (tenth.size() - 1);
    int32_t playlist = -1;
    database.createPlaylist ("p", &tenth, 1, &playlist);

    const auto before = Machine::residentMegabytes();
    LibraryRoom room (database, { folder.file ("history"), folder.file ("folders.txt") });
    const auto built = milliseconds ([&] { room.watch.settle(); });
    std::printf ("\n%d songs%s: index in %.0f ms, %.1f MB; %.1f MB resident more\n", songs,
                 withImport ? ", an import beside" : "", built,
                 static_cast<double> (room.watch.index().bytesUsed()) / 1e6,
                 Machine::residentMegabytes() - before);
    std::printf ("%-44s %10s %10s %10s\n", "ms", "median", "maximum", "rows");

    std::atomic<bool> ends { false };
    std::thread importing (
        [&]
        {
            MadeUpSongs more { songs };
            SongBatch batch (database);
            for (auto i = songs; withImport && !ends; i += 256)
            {
                for (auto k = 0; k < 256; ++k)
                    juce::ignoreUnused (batch.add (more.song (i + k)));
                room.watch.look();
                std::this_thread::sleep_for (std::chrono::milliseconds (20));
            }
        });

    Bench bench (room, songs > 200'000 ? 5 : 15);
    bench.row ("open the library, stored order", [] (int) { return SongQuery {}; });
    for (const auto field :
         { SongField::title, SongField::artist, SongField::bpm, SongField::dateAdded, SongField::filesize })
    {
        Timing::Durations first;
        const auto name = std::string ("sort by ") + nameOf (columnOf (field));
        first.add (static_cast<int64_t> (1e6 * bench.showMilliseconds ({ .sort = field })));
        std::printf ("%-44s %10.1f %10s %10d\n", (name + ", the first time").c_str(),
                     first.quantile (1.0) / 1e6, "", bench.source.size());
        bench.row ((name + ", again").c_str(),
                   [field] (int i) { return SongQuery { .sort = field, .ascending = i % 2 == 0 }; });
    }
    const auto search = [&] (const char* what, const char* text)
    {
        bench.row (what, [text] (int)
                   { return SongQuery { .sort = SongField::title, .search = text, .fields = searched }; });
    };
    search ("search 'a' in 8 fields", "a");
    search ("search 'abc' in 8 fields", "abc");
    search ("search 'dreams 12 mix' in 8 fields", "dreams 12 mix");
    search ("search 'bpm:120-126 rating:>3'", "bpm:120-126 rating:>3");
    bench.row ("fits 128 BPM to 3 percent", [] (int)
               { return SongQuery { .sort = SongField::title, .fitBpm = 128.0, .fitPercent = 3.0 }; });
    bench.row ("open a playlist of a tenth",
               [=] (int) { return SongQuery { .kind = SongListKind::playlist, .id = playlist }; });
    bench.row ("open an artist", [] (int i)
               { return SongQuery { .kind = SongListKind::artist, .name = "Artist " + juce::String (i) }; });

    bench.showMilliseconds ({ .sort = SongField::title });
    juce::Random random (5);
    Timing::Durations pages;
    for (int i = 0; i < 100; ++i)
        pages.add (static_cast<int64_t> (1e6
                                         * milliseconds (
                                             [&]
                                             {
                                                 const auto at =
                                                     random.nextInt (juce::jmax (1, songs - rowsOnScreen));
                                                 bench.source.want (at, at + rowsOnScreen);
                                                 bench.source.settleRows();
                                             })));
    std::printf ("%-44s %10.1f %10.1f\n", "jump to a page", pages.quantile (0.5) / 1e6,
                 pages.quantile (1.0) / 1e6);

    // A key in the midst of another search: the older one is broken off.
    Timing::Durations typed;
    for (int i = 0; i < 20; ++i)
    {
        for (const auto* text : { "d", "dr", "dre" })
            bench.source.open ({ .sort = SongField::title, .search = text, .fields = searched });
        typed.add (static_cast<int64_t> (
            1e6
            * bench.showMilliseconds ({ .sort = SongField::title, .search = "drea", .fields = searched })));
    }
    std::printf ("%-44s %10.1f %10.1f\n", "four keys at once, from the last one", typed.quantile (0.5) / 1e6,
                 typed.quantile (1.0) / 1e6);

    const auto edit = milliseconds (
        [&]
        {
            room.edits.setRating ({ 1 }, 4);
            room.edits.settle();
            room.watch.settle();
            bench.source.settleRows();
        });
    std::printf ("%-44s %10.1f\n", "a rating, until the table shows it", edit);
    ends = true;
    importing.join();
    std::printf ("resident with orders and rows: %.1f MB more\n", Machine::residentMegabytes() - before);
}
}

int main (int count, char** arguments)
{
    const juce::ScopedJuceInitialiser_GUI messages;
    Machine::print();
    std::vector<int> sizes;
    auto withImport = false;
    for (int i = 1; i < count; ++i)
    {
        const juce::String option (arguments[i]);
        withImport = withImport || option == "--import";
        if (option.startsWith ("--songs="))
            sizes.push_back (juce::jmax (2 * rowsOnScreen,
                                         option.fromFirstOccurrenceOf ("=", false, false).getIntValue()));
    }
    if (sizes.empty())
        sizes = { 1'000, 100'000, 1'000'000 };
    for (const auto songs : sizes)
        measure (songs, withImport);
    return 0;
}
