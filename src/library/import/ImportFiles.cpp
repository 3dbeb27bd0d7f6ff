#include "library/import/ImportFiles.h"

#include "library/database/SongDatabase.h"

ImportFiles::ImportFiles (SongDatabase* d, const juce::StringArray& p, const Target& t)
    : database (d),
      paths (p),
      target (t)
{
}

ImportResult ImportFiles::run (ImportProgress& progress)
{
    if (database == nullptr)
        return {};

    juce::StringArray accepted;
    ImportResult result;
    {
        ImportRun importRun (*database, progress);
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
        result = importRun.end();
    }

    // Each would wait again.
    if (result.isLocked)
        return result;
    if (target.list != nullptr)
        putIntoList (accepted);
    else if (target.playlistId >= 0)
        database->addFilesToPlaylist (target.playlistId, accepted);
    else if (target.isAutomix)
        database->addFilesToAutomix (accepted);
    return result;
}

void ImportFiles::putIntoList (const juce::StringArray& accepted)
{
    auto place = target.place;
    for (const auto& path : accepted)
    {
        SongListEntry entry;
        if (database->findByFilename (path, entry) == 0 && entry.songId >= 0)
            target.list->insert (place++, entry);
    }
    if (target.list->kind == SongListKind::playlist)
        database->replacePlaylistEntries (target.list);
    else if (target.list->kind == SongListKind::automix)
        database->replaceAutomixEntries (target.list);
}
