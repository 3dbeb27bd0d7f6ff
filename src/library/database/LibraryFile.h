#pragma once

#include "library/database/SongDatabase.h"

#include <functional>

/** The library's file before it is opened: made if it is missing, checked, put back from a backup if it is damaged, and
    copied once a day. Whatever it takes away or puts in place, it says.

    Not thread-safe; may block for a second or two with a million songs, see docs/library.md. */
class LibraryFile
{
public:
    using WallClock = std::function<juce::Time()>;

    /** What a session is to open. */
    struct Session
    {
        juce::File file;

        /** In memory where the folder can't be written to or the disk is full: everything works, nothing is stored. */
        SongDatabase::Storage storage = SongDatabase::Storage::file;

        /** A sentence for the user, or nothing. */
        juce::String message;
    };

    /** @param folder   "SongManager", which need not exist */
    explicit LibraryFile (
        const juce::File& folder, WallClock = [] { return juce::Time::getCurrentTime(); });

    juce::File file() const;
    juce::File backupFolder() const;

    /** Makes the file fit to be opened for writing. */
    Session prepare();

    /** Notes that the file was closed in good order, so that the next start need not read all of it. Only after the
        database was closed; does nothing after a session in memory. */
    void noteClosed() const;

private:
    bool isAsItWasClosed() const;
    Session inMemory() const;
    juce::File todaysBackup() const;
    juce::File closedNote() const;
    juce::Array<juce::File> backupsNewestFirst() const;
    juce::String replaceLost (const juce::String& whatHappened) const;
    juce::File moveAside() const;
    void backUp() const;

    juce::File folder;
    WallClock now;
    bool opened = false;
};
