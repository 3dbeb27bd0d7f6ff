#include "session/browse/LibraryWatch.h"

#include <algorithm>
#include <future>

namespace
{
constexpr Worker::Key looking = 0;
constexpr int tickMs = 250;

/** Other programs are asked for once a second. */
constexpr int ticksBetweenOthers = 4;

/** A rebuild because of others waits for so many times what the last one took: one that imports must not keep us busy. */
constexpr juce::uint32 restAfterRebuild = 4;
}

LibraryWatch::LibraryWatch (SongDatabase& d) : database (d)
{
    worker.post ({ [this] (const std::stop_token&)
                   {
                       rebuild();
                       tell ({ .songs = true });
                   } });
    if (juce::MessageManager::getInstanceWithoutCreating() != nullptr)
        startTimer (tickMs);
}

LibraryWatch::~LibraryWatch()
{
    stopTimer();
}

void LibraryWatch::addListener (LibraryListener& listener)
{
    listeners.push_back (&listener);
}

void LibraryWatch::removeListener (LibraryListener& listener)
{
    std::erase (listeners, &listener);
}

void LibraryWatch::timerCallback()
{
    if (database.hasStored() || ++ticks % ticksBetweenOthers == 0)
        look();
}

void LibraryWatch::look()
{
    worker.post (looking, { [this] (const std::stop_token&) { lookOnWorker (true); } });
}

void LibraryWatch::rebuild()
{
    const auto begin = juce::Time::getMillisecondCounter();
    // A file that can't be read keeps the songs that are known; the next change tries again.
    juce::ignoreUnused (songs.build (database));
    lastRebuildEnd = juce::Time::getMillisecondCounter();
    lastRebuildTook = lastRebuildEnd - begin;
    owesRebuild = false;
}

void LibraryWatch::lookOnWorker (bool mayRest)
{
    const auto changes = database.takeChanges();
    LibraryChange change;
    change.lists = changes.lists || changes.byOthers;
    change.byOthers = changes.byOthers;
    change.songs = !changes.songs.empty() || changes.allSongs;
    change.songIds = changes.songs;
    owesRebuild = owesRebuild || changes.byOthers;
    const auto isRested =
        !mayRest
        || juce::Time::getMillisecondCounter() - lastRebuildEnd >= restAfterRebuild * lastRebuildTook;
    if (changes.allSongs || (owesRebuild && isRested)
        || (!changes.songs.empty() && !songs.update (database, changes.songs)))
    {
        rebuild();
        change.songs = true;
        change.songIds.clear();
    }
    if (change.songs || change.lists)
        tell (change);
}

void LibraryWatch::tell (const LibraryChange& change)
{
    calls.post (
        [this, change]
        {
            // A listener may go, or another come, while they are told.
            const auto told = listeners;
            for (auto* const listener : told)
                if (std::find (listeners.begin(), listeners.end(), listener) != listeners.end())
                    listener->libraryChanged (change);
        });
}

void LibraryWatch::settle()
{
    // Not for the worker's end: one that imports posts the next look before the last one is done.
    std::promise<void> looked;
    worker.post ({ [this, &looked] (const std::stop_token&)
                   {
                       lookOnWorker (false);
                       looked.set_value();
                   },
                   [&looked] (const char*) { looked.set_value(); } });
    looked.get_future().wait();
    calls.deliver();
}
