#include "session/RootLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

RootLock::RootLock (const juce::File& setupFolder) : file (setupFolder.getChildFile ("session.lock")) {}

RootLock::~RootLock()
{
    if (descriptor >= 0)
        close (descriptor);
}

bool RootLock::take()
{
    if (isHeld)
        return true;
    if (descriptor < 0 && file.getParentDirectory().createDirectory().wasOk())
        descriptor = open (file.getFullPathName().toRawUTF8(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    isHeld = descriptor < 0 || flock (descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    return isHeld;
}
