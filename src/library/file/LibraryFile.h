#pragma once

#include "library/database/SongDatabase.h"
#include "library/file/SessionLock.h"

#include <functional>

/** Looks after the library's file before it is opened: makes it if it is missing, checks it, puts a backup in the place of a
    damaged one, and copies it once a day. It says whatever it takes away or puts in place. A file that another program
    has in use stays as it is.

    Not thread-safe; may block for a second or two with a million songs, see docs/library.md. */
class LibraryFile
{
public:
    using WallClock = std::function<juce::Time()>;

    enum class Purpose
    {
        reading, ///< a file that is as it was closed is neither read nor copied
        writing
    };

    /** The file that a session is to open. */
    struct Session
    {
        juce::File file;

        /** In memory where the folder can't be written to or the disk is full: everything works, nothing is stored. */
        SongDatabase::Storage storage = SongDatabase::Storage::file;

        /** A sentence for the user, or nothing. */
        juce::String message;

        /** The newest good backup, where the file was missing or empty and a new library was begun: to be offered to the
            user; see putBack(). */
        juce::File backup {};
    };

    /** The outcome of putBack(). */
    struct Replacement
    {
        bool isDone;
        juce::String sentence; ///< for the user
    };

    /** The user's library.
        @param folder   "SongManager", which need not exist */
    explicit LibraryFile (const juce::File& folder, WallClock = systemClock);

    /** A library that the user names. It may be any file, so it is never taken away without a backup to take its place.
        Behind a link, its folder is the one that the link leads to. */
    static LibraryFile named (const juce::File&, WallClock = systemClock);

    juce::File file() const;
    juce::File backupFolder() const;
    bool hasBackup() const;

    /** Makes the file fit to be opened, and begins a session that ends with noteClosed() or with this object. Only while
        this program has the file not open. */
    Session prepare (Purpose = Purpose::writing);

    /** Puts a backup in the library's place; what is there is kept beside it under another name. Only between prepare() and
        the opening, or after the closing.
        Refused while another session is on the library. */
    Replacement putBack (const juce::File& backup);

    /** Notes that the file was closed in good order, so that the next start need not read all of it. Only after the
        database was closed; does nothing after a session in memory or on a file that could not be checked. */
    void noteClosed();

private:
    static juce::Time systemClock();
    LibraryFile (const juce::File&, bool isAnyFile, WallClock);

    bool isAsItWasClosed() const;
    Session inMemory() const;
    Session inMemoryOfFullDisk() const;
    juce::File todaysBackup() const;
    juce::File besideBackups (const char* ending) const;
    juce::Array<juce::File> backupsNewestFirst() const;
    juce::File newestGoodBackup() const;
    juce::String replaceLost (const juce::String& whatHappened, const juce::File& backup) const;
    juce::File moveAside (const char* why) const;
    void backUp() const;
    void lookAfter (Purpose, bool isAlone, Session&);
    void beginAnew (Session&);
    void repair (bool isAlone, Session&);

    const juce::File library;
    const bool isAnyFile;
    WallClock now;
    SessionLock lock;
    bool isSound = false;
};
