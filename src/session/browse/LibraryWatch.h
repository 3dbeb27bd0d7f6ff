#pragma once

#include "library/database/SongDatabase.h"
#include "library/query/SongIndex.h"
#include "session/browse/LibraryChange.h"
#include "session/browse/MessageCalls.h"
#include "support/Worker.h"

#include <juce_events/juce_events.h>

/** Looks after what changes in the library, by this program and by others, keeps the index of songs in step, and tells the
    views: at once after edits, else a few times a second. Message thread; reads on a worker. */
class LibraryWatch : private juce::Timer
{
public:
    /** Begins to make the index. */
    explicit LibraryWatch (SongDatabase&);
    ~LibraryWatch() override;

    void addListener (LibraryListener&);
    void removeListener (LibraryListener&);

    /** Looks for changes now. Any thread that may block. */
    void look();

    /** Tells of changes that the database knows nothing of, such as the history. Any thread that may block. */
    void tell (const LibraryChange&);

    /** The songs in memory, for searches and orders. Its functions are for any thread but the message thread. */
    const SongIndex& index() const { return songs; }

    /** Waits for a look and tells what it found. For programs without a message loop. */
    void settle();

private:
    void timerCallback() override;
    void lookOnWorker (bool mayRest);
    void rebuild();

    SongDatabase& database;
    SongIndex songs;
    int ticks = 0;
    juce::uint32 lastRebuildEnd = 0, lastRebuildTook = 0; ///< ms; of the worker
    bool owesRebuild = false;                             ///< of the worker
    std::vector<LibraryListener*> listeners;
    MessageCalls calls;
    Worker worker { "libraryWatch" }; ///< last: its jobs use all of the above
};
