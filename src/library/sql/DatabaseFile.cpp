#include "library/sql/DatabaseFile.h"

#include "library/sql/LibraryCode.h"

#include <sqlite3.h>

namespace
{
/** Milliseconds for which a check waits: of a file that is locked for longer nothing can be told. */
constexpr int patience = 100;
}

DatabaseFile::Health DatabaseFile::check (const juce::File& file)
{
    if (!file.existsAsFile())
        return Health::unknown;
    SqlConnection connection;
    connection.setPatience (patience);
    juce::String answer;
    auto code = connection.open (file.getFullPathName());
    if (code == SQLITE_OK)
        code = connection.run ("PRAGMA schema_version");
    // A file that can't be written to, on a disc say, is checked as it is.
    if (code != SQLITE_OK && code != SQLITE_BUSY && code != SQLITE_NOTADB && code != SQLITE_CORRUPT)
        code = connection.openForReading (file.getFullPathName());
    if (code == SQLITE_OK)
        code = connection.query ("PRAGMA quick_check(1)", [&] (const SqlRow& row) { answer = row.text (0); });
    if (code == SQLITE_OK)
        // Nothing at all passes the check too.
        return answer == "ok" && file.getSize() > 0 ? Health::sound : Health::damaged;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB ? Health::damaged : Health::unknown;
}

bool DatabaseFile::isLocked (const juce::File& file)
{
    SqlConnection connection;
    return !file.existsAsFile() || connection.open (file.getFullPathName()) != SQLITE_OK
           || connection.isHeldByOthers();
}

juce::Array<juce::File> DatabaseFile::sideFilesOf (const juce::File& file)
{
    juce::Array<juce::File> files;
    for (const auto* ending : { "-journal", "-wal", "-shm" })
        if (const juce::File side (file.getFullPathName() + ending); side.exists())
            files.add (side);
    return files;
}

bool DatabaseFile::move (const juce::File& from, const juce::File& to)
{
    if (from.exists() && !from.moveFileTo (to))
        return false;
    // Left behind, they would be played into the file that takes the place.
    for (const auto& side : sideFilesOf (from))
        if (const auto ending = side.getFileName().substring (from.getFileName().length());
            !side.moveFileTo (juce::File (to.getFullPathName() + ending)))
            return false;
    return true;
}

int DatabaseFile::copy (SqlConnection& from, const juce::File& to)
{
    const juce::TemporaryFile temporary (to);
    SqlConnection target;
    auto code = target.open (temporary.getFile().getFullPathName());
    if (code == SQLITE_OK)
        code = from.copyTo (target);
    // A copy is one file, which can be carried about and read from a disc.
    if (code == SQLITE_OK)
        code = target.run ("PRAGMA journal_mode=DELETE");
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
