#include "library/file/SessionLock.h"

#include "support/AudioThread.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

SessionLock::~SessionLock()
{
    release();
}

bool SessionLock::takeAlone (const juce::File& file)
{
    assertMayBlock();
    release();
    descriptor = ::open (file.getFullPathName().toRawUTF8(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    return descriptor >= 0 && ::flock (descriptor, LOCK_EX | LOCK_NB) == 0;
}

void SessionLock::share()
{
    assertMayBlock();
    if (descriptor >= 0)
        while (::flock (descriptor, LOCK_SH) != 0 && errno == EINTR)
        {
        }
}

void SessionLock::release()
{
    if (descriptor >= 0)
        ::close (descriptor);
    descriptor = -1;
}
