#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <span>
#include <string>
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

private:
    sqlite3_stmt* statement;
};

/** A connection to SQLite and its lock. Every call takes the lock once, so any thread may call. Gives SQLite's codes, and
    -4 while closed. */
class SqlConnection
{
public:
    using RowFunction = std::function<void (const SqlRow&)>;

    SqlConnection() = default;
    ~SqlConnection();
    SqlConnection (const SqlConnection&) = delete;
    SqlConnection& operator= (const SqlConnection&) = delete;

    /** Opens for reading and writing; a file that is missing is made. @param path   ":memory:" for no file */
    int open (const juce::String& path);

    /** Opens a file that must be there for reading only. */
    int openForReading (const juce::String& path);

    /** Commits what is open and closes. */
    void close();
    bool isOpen() const;

    /** Runs a statement and drops what it gives. What follows its end is not run. */
    int run (const std::string& sql);

    /** Runs an INSERT. @param newId   where the row's id goes */
    int insert (const std::string& sql, int64_t& newId);

    /** Runs one statement that does not write, and hands over its rows under the lock. */
    int query (const std::string& sql, const RowFunction&);

    /** As query() for a statement with one "?" in it, which is kept ready for the next call with the same text. */
    int queryKept (const std::string& sql, int32_t value, const RowFunction&);

    /** Runs a statement with "?" in it, which is kept ready for the next call with the same text.
        @param values   bytes in the order of the "?"; a column of numbers makes numbers of them */
    int runKept (const std::string& sql, std::span<const std::string> values, const RowFunction& = {});

    bool isInTransaction() const;

    /** Copies everything over the content of another database, under this one's lock. */
    int copyTo (SqlConnection& other);

private:
    struct Kept
    {
        std::string sql;
        sqlite3_stmt* statement;
    };

    int openWith (const juce::String& path, int flags);
    int prepare (const std::string& sql, unsigned flags, sqlite3_stmt*&) const;
    int keptStatement (const std::string& sql, sqlite3_stmt*&);

    juce::CriticalSection lock;
    sqlite3* handle = nullptr;
    std::vector<Kept> kept;
};

/** One transaction for a whole loop. Where one is open already, perhaps of another thread, the loop becomes a part of it. */
class SqlTransaction
{
public:
    explicit SqlTransaction (SqlConnection&);
    ~SqlTransaction();
    SqlTransaction (const SqlTransaction&) = delete;
    SqlTransaction& operator= (const SqlTransaction&) = delete;

    /** Takes back what was done, if this began it. */
    void rollBack();

private:
    SqlConnection& connection;
    bool open;
};
