#pragma once

/** A disk that fills up: as long as it lives, SQLite's files that this process opens are on it, and the n-th write to them
    and all that follow find no room. */
class FailingDisk
{
public:
    /** @param isOfNetwork   it then has no memory that processes share, so that a write-ahead log is refused */
    explicit FailingDisk (bool isOfNetwork = false);
    ~FailingDisk();
    FailingDisk (const FailingDisk&) = delete;
    FailingDisk& operator= (const FailingDisk&) = delete;

    /** Lets so many writes from now on succeed. */
    static void fillAfter (int writes);

    /** Gives room again. @returns true if a write had failed */
    static bool makeRoom();

    /** True if the last thing that was done is a sync: a power cut would take no write. */
    static bool isSynced();
};
