#include "library/database/SongDatabase.h"

#include "library/database/Schema.h"
#include "library/sql/DatabaseFile.h"

#include <algorithm>

namespace
{
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

SongDatabase::~SongDatabase() = default;

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
    const auto code = openStorage (file, storage);
    if (code != LibraryCode::ok)
    {
        if (notice != nullptr)
            notice ("Unable to Open Database File.");
        return code;
    }
    for (const auto& pragma : Schema::pragmas())
        juce::ignoreUnused (connection.run (pragma));
    createSchema();
    return LibraryCode::ok;
}

void SongDatabase::close()
{
    connection.close();
}

bool SongDatabase::isOpen() const
{
    return connection.isOpen();
}

void SongDatabase::createSchema()
{
    for (const auto& table : Schema::tables())
    {
        // A table and its first rows come together or not at all, as the rows are written only with the table.
        SqlTransaction transaction (connection);
        auto code = connection.run (table.create);
        if (code == LibraryCode::ok)
            code = runAll (table.whenNew);
        if (code != LibraryCode::ok)
        {
            // It exists, most likely.
            transaction.rollBack();
            continue;
        }
        for (const auto& index : table.indexes)
            juce::ignoreUnused (connection.run (index));
    }
}

int SongDatabase::beginTransaction()
{
    const auto code = connection.run ("BEGIN TRANSACTION;");
    if (isOpen())
        ++transactions;
    return code;
}

int SongDatabase::endTransaction()
{
    const auto code = connection.run ("END TRANSACTION;");
    if (code == LibraryCode::busy)
        return code;
    auto count = transactions.load();
    while (count > 0 && !transactions.compare_exchange_weak (count, count - 1))
    {
    }
    return code;
}

int SongDatabase::runAll (std::span<const std::string> statements)
{
    for (const auto& statement : statements)
        if (const auto code = connection.run (statement); code != LibraryCode::ok)
            return code;
    return LibraryCode::ok;
}

int SongDatabase::readText (const std::string& sql, juce::String& text)
{
    text.clear();
    return connection.query (sql, [&] (const SqlRow& row) { text = row.text (0); });
}

int SongDatabase::count (const std::string& sql)
{
    auto result = 0;
    const auto code = connection.query (sql, [&] (const SqlRow& row) { result = row.int32 (0); });
    if (code == LibraryCode::ok)
        return result;
    // SQLite's codes would look like counts.
    return code < 0 ? code : LibraryCode::failed;
}

int SongDatabase::copyTo (const juce::File& target)
{
    return isOpen() ? DatabaseFile::copy (connection, target) : LibraryCode::notOpen;
}
