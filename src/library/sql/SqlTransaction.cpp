#include "library/sql/SqlTransaction.h"

#include "library/sql/LibraryCode.h"

namespace
{
const char* beginning (bool isNested, SqlTransaction::Purpose purpose)
{
    if (isNested)
        return "SAVEPOINT task";
    // One that begins by reading and writes later is refused without waiting where another has written in between.
    return purpose == SqlTransaction::Purpose::writing ? "BEGIN IMMEDIATE" : "BEGIN TRANSACTION";
}
}

SqlTransaction::SqlTransaction (SqlConnection& toUse, Purpose purpose)
    : scope (toUse.lock),
      connection (toUse),
      isNested (toUse.isInTransaction()),
      begun (toUse.run (beginning (isNested, purpose))),
      isOpen (begun == LibraryCode::ok)
{
    if (isOpen)
        connection.owner = std::this_thread::get_id();
}

SqlTransaction::~SqlTransaction()
{
    rollBack();
}

int SqlTransaction::commit()
{
    if (!isOpen)
        return begun != LibraryCode::ok ? begun : LibraryCode::failed;
    if (!connection.isInTransaction())
    {
        rollBack();
        return LibraryCode::failed;
    }
    const auto code = connection.run (isNested ? "RELEASE task" : "END TRANSACTION");
    if (code != LibraryCode::ok)
        rollBack();
    else
    {
        isOpen = false;
        if (!isNested)
            connection.owner = std::thread::id();
    }
    return code;
}

int SqlTransaction::commitIf (int operationCode)
{
    if (operationCode == LibraryCode::ok)
        return commit();
    rollBack();
    return operationCode;
}

int SqlTransaction::commitAfter (int operationCode)
{
    const auto code = commit();
    return operationCode != LibraryCode::ok ? operationCode : code;
}

void SqlTransaction::rollBack()
{
    if (!isOpen)
        return;
    isOpen = false;
    // A full disk, or a fault in reading, lets SQLite take everything back by itself.
    if (connection.isInTransaction())
    {
        juce::ignoreUnused (connection.run (isNested ? "ROLLBACK TO task" : "ROLLBACK TRANSACTION"));
        if (isNested)
            juce::ignoreUnused (connection.run ("RELEASE task"));
    }
    if (!isNested)
        connection.owner = std::thread::id();
}
