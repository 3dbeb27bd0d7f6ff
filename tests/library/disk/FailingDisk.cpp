#include "disk/FailingDisk.h"

#include <sqlite3.h>

#include <atomic>
#include <climits>

// A layer over SQLite's own file system: each file is one of its files with a table of functions in front.

namespace
{
std::atomic<int> writesLeft { INT_MAX };
std::atomic<bool> hasFailed { false };
std::atomic<int> unsyncedWrites { 0 };

sqlite3_vfs* const below = sqlite3_vfs_find (nullptr);

/** The file below stands behind ours, and expects to be called with its own address. */
sqlite3_file* inner (sqlite3_file* file)
{
    return reinterpret_cast<sqlite3_file*> (reinterpret_cast<char*> (file) + sizeof (sqlite3_file));
}

template <auto function, typename... Arguments>
int pass (sqlite3_file* file, Arguments... arguments)
{
    const auto* methods = inner (file)->pMethods;
    return (methods->*function) (inner (file), arguments...);
}

void passBarrier (sqlite3_file* file)
{
    inner (file)->pMethods->xShmBarrier (inner (file));
}

int write (sqlite3_file* file, const void* bytes, int count, sqlite3_int64 place)
{
    if (--writesLeft < 0)
    {
        hasFailed = true;
        return SQLITE_FULL;
    }
    ++unsyncedWrites;
    return inner (file)->pMethods->xWrite (inner (file), bytes, count, place);
}

int sync (sqlite3_file* file, int flags)
{
    unsyncedWrites = 0;
    return inner (file)->pMethods->xSync (inner (file), flags);
}

sqlite3_io_methods methods {
    3,
    pass<&sqlite3_io_methods::xClose>,
    pass<&sqlite3_io_methods::xRead>,
    write,
    pass<&sqlite3_io_methods::xTruncate>,
    sync,
    pass<&sqlite3_io_methods::xFileSize>,
    pass<&sqlite3_io_methods::xLock>,
    pass<&sqlite3_io_methods::xUnlock>,
    pass<&sqlite3_io_methods::xCheckReservedLock>,
    pass<&sqlite3_io_methods::xFileControl>,
    pass<&sqlite3_io_methods::xSectorSize>,
    pass<&sqlite3_io_methods::xDeviceCharacteristics>,
    pass<&sqlite3_io_methods::xShmMap>,
    pass<&sqlite3_io_methods::xShmLock>,
    passBarrier,
    pass<&sqlite3_io_methods::xShmUnmap>,
    pass<&sqlite3_io_methods::xFetch>,
    pass<&sqlite3_io_methods::xUnfetch>,
};

int open (sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* opened)
{
    const auto code = below->xOpen (below, name, inner (file), flags, opened);
    file->pMethods = code == SQLITE_OK ? &methods : nullptr;
    return code;
}

sqlite3_vfs* layer()
{
    static auto made = []
    {
        auto vfs = *below;
        vfs.zName = "failing";
        vfs.szOsFile = static_cast<int> (sizeof (sqlite3_file)) + below->szOsFile;
        vfs.pNext = nullptr;
        vfs.xOpen = open;
        return vfs;
    }();
    return &made;
}
}

FailingDisk::FailingDisk (bool isOfNetwork)
{
    makeRoom();
    methods.iVersion = isOfNetwork ? 1 : 3;
    sqlite3_vfs_register (layer(), 1);
}

FailingDisk::~FailingDisk()
{
    makeRoom();
    sqlite3_vfs_unregister (layer());
    sqlite3_vfs_register (below, 1);
}

void FailingDisk::fillAfter (int writes)
{
    writesLeft = writes;
}

bool FailingDisk::isSynced()
{
    return unsyncedWrites == 0;
}

bool FailingDisk::makeRoom()
{
    writesLeft = INT_MAX;
    return hasFailed.exchange (false);
}
