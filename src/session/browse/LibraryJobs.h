#pragma once

#include "library/database/ListContent.h"
#include "library/import/ImportProgress.h"
#include "library/import/MusicFolders.h"
#include "library/import/SongBatch.h"
#include "library/query/SongQuery.h"
#include "support/Worker.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

class BatchAnalysis;
class LibraryRoom;

/** A long task as views show it. */
struct LibraryJob
{
    enum class State
    {
        waiting,
        running,
        ended,
        cancelled,
        failed ///< ended by a fault, which the summary says
    };

    int id = 0;
    juce::String title; ///< "Importing Music Files"
    juce::String item;  ///< the thing in hand, such as a path
    State state = State::waiting;

    /** Things that are done, of so many; 0 where that is not known before the end. */
    int done = 0, total = 0;

    /** 0 to 1. */
    double part = 0.0;

    /** Nothing in the first second, and where it can't be told. */
    std::optional<int> secondsLeft;

    /** One sentence about the outcome, once it has ended. */
    juce::String summary;

    /** The things that did not succeed, each with the reason: "PATH: sentence". */
    juce::StringArray failures;

    bool isActive() const { return state == State::waiting || state == State::running; }
};

/** Runs the library's long tasks, one after the other on a worker; analyses run on the engine's own thread beside them. A
    cancel keeps what was done. Message thread. */
class LibraryJobs
{
public:
    explicit LibraryJobs (LibraryRoom&);
    ~LibraryJobs();

    /** @name Tasks; each gives the number of its job */
    /** Imports files and folders, and appends them to a list, if one is named, or puts them in front of a place in it.
        Folders are watched from then on. */
    int importPaths (const juce::StringArray& paths, ListRef target = {}, int place = -1);
    int importPlaylist (const juce::File&, const juce::String& name);

    /** Reads the foreign library. */
    int importForeign (const juce::File&);

    /** Writes what a query finds, as ExportPlaylist does. @param name   of the page or list */
    int exportList (const SongQuery&, const juce::String& name, const juce::File&);

    /** Writes a whole copy of the library. */
    int backup (const juce::File&);

    /** Analyses songs by an engine; what is analysed already is only read, unless `isAgain`. Ends with the engine. */
    int analyse (BatchAnalysis&, const juce::StringArray& paths, bool isAgain = false);

    /** The part of a look at the folders that is left to read at its end. */
    enum class Told
    {
        all, ///< what was seen, also if that is nothing: somebody asked
        news ///< nothing, unless a song came or was found again, or the look failed
    };

    /** Looks at the folders that were imported: moved files are found again, then new ones come in. */
    int lookAtFolders (Told = Told::all);

    /** Looks for the files of missing songs below a folder. */
    int relocate (const juce::File& folder);

    /** The jobs that are at work, and those that have ended and were not dismissed, the oldest first. */
    std::vector<LibraryJob> jobs() const;

    /** Ends a job at its next file; nothing happens to one that has ended. */
    void cancel (int id);

    /** Takes a job that has ended from the list. */
    void dismiss (int id);

    /** Counts the changes of what jobs() gives: a view asks at each tick. */
    uint64_t changes() const noexcept { return *changeCount; }

    /** Waits for all jobs but analyses. For programs without a message loop. */
    void settle();

    /** The folders that are looked at again. */
    MusicFolders folders;

private:
    class Task;

    std::shared_ptr<Task> add (const juce::String& title);
    int relocateIn (const juce::StringArray& folders, Task&);
    int post (const juce::String& title, std::function<void (Task&)> run);

    LibraryRoom& room;
    mutable std::mutex lock; ///< of the two below
    std::vector<std::shared_ptr<Task>> tasks;
    int lastId = 0;
    std::shared_ptr<std::atomic<uint64_t>> changeCount = std::make_shared<std::atomic<uint64_t>> (0);
    Worker worker { "libraryJobs" }; ///< last: its jobs use all of the above
};
