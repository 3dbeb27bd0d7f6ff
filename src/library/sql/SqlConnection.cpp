#include "library/sql/SqlConnection.h"

#include "library/sql/LibraryCode.h"
#include "library/sql/SqlFunctions.h"
#include "library/sql/SqlInterruption.h"
#include "library/sql/StoredText.h"
#include "support/AudioThread.h"

#include <linux/magic.h>
#include <sqlite3.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <utility>

namespace
{
/** SQLite's steps between two looks at the thread's SqlInterruption: some 20 microseconds. */
constexpr int stepsBetweenLooks = 1000;

/** Time between two tries for a lock. A program that writes one transaction behind the other, such as an import, lets go
    only for moments: SQLite's own handler, which soon tries but every 100 ms, can miss them all for 5 s. */
constexpr std::chrono::milliseconds betweenTries { 1 };

/** Each commit is on the disk before it counts as stored, so that a power cut takes nothing that a hand has done. The log
    keeps 16 MB of the disk at most once its content is in the file. */
constexpr std::array withLog { "PRAGMA journal_mode=WAL", "PRAGMA synchronous=FULL",
                               "PRAGMA journal_size_limit=16777216" };

/** With EXTRA the folder is brought to the disk as well: the last commit is one when the journal has left it. */
constexpr std::array withoutLog { "PRAGMA journal_mode=DELETE", "PRAGMA synchronous=EXTRA" };

/** File systems by whose memory the processes of one machine can't share the log's index, by their magic numbers: those
    of networks, and those that a program serves, which may be one too. */
constexpr std::array<uint32_t, 9> withoutSharedMemory {
    NFS_SUPER_MAGIC,  SMB_SUPER_MAGIC,  CIFS_SUPER_MAGIC,    SMB2_SUPER_MAGIC,      AFS_SUPER_MAGIC,
    CODA_SUPER_MAGIC, FUSE_SUPER_MAGIC, 0x01021997 /* 9p */, 0x00c36400 /* Ceph */,
};

bool canShareMemory (const char* path)
{
    struct statfs system
    {
    };
    return ::statfs (path, &system) == 0
           && std::find (withoutSharedMemory.begin(), withoutSharedMemory.end(),
                         static_cast<uint32_t> (system.f_type))
                  == withoutSharedMemory.end();
}

/** True for the codes of a place where no file can be made, or grow. */
bool isWithoutRoom (int code)
{
    return code == SQLITE_CANTOPEN || code == SQLITE_IOERR || code == SQLITE_FULL || code == SQLITE_READONLY;
}

juce::String asUri (const juce::String& path)
{
    return "file:" + path.replace ("%", "%25").replace ("?", "%3f").replace ("#", "%23") + "?immutable=1";
}

/** Changed rows that are noted one by one; behind more, all are looked at. */
constexpr size_t mostNotedRows = 100'000;

/** Steps through all rows. */
int stepThrough (sqlite3_stmt* statement, const SqlConnection::RowFunction& row)
{
    const SqlRow current (statement);
    auto code = sqlite3_step (statement);
    for (; code == SQLITE_ROW; code = sqlite3_step (statement))
        if (row != nullptr)
            row (current);
    return code == SQLITE_DONE ? SQLITE_OK : code;
}
}

int32_t SqlRow::int32 (int column) const
{
    return sqlite3_column_int (statement, column);
}

int64_t SqlRow::int64 (int column) const
{
    return sqlite3_column_int64 (statement, column);
}

double SqlRow::real (int column) const
{
    return sqlite3_column_double (statement, column);
}

juce::String SqlRow::text (int column) const
{
    if (sqlite3_column_type (statement, column) == SQLITE_INTEGER)
        return StoredText::ofInteger (sqlite3_column_int64 (statement, column));
    return StoredText::read (reinterpret_cast<const char*> (sqlite3_column_text (statement, column)));
}

std::string_view SqlRow::bytes (int column) const
{
    const auto* text = reinterpret_cast<const char*> (sqlite3_column_text (statement, column));
    if (text == nullptr)
        return {};
    return { text, static_cast<size_t> (sqlite3_column_bytes (statement, column)) };
}

SqlConnection::~SqlConnection()
{
    close();
}

