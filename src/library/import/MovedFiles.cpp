#include "library/import/MovedFiles.h"

#include "library/database/FileFacts.h"
#include "library/database/SongDatabase.h"
#include "library/import/FolderWalk.h"
#include "library/tags/ReadTags.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <unordered_map>

namespace
{
/** Tags tell whole seconds, cut or rounded. */
constexpr int secondsApart = 1;

/** A file that may be a missing song's. */
struct Candidate
{
    juce::String path;
    bool hasName = false, hasSize = false;
    std::optional<bool> hasTags {}; ///< read when they decide
};

std::string nameOf (const juce::String& path)
{
    return path.fromLastOccurrenceOf ("/", false, false).toLowerCase().toStdString();
}

/** Missing songs by what is known of their files without opening one. */
class Search
{
public:
    explicit Search (std::vector<MissingSong> m) : missing (std::move (m)), candidates (missing.size())
    {
        for (size_t i = 0; i < missing.size(); ++i)
        {
            byName.emplace (nameOf (missing[i].path), i);
            if (missing[i].bytes > 0)
                bySize.emplace (missing[i].bytes, i);
        }
    }

    bool isWanted (const juce::String& path, int64_t bytes) const
    {
        return byName.contains (nameOf (path)) || bySize.contains (bytes);
    }

    void add (const juce::String& path, int64_t bytes)
    {
        const auto [firstNamed, lastNamed] = byName.equal_range (nameOf (path));
        for (auto song = firstNamed; song != lastNamed; ++song)
            candidates[song->second].push_back ({ path, true, missing[song->second].bytes == bytes });
        const auto [firstSized, lastSized] = bySize.equal_range (bytes);
        for (auto song = firstSized; song != lastSized; ++song)
            if (nameOf (missing[song->second].path) != nameOf (path))
                candidates[song->second].push_back ({ path, false, true });
    }

    const std::vector<MissingSong>& songs() const { return missing; }

    /** The files that are a song's by the strictest rule that any of them meets. */
    juce::StringArray filesOf (size_t song)
    {
        using Rule = bool (*) (const Candidate&);
        constexpr std::array<Rule, 3> rules {
            [] (const Candidate& file) { return file.hasName && file.hasSize; },
            [] (const Candidate& file) { return file.hasSize && *file.hasTags; },
            [] (const Candidate& file) { return file.hasName && *file.hasTags; },
        };
        juce::StringArray files;
        for (const auto rule : rules)
        {
            if (rule != rules.front())
                readTagsOf (song);
            for (const auto& candidate : candidates[song])
                if (rule (candidate))
                    files.add (candidate.path);
            if (!files.isEmpty())
                break;
        }
        return files;
    }

private:
    void readTagsOf (size_t song)
    {
        for (auto& candidate : candidates[song])
        {
            if (candidate.hasTags)
                continue;
            SongRecord record;
            readTags (candidate.path, record);
            const auto& wanted = missing[song];
            candidate.hasTags =
                wanted.artist.isNotEmpty() && record[SongColumn::artist] == wanted.artist
                && record[SongColumn::title] == wanted.title
                && std::abs (record[SongColumn::duration].getIntValue() - wanted.seconds) <= secondsApart;
        }
    }

    const std::vector<MissingSong> missing;
    std::vector<std::vector<Candidate>> candidates; ///< of each song
    std::unordered_multimap<std::string, size_t> byName;
    std::unordered_multimap<int64_t, size_t> bySize;
};
}

int findMissingSongs (SongDatabase& database, ImportProgress& progress, std::vector<MissingSong>& missing)
{
    std::vector<MissingSong> songs;
    const std::array fields { SongField::filename, SongField::title, SongField::artist };
    const auto code =
        database.scanSongs (fields, nullptr,
                            [&songs] (const SqlRow& row)
                            {
                                songs.push_back ({ row.int32 (0), row.text (3), row.text (4), row.text (5),
                                                   row.int64 (2), row.int32 (1) });
                            });
    missing.clear();
    for (auto& song : songs)
    {
        if (progress.shouldExit())
            break;
        if (song.path.isNotEmpty() && !FileFacts::isPresent (song.path))
            missing.push_back (std::move (song));
    }
    return code;
}

RelocateResult relocateSongs (SongDatabase& database, const juce::StringArray& folders,
                              ImportProgress& progress)
{
    RelocateResult result;
    std::vector<MissingSong> missing;
    result.code = findMissingSongs (database, progress, missing);
    result.missing = static_cast<int> (missing.size());
    if (result.code != LibraryCode::ok || missing.empty())
        return result;

    Search search (std::move (missing));
    const auto part = 1.0 / juce::jmax (1, folders.size());
    for (int i = 0; i < folders.size(); ++i)
        FolderWalk::visitFiles (juce::File (folders[i]),
                                [&] (const juce::String& path, double estimate)
                                {
                                    progress.setStatusText (path);
                                    progress.setProgress ((i + estimate) * part);
                                    const auto file = juce::File::createFileWithoutCheckingPath (path);
                                    const auto bytes = file.getSize();
                                    if (AudioFileTypes::matches (file) && search.isWanted (path, bytes)
                                        && database.countFilename (path) == 0)
                                        search.add (path, bytes);
                                    return !progress.shouldExit();
                                });
    result.isCancelled = progress.shouldExit();
    // Two songs that could be one file would both take it: the first has it, the other stays missing.
    for (size_t i = 0; i < search.songs().size() && result.code == LibraryCode::ok && !result.isCancelled;
         ++i)
    {
        const auto& song = search.songs()[i];
        const auto files = search.filesOf (i);
        if (files.size() > 1)
            result.doubtful.add (tr ("%1: Several files could be this song, such as %2 and %3.", song.path,
                                     files[0], files[1]));
        if (files.size() != 1 || database.countFilename (files[0]) != 0)
            continue;
        result.code = database.setTextField (SongField::filename, song.id, files[0]);
        if (result.code == LibraryCode::ok)
            ++result.found;
    }
    return result;
}
