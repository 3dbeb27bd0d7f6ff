#pragma once

#include <juce_core/juce_core.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/** One row of a result, as long as the row function runs. Columns count from 0; a value of another type is converted as
    SQLite does. */
class SqlRow
{
public:
    explicit SqlRow (sqlite3_stmt* source) : statement (source) {}

    int32_t int32 (int column) const;
    int64_t int64 (int column) const;
    double real (int column) const;

    /** The bytes as they are stored, valid UTF-8 or not, up to a zero byte. */
    juce::String text (int column) const;

    /** The bytes themselves, as long as the row function runs. */
    std::string_view bytes (int column) const;

private:
    sqlite3_stmt* statement;
};

/** A connection to SQLite and its lock. A statement takes the lock once, a SqlTransaction for as long as it lives, so any
    thread may call and no statement of another thread gets into a transaction. Gives SQLite's codes, and -4 while closed.
    A statement of a thread with a SqlInterruption ends with LibraryCode::interrupted once that is due. */
class SqlConnection
{
public:
    using RowFunction = std::function<void (const SqlRow&)>;

    /** Milliseconds. */
    static constexpr int defaultPatience = 5000;

    SqlConnection() = default;
    ~SqlConnection();
    SqlConnection (const SqlConnection&) = delete;
    SqlConnection& operator= (const SqlConnection&) = delete;

    /** Opens for reading and writing; a file that is missing is made. @param path   ":memory:" for no file */
    int open (const juce::String& path);

    /** Opens a file that must be there for reading only. Waits for nobody: gives LibraryCode::busy at once. */
    int openForReading (const juce::String& path);

    /** Closes, and takes back what is not committed. */
    void close();
    bool isOpen() const;

    /** Sets how long a statement waits for other connections before it gives LibraryCode::busy; as long as this object
        lives, at first 5 s. */
    void setPatience (int milliseconds);

    /** Makes UPPER, LOWER and LIKE know the letters of all scripts. */
    void useUnicodeCase();

    /** Lets writers and readers go on side by side by a log beside the file, where its file system allows that; elsewhere
        takes the log away. Does nothing while another connection is at work. */
    void useWriteAheadLog();

    /** Runs a statement and drops what it gives. What follows its end is not run. */
    int run (const std::string& sql);

    /** Runs an INSERT. @param newId   where the row's id goes */
    int insert (const std::string& sql, int64_t& newId);

    /** Runs one statement that does not write, and hands over its rows under the lock. */
    int query (const std::string& sql, const RowFunction&);

    /** The same for a statement with one "?" in it, which is kept ready for the next call with the same text. */
    int queryKept (const std::string& sql, int32_t value, const RowFunction&);

    /** Runs a statement with "?" in it, which is kept ready for the next call with the same text.
        @param values   bytes in the order of the "?"; a column of numbers makes numbers of them */
    int runKept (const std::string& sql, std::span<const std::string> values, const RowFunction& = {});

    /** The changes that this connection has stored. */
    struct Stored
    {
        std::vector<int64_t> rows; ///< of the watched table, in no order, some more than once
        bool allRows = false;      ///< of it, or too many to be named
        bool elsewhere = false;    ///< in other tables
    };

    /** Notes from now on which rows of a table are changed. @param table   a literal */
    void watchRows (const char* table);

    /** Takes what was stored since the last call. Any thread; never waits for a statement. */
    Stored takeStored();
    bool hasStored() const noexcept { return hasNewlyStored; }

    /** Notes that all rows of the watched table are stored anew: SQLite tells nothing of a table that is emptied. */
    void noteAllRows();

    /** True once after other connections, of this program or others, have written to the file. The first call says false. */
    bool haveOthersWritten();

    bool isInTransaction() const;

    /** True within a SqlTransaction of the calling thread. */
    bool isInTransactionOfThisThread() const { return owner == std::this_thread::get_id(); }

    /** True if another connection, of any program, holds a lock of the file. SQLite asks, so that no lock of this process
        is lost: a file that is opened and closed beside it would let go of them all. */
    bool isHeldByOthers();

    /** Copies everything over the content of another database, under this one's lock. */
    int copyTo (SqlConnection& other);

private:
    friend class SqlTransaction;

    struct Kept
    {
        std::string sql;
        sqlite3_stmt* statement;
    };

    int openWith (const juce::String& path, int flags);

    /** Lets statements wait for the locks of other connections, as long as `patience` says, or not at all. */
    void waitForOthers (bool isPatient);

    using Binding = std::function<void (sqlite3_stmt*)>;

    int prepare (const std::string& sql, unsigned flags, sqlite3_stmt*&) const;
    int runOnce (const std::string& sql, bool mayWrite, const RowFunction&);
    int keptStatement (const std::string& sql, sqlite3_stmt*&);
    int runBound (const std::string& sql, const Binding&, const RowFunction&);

    void noteStored();

    juce::CriticalSection lock;
    sqlite3* handle = nullptr;
    std::vector<Kept> kept;
    const char* watchedTable = nullptr;
    Stored written; ///< by the transaction at hand
    int64_t totalChanges = 0;
    int64_t dataVersion = -1;
    std::mutex storedLock; ///< of the one below
    Stored stored;
    std::atomic<bool> hasNewlyStored { false };
    int patience = defaultPatience;
    std::chrono::steady_clock::time_point givesUpAt; ///< of the wait at hand
    std::atomic<std::thread::id> owner {};
};
