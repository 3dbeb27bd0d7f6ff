#include "session/browse/LibraryJobs.h"

#include "library/exchange/ExportPlaylist.h"
#include "library/exchange/ImportItunes.h"
#include "library/exchange/ImportPlaylist.h"
#include "library/import/ImportFiles.h"
#include "library/import/MovedFiles.h"
#include "library/query/RunQuery.h"
#include "session/browse/JobTask.h"
#include "session/browse/LibraryFaults.h"
#include "session/browse/LibraryRoom.h"
#include "support/language/Translate.h"
#include "tracks/BatchAnalysis.h"

#include <algorithm>

namespace
{
juce::String songsText (int count)
{
    return trPlural ("%1 song", "%1 songs", count);
}

juce::String foundText (const ImportResult& result)
{
    const auto leftOut = result.unplayable.size();
    return leftOut > 0
               ? tr ("%1 found, %2 new, %3 left out.", songsText (result.accepted), result.added, leftOut)
               : tr ("%1 found, %2 new.", songsText (result.accepted), result.added);
}

/** The sentence on a file that can't be written: short, since a line has room for its name alone. */
juce::String unwritten (const juce::File& file)
{
    return tr ("%1 can't be written to %2: is the disk full, or the folder gone?", file.getFileName(),
               file.getParentDirectory().getFullPathName());
}

/** The list that songs are put into, as an import takes it. @param list   has to live as long as the import */
ImportFiles::Target targetOf (ListRef target, int place, SongList& list)
{
    if (place >= 0)
        return { &list, place };
    if (target.kind == SongListKind::playlist)
        return { .playlistId = target.id };
    return { .isAutomix = target.kind == SongListKind::automix };
}

int fillTarget (SongDatabase& database, SongList& list)
{
    if (list.kind == SongListKind::playlist)
        return database.fillPlaylist (&list, list.playlistId, SongField::listOrder, true);
    return list.kind == SongListKind::automix ? database.fillAutomix (&list, SongField::listOrder, true)
                                              : LibraryCode::ok;
}
}

LibraryJobs::LibraryJobs (LibraryRoom& r) : folders (r.places.folders), room (r) {}

LibraryJobs::~LibraryJobs()
{
    const std::scoped_lock scope (lock);
    for (const auto& task : tasks)
        task->cancel();
}

std::shared_ptr<LibraryJobs::Task> LibraryJobs::add (const juce::String& title)
{
    const std::scoped_lock scope (lock);
    tasks.push_back (std::make_shared<Task> (++lastId, title, changeCount));
    ++*changeCount;
    return tasks.back();
}

int LibraryJobs::post (const juce::String& title, std::function<void (Task&)> run)
{
    const auto task = add (title);
    worker.post ({ [this, task, run = std::move (run)] (const std::stop_token&)
                   {
                       if (task->shouldExit())
                           return;
                       task->begin();
                       run (*task);
                       room.watch.look();
                   },
                   [task] (const char* reason) { task->end ({}, reason); } });
    return task->id;
}

int LibraryJobs::importPaths (const juce::StringArray& paths, ListRef target, int place)
{
    return post (tr (ImportTexts::windowTitle),
                 [this, paths, target, place] (Task& task)
                 {
                     SongList list (target.kind, target.id);
                     if (const auto code = fillTarget (room.database, list); code != LibraryCode::ok)
                         return task.end ({}, LibraryFaults::sentence (code));
                     const auto result = ImportFiles (&room.database, paths, targetOf (target, place, list),
                                                      room.places.judge)
                                             .run (task);
                     if (result.code == LibraryCode::ok && !result.isCancelled)
                         folders.note (paths);
                     for (const auto& refused : result.unplayable)
                         task.addFailure (refused);
                     task.end (foundText (result), LibraryFaults::sentence (result.code));
                 });
}

int LibraryJobs::importPlaylist (const juce::File& file, const juce::String& name)
{
    return post (tr (ExchangeTexts::importWindow),
                 [this, file, name] (Task& task)
                 {
                     const auto result = ImportPlaylist (&room.database, file, -1, name).run (task);
                     task.end (
                         tr ("%1 in the playlist, %2 new.", songsText (result.songs), result.added),
                         result.code != LibraryCode::ok ? LibraryFaults::sentence (result.code)
                         : result.isRead || result.isCancelled
                             ? juce::String()
                             : tr ("%1 can't be read to its end as a playlist.", file.getFullPathName()));
                 });
}

int LibraryJobs::importForeign (const juce::File& file)
{
    return post (tr (ExchangeTexts::itunesWindow),
                 [this, file] (Task& task)
                 {
                     const auto result = ImportItunes (&room.database, file).run (task);
                     task.end (trPlural ("%2, %1 playlist.", "%2, %1 playlists.", result.playlists,
                                         songsText (result.tracks)),
                               result.isRead || result.isCancelled
                                   ? juce::String()
                                   : tr ("%1 can't be read as a music library.", file.getFullPathName()));
                 });
}

