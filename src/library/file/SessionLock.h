#pragma once

#include <juce_core/juce_core.h>

#include <utility>

/** The sign by which the sessions on one library know of each other: a file beside it that they lock, all together, or one alone
    while it looks after the library. The system lets go of the locks of a program that was killed.

    Not thread-safe. */
class SessionLock
{
public:
    SessionLock() = default;
    ~SessionLock();
    SessionLock (SessionLock&& other) noexcept : descriptor (std::exchange (other.descriptor, -1)) {}
    SessionLock (const SessionLock&) = delete;
    SessionLock& operator= (const SessionLock&) = delete;

    /** @returns true if there is no other session, and then none can begin. False too if the file can't be made. */
    bool takeAlone (const juce::File&);

    /** Lets other sessions begin. While another one has the library alone, waits for it: a second or two. */
    void share();

    void release();

private:
    int descriptor = -1;
};