int SqlConnection::open (const juce::String& path)
{
    return openWith (path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

int SqlConnection::openForReading (const juce::String& path)
{
    if (const auto code = openWith (path, SQLITE_OPEN_READONLY); code != SQLITE_OK)
        return code;
    const juce::ScopedLock scope (lock);
    waitForOthers (false);
    const auto code = run ("PRAGMA schema_version");
    waitForOthers (true);
    if (code == SQLITE_BUSY)
    {
        close();
        return code;
    }
    // A file with a log can't be read where no log can be made, such as on a disc or a full one, unless nobody writes to it.
    if (isWithoutRoom (code) && juce::File (path + "-wal").getSize() == 0)
        return openWith (asUri (path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    return SQLITE_OK;
}

int SqlConnection::openWith (const juce::String& path, int flags)
{
    assertMayBlock();
    close();
    const juce::ScopedLock scope (lock);
    const auto code = sqlite3_open_v2 (path.toRawUTF8(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK)
    {
        close();
        return code;
    }
    setPatience (patience);
    sqlite3_progress_handler (
        handle, stepsBetweenLooks, [] (void*) { return SqlInterruption::isDue() ? 1 : 0; }, nullptr);
    return code;
}

void SqlConnection::close()
{
    const juce::ScopedLock scope (lock);
    if (handle == nullptr)
        return;
    for (const auto& each : kept)
        sqlite3_finalize (each.statement);
    kept.clear();
    juce::ignoreUnused (sqlite3_close (handle)); // refused only for statements that are not finalized
    handle = nullptr;
    watchedTable = nullptr;
    written = {};
    dataVersion = -1;
}

void SqlConnection::setPatience (int milliseconds)
{
    const juce::ScopedLock scope (lock);
    patience = milliseconds;
    if (handle != nullptr)
        waitForOthers (true);
}

void SqlConnection::waitForOthers (bool isPatient)
{
    const auto tryAgain = [] (void* self, int tries)
    {
        auto& connection = *static_cast<SqlConnection*> (self);
        const auto now = std::chrono::steady_clock::now();
        if (tries == 0)
            connection.givesUpAt = now + std::chrono::milliseconds (connection.patience);
        if (now >= connection.givesUpAt)
            return 0;
        std::this_thread::sleep_for (betweenTries);
        return 1;
    };
    sqlite3_busy_handler (handle, isPatient ? +tryAgain : nullptr, this);
}

void SqlConnection::useUnicodeCase()
{
    const juce::ScopedLock scope (lock);
    if (handle != nullptr)
        SqlFunctions::add (handle);
}

void SqlConnection::useWriteAheadLog()
{
    const juce::ScopedLock scope (lock);
    const auto* const path = handle != nullptr ? sqlite3_db_filename (handle, "main") : nullptr;
    if (path == nullptr || *path == 0)
        return;
    waitForOthers (false);
    for (const auto* pragma : canShareMemory (path) ? std::span<const char* const> (withLog) : withoutLog)
        juce::ignoreUnused (run (pragma));
    waitForOthers (true);
}

bool SqlConnection::isHeldByOthers()
{
    assertMayBlock();
    const juce::ScopedLock scope (lock);
    sqlite3_file* file = nullptr;
    if (handle == nullptr
        || sqlite3_file_control (handle, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK
        || file == nullptr || file->pMethods == nullptr)
        return false;
    auto code = file->pMethods->xLock (file, SQLITE_LOCK_SHARED);
    if (code == SQLITE_OK)
        code = file->pMethods->xLock (file, SQLITE_LOCK_EXCLUSIVE);
    juce::ignoreUnused (file->pMethods->xUnlock (file, SQLITE_LOCK_NONE));
    return code == SQLITE_BUSY;
}

bool SqlConnection::isOpen() const
{
    const juce::ScopedLock scope (lock);
    return handle != nullptr;
}

int SqlConnection::prepare (const std::string& sql, unsigned flags, sqlite3_stmt*& statement) const
{
    return sqlite3_prepare_v3 (handle, sql.c_str(), static_cast<int> (sql.size() + 1), flags, &statement,
                               nullptr);
}

int SqlConnection::runOnce (const std::string& sql, bool mayWrite, const RowFunction& row)
{
    assertMayBlock();
    const juce::ScopedLock scope (lock);
    if (handle == nullptr)
        return LibraryCode::notOpen;
    sqlite3_stmt* statement = nullptr;
    auto code = prepare (sql, 0, statement);
    if (code == SQLITE_OK)
        code = mayWrite || sqlite3_stmt_readonly (statement) != 0 ? stepThrough (statement, row)
                                                                  : SQLITE_READONLY;
    sqlite3_finalize (statement);
    noteStored();
    return code;
}

int SqlConnection::run (const std::string& sql)
{
    return runOnce (sql, true, nullptr);
}

int SqlConnection::insert (const std::string& sql, int64_t& newId)
{
    const juce::ScopedLock scope (lock);
    const auto code = run (sql);
    if (code == SQLITE_OK)
        newId = sqlite3_last_insert_rowid (handle);
    return code;
}

int SqlConnection::query (const std::string& sql, const RowFunction& row)
{
    // Conditions of smart playlists come out of the file: they select, and nothing else.
    return runOnce (sql, false, row);
}

int SqlConnection::keptStatement (const std::string& sql, sqlite3_stmt*& statement)
{
    const auto found =
        std::find_if (kept.begin(), kept.end(), [&] (const Kept& each) { return each.sql == sql; });
    if (found != kept.end())
    {
        statement = found->statement;
        return SQLITE_OK;
    }
    const auto code = prepare (sql, SQLITE_PREPARE_PERSISTENT, statement);
    if (code == SQLITE_OK)
        kept.push_back ({ sql, statement });
    return code;
}

int SqlConnection::runBound (const std::string& sql, const Binding& bind, const RowFunction& row)
{
    assertMayBlock();
    const juce::ScopedLock scope (lock);
    if (handle == nullptr)
        return LibraryCode::notOpen;
    sqlite3_stmt* statement = nullptr;
    if (const auto code = keptStatement (sql, statement); code != SQLITE_OK)
        return code;
    bind (statement);
    const auto code = stepThrough (statement, row);
    sqlite3_reset (statement);
    sqlite3_clear_bindings (statement);
    noteStored();
    return code;
}

void SqlConnection::watchRows (const char* table)
{
    const juce::ScopedLock scope (lock);
    if (handle == nullptr)
        return;
    watchedTable = table;
    totalChanges = sqlite3_total_changes (handle);
    const auto noteRow = [] (void* self, int, const char*, const char* changed, sqlite3_int64 row)
    {
        auto& connection = *static_cast<SqlConnection*> (self);
        if (std::string_view (changed) != connection.watchedTable)
            connection.written.elsewhere = true;
        else if (connection.written.rows.size() < mostNotedRows)
            connection.written.rows.push_back (row);
        else
            connection.written.allRows = true;
    };
    sqlite3_update_hook (handle, noteRow, this);
}

void SqlConnection::noteStored()
{
    if (watchedTable == nullptr || sqlite3_get_autocommit (handle) == 0)
        return;
    const auto changes = sqlite3_total_changes (handle);
    if (changes == totalChanges && !written.allRows)
        return;
    totalChanges = changes;
    // A table that is emptied counts its rows and names none.
    const std::scoped_lock scope (storedLock);
    stored.elsewhere = stored.elsewhere || written.elsewhere || written.rows.empty();
    stored.allRows = stored.allRows || written.allRows || stored.rows.size() > mostNotedRows;
    stored.rows.insert (stored.rows.end(), written.rows.begin(), written.rows.end());
    written = {};
    hasNewlyStored = true;
}

SqlConnection::Stored SqlConnection::takeStored()
{
    const std::scoped_lock scope (storedLock);
    hasNewlyStored = false;
    return std::exchange (stored, {});
}

void SqlConnection::noteAllRows()
{
    const std::scoped_lock scope (storedLock);
    stored.allRows = true;
    hasNewlyStored = true;
}

bool SqlConnection::haveOthersWritten()
{
    const juce::ScopedLock scope (lock);
    int64_t version = -1;
    if (query ("PRAGMA data_version", [&] (const SqlRow& row) { version = row.int64 (0); })
        != LibraryCode::ok)
        return false;
    const auto before = std::exchange (dataVersion, version);
    return before >= 0 && before != version;
}

int SqlConnection::queryKept (const std::string& sql, int32_t value, const RowFunction& row)
{
    return runBound (
        sql, [value] (sqlite3_stmt* statement) { sqlite3_bind_int (statement, 1, value); }, row);
}

int SqlConnection::runKept (const std::string& sql, std::span<const std::string> values,
                            const RowFunction& row)
{
    const auto bind = [values] (sqlite3_stmt* statement)
    {
        for (size_t i = 0; i < values.size(); ++i)
            sqlite3_bind_text (statement, static_cast<int> (i + 1), values[i].data(),
                               static_cast<int> (values[i].size()), SQLITE_STATIC);
    };
    return runBound (sql, bind, row);
}

bool SqlConnection::isInTransaction() const
{
    const juce::ScopedLock scope (lock);
    return handle != nullptr && sqlite3_get_autocommit (handle) == 0;
}

int SqlConnection::copyTo (SqlConnection& other)
{
    assertMayBlock();
    const juce::ScopedLock scope (lock);
    if (handle == nullptr || other.handle == nullptr)
        return LibraryCode::notOpen;
    auto* const backup = sqlite3_backup_init (other.handle, "main", handle, "main");
    if (backup == nullptr)
        return sqlite3_errcode (other.handle);
    const auto stepped = sqlite3_backup_step (backup, -1);
    const auto finished = sqlite3_backup_finish (backup);
    return stepped == SQLITE_DONE ? finished : stepped;
}
