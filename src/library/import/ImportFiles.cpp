#include "library/import/ImportFiles.h"

#include "library/database/SongDatabase.h"

ImportFiles::ImportFiles (SongDatabase* d, const juce::StringArray& p, const Target& t, SongBatch::Judge j)
    : database (d),
      paths (p),
      target (t),
      judge (std::move (j))
{
}

ImportResult ImportFiles::run (ImportProgress& progress)
{
    if (database == nullptr)
        return {};

    juce::StringArray accepted;
    ImportRun importRun (*database, progress, judge);
    importRun.onAccepted = [&accepted] (const juce::String& path) { accepted.add (path); };
    for (int i = 0; i < paths.size(); ++i)
    {
        const auto file = juce::File::createFileWithoutCheckingPath (paths[i]);
        const auto part = static_cast<double> (i) / paths.size();
        const auto isGoingOn = file.isDirectory()
                                   ? importRun.importFolder (file, part, part + 1.0 / paths.size())
                                   : importRun.importFile (paths[i], part);
        if (!isGoingOn)
            break;
    }
    auto result = importRun.end();
    if (result.code == LibraryCode::ok && !accepted.isEmpty())
        result.code = putWhereDropped (accepted);
    return result;
}

int ImportFiles::putWhereDropped (const juce::StringArray& accepted) const
{
    if (target.list != nullptr)
        return putIntoList (accepted);
    if (target.playlistId >= 0)
        return database->addFilesToPlaylist (target.playlistId, accepted);
    return target.isAutomix ? database->addFilesToAutomix (accepted) : LibraryCode::ok;
}

int ImportFiles::putIntoList (const juce::StringArray& accepted) const
{
    auto place = target.place;
    for (const auto& path : accepted)
    {
        SongListEntry entry;
        if (const auto code = database->findByFilename (path, entry); code != LibraryCode::ok)
            return code;
        if (entry.songId >= 0)
            target.list->insert (place++, entry);
    }
    if (target.list->kind == SongListKind::playlist)
        return database->replacePlaylistEntries (target.list);
    return target.list->kind == SongListKind::automix ? database->replaceAutomixEntries (target.list)
                                                      : LibraryCode::ok;
}
