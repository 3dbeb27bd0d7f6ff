#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <string>

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

    /** Opens for reading and writing. @param path   UTF-8, ":memory:" for none */
    int open (const juce::String& path, bool createIfMissing);

    /** Opens for reading only, and believes that nobody writes: a folder that can't be written to is no obstacle. */
    int openUnchanging (const juce::String& path);
    void close();
    bool isOpen() const;

    /** Runs a statement and drops what it gives. What follows its end is not run. */
    int run (const std::string& sql);

    /** Runs one statement that does not write, and hands over its rows. */
    int query (const std::string& sql, const RowFunction&);

    /** As query() for a statement with one "?" in it, which is kept ready for the next call with the same text. */
    int queryKept (const std::string& sql, int32_t value, const RowFunction&);

    /** The id of the row that was inserted last. */
    int64_t lastRowId() const;

    bool isInTransaction() const;

    /** Copies everything of this database over everything of another. */
    int copyTo (SqlConnection&);

private:
    struct Kept
    {
        std::string sql;
        sqlite3_stmt* statement = nullptr;
    };

    sqlite3_stmt* keptStatement (const std::string& sql, int& code);
    int openWith (const juce::String& path, int flags);

    juce::CriticalSection lock;
    sqlite3* handle = nullptr;
    std::vector<Kept> kept;
};
