#include "session/RootLock.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <unistd.h>

namespace
{
constexpr int stepMs = 20;
constexpr int noticeMs = 200; ///< until a program that was killed shows it, on a busy machine
constexpr int endingMs = 5000;

/** True for a process that has no memory any more, or that is gone. */
bool hasEnded (int process)
{
    const juce::File sizes ("/proc/" + juce::String (process) + "/statm");
    return sizes.loadFileAsString().startsWith ("0 ") || !sizes.existsAsFile();
}

bool tryOnce (int descriptor)
{
    return descriptor < 0 || flock (descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/** Writes this process into the lock's file: the next one that asks looks who has it. On a full disk nobody is named. */
void nameHolder (int descriptor)
{
    const auto process = std::to_string (getpid()) + "\n";
    if (ftruncate (descriptor, 0) == 0)
        juce::ignoreUnused (pwrite (descriptor, process.data(), process.size(), 0));
}

bool isHolderEnding (int descriptor)
{
    std::array<char, 16> text {};
    const auto length = pread (descriptor, text.data(), text.size(), 0);
    int process = 0;
    std::from_chars (text.data(), text.data() + std::max<ssize_t> (length, 0), process);
    return process > 0 && process != getpid() && hasEnded (process);
}
}

RootLock::RootLock (const juce::File& setupFolder) : file (setupFolder.getChildFile ("session.lock")) {}

RootLock::~RootLock()
{
    if (descriptor >= 0)
        close (descriptor);
}

/** The first time it waits a moment for a holder that is about to end, such as a program that was killed just now: that lasts
    until the system has taken its memory back. */
bool RootLock::take()
{
    if (isHeld)
        return true;
    const auto isFirst = descriptor < 0;
    if (isFirst && file.getParentDirectory().createDirectory().wasOk())
        descriptor = open (file.getFullPathName().toRawUTF8(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    isHeld = tryOnce (descriptor);
    for (int ms = 0; !isHeld && isFirst && ms < (isHolderEnding (descriptor) ? endingMs : noticeMs);
         ms += stepMs)
    {
        juce::Thread::sleep (stepMs);
        isHeld = tryOnce (descriptor);
    }
    if (isHeld && descriptor >= 0)
        nameHolder (descriptor);
    return isHeld;
}
