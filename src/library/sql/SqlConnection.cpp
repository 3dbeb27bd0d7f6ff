#include "library/sql/SqlConnection.h"

#include "library/sql/LibraryCode.h"
#include "library/sql/StoredText.h"
#include "support/AudioThread.h"

#include <sqlite3.h>

#include <algorithm>

namespace
{
/** How long a statement waits for another process that writes to the same file. */
constexpr int busyMilliseconds = 100;

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
    return openWith (path, SQLITE_OPEN_READONLY);
}

int SqlConnection::openWith (const juce::String& path, int flags)
{
    assertMayBlock();
    close();
    const juce::ScopedLock scope (lock);
    const auto code = sqlite3_open_v2 (path.toRawUTF8(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK)
        close();
    else
        sqlite3_busy_timeout (handle, busyMilliseconds);
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

    // Closing would take back a transaction that somebody left open.
    if (isInTransaction())
        juce::ignoreUnused (run ("END TRANSACTION;"));
    juce::ignoreUnused (sqlite3_close (handle));
    handle = nullptr;
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

int SqlConnection::run (const std::string& sql)
{
    assertMayBlock();
    const juce::ScopedLock scope (lock);
    if (handle == nullptr)
        return LibraryCode::notOpen;
    sqlite3_stmt* statement = nullptr;
    if (const auto code = prepare (sql, 0, statement); code != SQLITE_OK)
        return code;
    const auto code = stepThrough (statement, nullptr);
    sqlite3_finalize (statement);
    return code;
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
    assertMayBlock();
    const juce::ScopedLock scope (lock);
    if (handle == nullptr)
        return LibraryCode::notOpen;
    sqlite3_stmt* statement = nullptr;
    auto code = prepare (sql, 0, statement);
    if (code == SQLITE_OK)
        // Conditions of smart playlists come out of the file: they select, and nothing else.
        code = sqlite3_stmt_readonly (statement) != 0 ? stepThrough (statement, row) : SQLITE_READONLY;
    sqlite3_finalize (statement);
    return code;
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

int SqlConnection::queryKept (const std::string& sql, int32_t value, const RowFunction& row)
{
    assertMayBlock();
    const juce::ScopedLock scope (lock);
    if (handle == nullptr)
        return LibraryCode::notOpen;
    sqlite3_stmt* statement = nullptr;
    if (const auto code = keptStatement (sql, statement); code != SQLITE_OK)
        return code;
    sqlite3_bind_int (statement, 1, value);
    const auto code = stepThrough (statement, row);
    sqlite3_reset (statement);
    return code;
}

int SqlConnection::runKept (const std::string& sql, std::span<const std::string> values,
                            const RowFunction& row)
{
    assertMayBlock();
    const juce::ScopedLock scope (lock);
    if (handle == nullptr)
        return LibraryCode::notOpen;
    sqlite3_stmt* statement = nullptr;
    if (const auto code = keptStatement (sql, statement); code != SQLITE_OK)
        return code;
    for (size_t i = 0; i < values.size(); ++i)
        sqlite3_bind_text (statement, static_cast<int> (i + 1), values[i].data(),
                           static_cast<int> (values[i].size()), SQLITE_STATIC);
    const auto code = stepThrough (statement, row);
    sqlite3_reset (statement);
    sqlite3_clear_bindings (statement);
    return code;
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

SqlTransaction::SqlTransaction (SqlConnection& toUse)
    : connection (toUse),
      open (!toUse.isInTransaction() && toUse.run ("BEGIN TRANSACTION;") == LibraryCode::ok)
{
}

SqlTransaction::~SqlTransaction()
{
    // A commit that fails leaves the transaction open; the next end or the closing tries again.
    if (open)
        juce::ignoreUnused (connection.run ("END TRANSACTION;"));
}

void SqlTransaction::rollBack()
{
    if (open)
        juce::ignoreUnused (connection.run ("ROLLBACK TRANSACTION;"));
    open = false;
}
