#pragma once

#include "library/sql/SqlConnection.h"

#include <string>

/** One transaction, which belongs to the thread that made it: the connection is its own until it ends. One within another
    of the same thread is a savepoint: it can be taken back alone, and is stored with the outer one. What is not committed
    when this object goes is taken back. */
class SqlTransaction
{
public:
    enum class Purpose
    {
        reading, ///< sees one state of the file throughout; or writes to temporary tables alone
        writing  ///< waits at the beginning for others that write
    };

    SqlTransaction (SqlConnection&, Purpose);
    ~SqlTransaction();
    SqlTransaction (const SqlTransaction&) = delete;
    SqlTransaction& operator= (const SqlTransaction&) = delete;

    /** The code of the beginning: with any but 0 there is no transaction, and nothing is to be written. */
    int code() const { return begun; }

    /** False where there is no transaction, or none any more: a statement that meets a full disk or a fault of the medium
        may take back all that was done before it. What is written then would be stored at once. */
    bool stands() const { return isOpen && connection.isInTransaction(); }

    /** Stores what was done; waits for other programs that read, and takes all back if that is in vain.
        @returns the code of it, LibraryCode::failed where a statement that failed took everything back already */
    int commit();

    /** Commits if the operation succeeded, else takes back. @returns the operation's code, or the commit's */
    int commitIf (int operationCode);

    /** Commits what was done by the time at which an operation failed or ended. @returns the operation's code, or the
        commit's */
    int commitAfter (int operationCode);

    void rollBack();

private:
    const juce::ScopedLock scope;
    SqlConnection& connection;
    const bool isNested;
    const int begun;
    bool isOpen;
};
