#pragma once

#include <juce_core/juce_core.h>

/** Holds a root folder for one process: the first that takes it keeps the settings there. The system lets go of the locks of
    a program that was killed. Not thread-safe. */
class RootLock
{
public:
    /** @param setupFolder   of the root; made if it is missing */
    explicit RootLock (const juce::File& setupFolder);
    ~RootLock();
    RootLock (const RootLock&) = delete;
    RootLock& operator= (const RootLock&) = delete;

    /** Takes the lock if nobody else has it. @returns true if it is held now, or can't be had from this file system */
    bool take();

private:
    const juce::File file;
    int descriptor = -1;
    bool isHeld = false;
};