int LibraryJobs::exportList (const SongQuery& query, const juce::String& name, const juce::File& file)
{
    return post (tr (ExchangeTexts::exportWindow),
                 [this, query, name, file] (Task& task)
                 {
                     task.setStatusText (tr ("Exporting to: %1", file.getFullPathName()));
                     if (query.kind == SongListKind::history)
                         return task.end ({}, room.history.exportTo (query.id, file));
                     SongList list;
                     if (const auto code = runQuery (query, room.database, room.watch.index(), list);
                         code != LibraryCode::ok)
                         return task.end ({}, LibraryFaults::sentence (code));
                     list.name = name;
                     const auto result = ExportPlaylist (&room.database, list, file).run (task);
                     task.end (tr ("%1 exported.", songsText (result.rows)),
                               result.isWritten ? juce::String() : unwritten (file));
                 });
}

int LibraryJobs::backup (const juce::File& file)
{
    return post (tr ("Create Backup"),
                 [this, file] (Task& task)
                 {
                     task.setStatusText (file.getFullPathName());
                     const auto code = room.database.copyTo (file);
                     task.end (code == LibraryCode::ok
                                   ? tr ("The library is copied to %1.", file.getFileName())
                                   : juce::String(),
                               code == LibraryCode::ok ? juce::String() : unwritten (file));
                 });
}

int LibraryJobs::analyse (BatchAnalysis& analysis, const juce::StringArray& paths, bool isAgain)
{
    const auto task = add (tr ("Analyzing"));
    task->begin();
    task->setCount (0, paths.size());
    analysis.addFiles (
        paths, isAgain,
        { [task, total = paths.size(), done = 0] (const BatchAnalysis::Outcome& outcome) mutable
          {
              if (outcome.fault.isNotEmpty())
                  task->addFailure (outcome.path + ": " + outcome.fault);
              task->setCount (++done, total);
              task->setStatusText (outcome.path);
          },
          [task] { return task->shouldExit(); },
          [task]
          {
              const auto job = task->job();
              task->end (tr ("%1 analysed.", songsText (job.done - job.failures.size())));
          } });
    return task->id;
}

int LibraryJobs::relocateIn (const juce::StringArray& below, Task& task)
{
    const auto result = relocateSongs (room.database, below, task);
    for (const auto& doubtful : result.doubtful)
        task.addFailure (doubtful);
    task.end (tr ("%1 missing, %2 found again.", result.missing, result.found),
              LibraryFaults::sentence (result.code));
    return result.found;
}

int LibraryJobs::relocate (const juce::File& folder)
{
    return post (tr ("Looking for moved files"),
                 [this, folder] (Task& task) { relocateIn ({ folder.getFullPathName() }, task); });
}

int LibraryJobs::lookAtFolders (Told told)
{
    return post (
        tr ("Looking at music folders"),
        [this, told] (Task& task)
        {
            juce::StringArray there;
            if (folders.all().isEmpty())
                return task.end ({}, tr ("No music folder was imported yet."));
            for (const auto& folder : folders.all())
                if (juce::File (folder).isDirectory())
                    there.add (folder);
                else
                    task.addFailure (folder + ": " + tr ("The folder is not there now."));
            const auto found = relocateIn (there, task);
            if (task.shouldExit() || task.job().state == LibraryJob::State::failed)
                return;
            if (there.isEmpty())
            {
                if (told == Told::news)
                    dismiss (task.id);
                return;
            }
            const auto moved = task.job().summary;
            task.begin();
            const auto result = ImportFiles (&room.database, there, {}, room.places.judge).run (task);
            for (const auto& refused : result.unplayable)
                task.addFailure (refused);
            task.end (moved + " " + foundText (result), LibraryFaults::sentence (result.code));
            if (told == Told::news && result.code == LibraryCode::ok && found == 0 && result.added == 0)
                dismiss (task.id);
        });
}

std::vector<LibraryJob> LibraryJobs::jobs() const
{
    const std::scoped_lock scope (lock);
    std::vector<LibraryJob> all;
    all.reserve (tasks.size());
    for (const auto& task : tasks)
        all.push_back (task->job());
    return all;
}

void LibraryJobs::cancel (int id)
{
    const std::scoped_lock scope (lock);
    for (const auto& task : tasks)
        if (task->id == id)
            task->cancel();
}

void LibraryJobs::dismiss (int id)
{
    const std::scoped_lock scope (lock);
    std::erase_if (tasks, [id] (const auto& task) { return task->id == id && !task->job().isActive(); });
    ++*changeCount;
}

void LibraryJobs::settle()
{
    worker.wait();
}
