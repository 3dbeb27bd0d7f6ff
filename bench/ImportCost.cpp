#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include "library/database/SongDatabase.h"
#include "library/import/ImportDirectory.h"

#include <fileref.h>
#include <sqlite3.h>
#include <tag.h>

#include <cstdio>
#include <filesystem>

// bench_import: the rate at which a folder comes into the library, against a bare loop over TagLib and SQLite with
// prepared statements in the same run, and the share of the time that TagLib alone takes.

namespace
{
namespace fs = std::filesystem;

class Unwatched : public ImportProgress
{
    void setProgress (double) override {}
    void setStatusText (const juce::String&) override {}
    bool shouldExit() const override { return false; }
};

/** Tagged five-minute tracks, each under many names: the files' content stays in the system's cache. */
std::vector<std::string> makeMusic (const juce::File& folder, int files)
{
    std::vector<fs::path> tracks;
    for (const auto* extension : { "mp3", "flac", "ogg", "m4a" })
    {
        const auto plain = MusicLike::encoded (extension, juce::File (PX_BENCH_TRACKS));
        if (!plain.exists())
            return {};
        const auto tagged = folder.getChildFile ("track").withFileExtension (extension);
        plain.copyFileTo (tagged);
        TagLib::FileRef file (tagged.getFullPathName().toRawUTF8());
        file.tag()->setTitle ("A title of common length (mix)");
        file.tag()->setArtist ("An Artist");
        file.tag()->setAlbum ("An Album of Theirs");
        file.tag()->setGenre ("Techno");
        file.tag()->setComment ("a comment");
        file.tag()->setYear (2020);
        file.tag()->setTrack (3);
        file.save();
        tracks.emplace_back (tagged.getFullPathName().toStdString());
    }

    std::vector<std::string> paths;
    const fs::path root (folder.getChildFile ("music").getFullPathName().toStdString());
    for (int i = 0; i < files; ++i)
    {
        const auto& track = tracks[static_cast<size_t> (i) % tracks.size()];
        const auto album = root / ("Album " + std::to_string (i / 12));
        fs::create_directories (album);
        const auto path = album / ("Track " + std::to_string (i) + track.extension().string());
        fs::create_hard_link (track, path);
        paths.push_back (path.string());
    }
    return paths;
}

struct Cost
{
    Timing::Durations clock, processor;

    template <typename Work>
    void measure (Work&& work)
    {
        const auto used = Timing::processorNanoseconds (Timing::Threads::own);
        const auto begin = Timing::nanoseconds();
        work();
        clock.add (Timing::nanoseconds() - begin);
        processor.add (Timing::processorNanoseconds (Timing::Threads::own) - used);
    }
};

size_t readTagsPlainly (const std::vector<std::string>& paths)
{
    size_t letters = 0;
    for (const auto& path : paths)
    {
        const TagLib::FileRef file (path.c_str());
        letters += file.tag()->title().size() + file.tag()->artist().size() + file.tag()->album().size()
                   + file.tag()->comment().size() + file.tag()->genre().size() + file.tag()->year()
                   + file.tag()->track()
                   + static_cast<unsigned int> (file.audioProperties()->lengthInSeconds());
    }
    return letters;
}

/** The least that an importer does: is the path new, what does the tag say, the file's size and time, the row. */
void importPlainly (const std::vector<std::string>& paths, const juce::File& library)
{
    sqlite3* handle = nullptr;
    sqlite3_stmt *find = nullptr, *insert = nullptr;
    sqlite3_open (library.getFullPathName().toRawUTF8(), &handle);
    sqlite3_exec (handle, "PRAGMA synchronous=OFF; PRAGMA cache_size=1024; BEGIN TRANSACTION;", nullptr,
                  nullptr, nullptr);
    sqlite3_prepare_v2 (handle, "SELECT COUNT(*) FROM songs WHERE filename = ?", -1, &find, nullptr);
    sqlite3_prepare_v2 (
        handle,
        "INSERT INTO songs (title, artist, album, comment, genre, filename, format, year, tracknum, "
        "duration, bitrate, samplerate, channels, filesize, datemodified, dateadded) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, strftime('%s','now'))",
        -1, &insert, nullptr);
    for (const auto& path : paths)
    {
        sqlite3_bind_text (find, 1, path.c_str(), -1, SQLITE_STATIC);
        sqlite3_step (find);
        sqlite3_reset (find);

        const TagLib::FileRef file (path.c_str());
        int column = 0;
        for (const auto& text : { file.tag()->title(), file.tag()->artist(), file.tag()->album(),
                                  file.tag()->comment(), file.tag()->genre() })
            sqlite3_bind_text (insert, ++column, text.toCString (true), -1, SQLITE_TRANSIENT);
        sqlite3_bind_text (insert, ++column, path.c_str(), -1, SQLITE_STATIC);
        sqlite3_bind_text (insert, ++column, path.c_str() + path.rfind ('.'), -1, SQLITE_STATIC);
        std::error_code error;
        const auto* audio = file.audioProperties();
        for (const auto number : { int64_t { file.tag()->year() }, int64_t { file.tag()->track() },
                                   int64_t { audio->lengthInSeconds() }, int64_t { audio->bitrate() },
                                   int64_t { audio->sampleRate() }, int64_t { audio->channels() },
                                   static_cast<int64_t> (fs::file_size (path, error)),
                                   int64_t { fs::last_write_time (path, error).time_since_epoch().count() } })
            sqlite3_bind_int64 (insert, ++column, number);
        sqlite3_step (insert);
        sqlite3_reset (insert);
    }
    sqlite3_finalize (find);
    sqlite3_finalize (insert);
    sqlite3_exec (handle, "END TRANSACTION;", nullptr, nullptr, nullptr);
    sqlite3_close (handle);
}
}

