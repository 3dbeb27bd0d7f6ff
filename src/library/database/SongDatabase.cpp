#include "library/database/SongDatabase.h"

#include "library/database/Schema.h"
#include "library/sql/DatabaseFile.h"

#include <algorithm>

namespace
{
constexpr const char* cannotOpen = "Unable to Open Database File.";

/** SQLite's codes for a table that is there already, and for one that is missing in a file which can't be written to. */
constexpr int alreadyExists = 1;
constexpr int readOnly = 8;

template <typename Get>
std::array<const char*, songFieldCount> namesOfFields (Get get)
{
    std::array<const char*, songFieldCount> names {};
    std::transform (songFields.begin(), songFields.end(), names.begin(), get);
    return names;
}
}

const std::array<const char*, songFieldCount> SongDatabase::displayNames =
    namesOfFields ([] (const SongFieldInfo& field) { return field.displayName; });
const std::array<const char*, songFieldCount> SongDatabase::columnNames =
    namesOfFields ([] (const SongFieldInfo& field) { return nameOf (field.column); });

SongDatabase::SongDatabase() = default;

SongDatabase::SongDatabase (const juce::File& file, Storage storage, Notice notice)
{
    juce::ignoreUnused (open (file, storage, notice));
}

SongDatabase::~SongDatabase()
{
    close();
}

int SongDatabase::openStorage (const juce::File& file, Storage storage)
{
    if (storage == Storage::file)
        return connection.open (file.getFullPathName());

    if (const auto code = connection.open (":memory:"); code != LibraryCode::ok)
        return code;
    SqlConnection stored;
    if (stored.openForReading (file.getFullPathName()) == LibraryCode::ok
        && stored.copyTo (connection) != LibraryCode::ok)
        // Half a copy is worse than none.
        return connection.open (":memory:");
    return LibraryCode::ok;
}

int SongDatabase::open (const juce::File& file, Storage storage, const Notice& notice)
{
    auto code = openStorage (file, storage);
    // The one wait for another program: the settings behind it would each wait again.
    if (code == LibraryCode::ok && connection.query ("PRAGMA schema_version", nullptr) == LibraryCode::busy)
        code = LibraryCode::busy;
    if (code != LibraryCode::ok)
    {
        close();
        if (notice != nullptr)
            notice (cannotOpen);
        return code;
    }
    prepare (connection);
    connection.useWriteAheadLog();
    if (const auto made = createSchema(); made != LibraryCode::ok)
    {
        // Without its tables, even the temporary ones, it would only seem to be open.
        close();
        if (notice != nullptr)
            notice (cannotOpen);
        return made;
    }
    connection.watchRows ("songs");
    juce::ignoreUnused (connection.haveOthersWritten()); // from now on
    if (storage == Storage::file)
    {
        storedIn = file;
        readers.open (file.getFullPathName(), [this] (SqlConnection& reader) { prepare (reader); });
    }
    return LibraryCode::ok;
}

void SongDatabase::prepare (SqlConnection& toPrepare) const
{
    for (const auto& pragma : Schema::pragmas())
        juce::ignoreUnused (toPrepare.run (pragma)); // each at best effort
    // Behind the settings: one of them puts SQLite's own LIKE back.
    toPrepare.useUnicodeCase();
}

void SongDatabase::close()
{
    readers.close();
    connection.close();
    storedIn = juce::File();
}

void SongDatabase::setPatience (int milliseconds)
{
    patience = milliseconds;
    connection.setPatience (milliseconds);
}

bool SongDatabase::isOpen() const
{
    return connection.isOpen();
}

ReadConnections::Loan SongDatabase::reading()
{
    if (connection.isInTransactionOfThisThread())
        return ReadConnections::Loan (connection);
    return ReadConnections::Loan (readers, connection, patience);
}

int SongDatabase::createSchema()
{
    for (const auto& table : Schema::tables())
    {
        // A table and its first rows come together or not at all, as the rows are written only with the table.
        SqlTransaction transaction (connection, SqlTransaction::Purpose::reading);
        auto code = transaction.code();
        if (code == LibraryCode::ok)
            code = connection.run (table.create);
        if (code == LibraryCode::ok)
            code = runAll (table.whenNew);
        // An index that exists is no reason to take the table back.
        for (const auto& index : table.indexes)
            if (code == LibraryCode::ok)
                if (const auto made = connection.run (index); made == LibraryCode::busy)
                    code = made;
        code = transaction.commitIf (code);
        if (code != LibraryCode::ok && code != alreadyExists && code != readOnly)
            return code;
    }
    return LibraryCode::ok;
}

int SongDatabase::runAll (std::span<const std::string> statements)
{
    for (const auto& statement : statements)
        if (const auto code = connection.run (statement); code != LibraryCode::ok)
            return code;
    return LibraryCode::ok;
}

int SongDatabase::runTogether (std::span<const std::string> statements)
{
    auto transaction = beginTransaction();
    return transaction.commitIf (transaction.code() == LibraryCode::ok ? runAll (statements)
                                                                       : transaction.code());
}

int SongDatabase::readText (SqlConnection& from, const std::string& sql, juce::String& text)
{
    text.clear();
    return from.query (sql, [&] (const SqlRow& row) { text = row.text (0); });
}

int SongDatabase::count (SqlConnection& from, const std::string& sql)
{
    auto result = 0;
    const auto code = from.query (sql, [&] (const SqlRow& row) { result = row.int32 (0); });
    return code == LibraryCode::ok ? result : LibraryCode::inPlaceOfCount (code);
}

int SongDatabase::copyTo (const juce::File& target)
{
    return isOpen() ? DatabaseFile::copy (connection, target) : LibraryCode::notOpen;
}

SongDatabase::Changes SongDatabase::takeChanges()
{
    Changes changes;
    auto stored = connection.takeStored();
    std::sort (stored.rows.begin(), stored.rows.end());
    stored.rows.erase (std::unique (stored.rows.begin(), stored.rows.end()), stored.rows.end());
    changes.songs.assign (stored.rows.begin(), stored.rows.end());
    changes.allSongs = stored.allRows;
    changes.lists = stored.elsewhere;
    changes.byOthers = connection.haveOthersWritten();
    return changes;
}
