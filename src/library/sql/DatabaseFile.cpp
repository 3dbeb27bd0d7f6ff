#include "library/sql/DatabaseFile.h"

#include "library/sql/LibraryCode.h"

#include <sqlite3.h>

#include <fcntl.h>
#include <unistd.h>

namespace
{
/** Where SQLite's file format has its locks: the pending byte, the reserved byte and 510 for those who read. */
constexpr off_t lockBytes = 0x40000000;
constexpr off_t lockByteCount = 512;
}

DatabaseFile::Health DatabaseFile::check (const juce::File& file)
{
    if (!file.existsAsFile())
        return Health::unknown;
    SqlConnection connection;
    juce::String answer;
    auto code = connection.open (file.getFullPathName());
    if (code == SQLITE_OK)
        code = connection.query ("PRAGMA quick_check(1)", [&] (const SqlRow& row) { answer = row.text (0); });
    if (code == SQLITE_OK)
        // Nothing at all passes the check too.
        return answer == "ok" && file.getSize() > 0 ? Health::sound : Health::damaged;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB ? Health::damaged : Health::unknown;
}

bool DatabaseFile::isLocked (const juce::File& file)
{
    const auto descriptor = ::open (file.getFullPathName().toRawUTF8(), O_RDWR | O_CLOEXEC);
    if (descriptor < 0)
        return true;
    struct flock lock
    {
    };
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = lockBytes;
    lock.l_len = lockByteCount;
    const auto isTold = ::fcntl (descriptor, F_GETLK, &lock) == 0;
    ::close (descriptor);
    return !isTold || lock.l_type != F_UNLCK;
}

int DatabaseFile::copy (SqlConnection& from, const juce::File& to)
{
    const juce::TemporaryFile temporary (to);
    SqlConnection target;
    auto code = target.open (temporary.getFile().getFullPathName());
    if (code == SQLITE_OK)
        code = from.copyTo (target);
    target.close();
    if (code == SQLITE_OK && !temporary.overwriteTargetFileWithTemporary())
        return LibraryCode::failed;
    return code;
}

int DatabaseFile::copy (const juce::File& from, const juce::File& to)
{
    SqlConnection source;
    const auto code = source.openForReading (from.getFullPathName());
    return code == SQLITE_OK ? copy (source, to) : code;
}