int main (int argc, char** argv)
{
    const juce::ArgumentList arguments (argc, argv);
    const auto numberOf = [&arguments] (const char* option, int byDefault)
    {
        const auto given = arguments.getValueForOption (option).getIntValue();
        return given > 0 ? given : byDefault;
    };
    const auto files = numberOf ("--files", 8000), repeats = numberOf ("--repeats", 5);
    Machine::print();

    const juce::File folder = juce::File (PX_BENCH_TRACKS).getChildFile ("import");
    folder.deleteRecursively();
    folder.createDirectory();
    const auto paths = makeMusic (folder, files);
    if (paths.empty())
        return 1;
    readTagsPlainly (paths); // and the files are in the system's cache from here on

    Cost tagLibrary, plain, whole, again;
    auto isWhole = true;
    for (int i = 0; i < repeats; ++i)
    {
        const auto library = folder.getChildFile ("library.sqlite"),
                   other = folder.getChildFile ("other.sqlite");
        library.deleteFile();
        other.deleteFile();
        {
            SongDatabase makesTheTables (other);
        }
        SongDatabase database (library);
        ImportDirectory music (&database, folder.getChildFile ("music"));
        Unwatched progress;

        tagLibrary.measure ([&] { isWhole = readTagsPlainly (paths) > 0 && isWhole; });
        plain.measure ([&] { importPlainly (paths, other); });
        whole.measure ([&] { isWhole = music.run (progress).added == files && isWhole; });
        again.measure ([&] { isWhole = music.run (progress).added == 0 && isWhole; });
        isWhole = isWhole && SongDatabase (other).countSongs() == files;
    }
    folder.deleteRecursively();

    std::printf (
        "Import of %d cached files, medians of %d runs. A rate is the bare loop's time over the row's.\n",
        files, repeats);
    std::printf ("%-34s %9s %9s %9s %9s\n", "", "files/s", "rate", "CPU us", "rate");
    struct Row
    {
        const char* name;
        Cost& cost;
    };
    for (const auto& [name, cost] :
         { Row { "TagLib alone", tagLibrary }, Row { "TagLib and SQLite, bare loop", plain },
           Row { "ImportDirectory", whole }, Row { "ImportDirectory, all known", again } })
    {
        const auto clock = cost.clock.quantile (0.5), used = cost.processor.quantile (0.5);
        std::printf ("%-34s %9.0f %7.1f %% %9.1f %7.1f %%\n", name, files * 1e9 / clock,
                     100.0 * plain.clock.quantile (0.5) / clock, used / 1e3 / files,
                     100.0 * plain.processor.quantile (0.5) / used);
    }
    std::printf ("TagLib alone is %.1f %% of an import's time.\n",
                 100.0 * tagLibrary.clock.quantile (0.5) / whole.clock.quantile (0.5));
    if (!isWhole)
        std::printf ("Not every file came in: the rows are void.\n");
    return isWhole ? 0 : 1;
}
