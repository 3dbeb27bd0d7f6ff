#include "library/database/LibraryFile.h"

#include "library/database/DatabaseFile.h"
#include "support/AudioThread.h"

#include <sys/stat.h>

#include <algorithm>

namespace
{
constexpr int backupsKept = 7;
const juce::String baseName ("px_music_library");

/** What a new file needs before there is a song in it, and about what a write of a few rows needs. */
constexpr size_t probeBytes = 64 * 1024;

/** Tries it: permission bits say nothing of a full disk or a read-only medium, and nothing at all to an administrator. */
bool canWriteIn (const juce::File& folder)
{
    const juce::TemporaryFile probe (folder.getChildFile ("probe"));
    const juce::MemoryBlock bytes (probeBytes, true);
    return probe.getFile().replaceWithData (bytes.getData(), bytes.getSize());
}

/** Size and time of the last change, to the nanosecond: what tells one state of a file from another. */
juce::String stateOf (const juce::File& file)
{
    struct stat facts
    {
    };
    if (::stat (file.getFullPathName().toRawUTF8(), &facts) != 0)
        return {};
    return juce::String (static_cast<juce::int64> (facts.st_size)) + " "
           + juce::String (static_cast<juce::int64> (facts.st_ino)) + " "
           + juce::String (static_cast<juce::int64> (facts.st_mtim.tv_sec)) + "."
           + juce::String (static_cast<juce::int64> (facts.st_mtim.tv_nsec));
}

juce::File journalOf (const juce::File& file)
{
    return juce::File (file.getFullPathName() + "-journal");
}
}

LibraryFile::LibraryFile (const juce::File& songManager, WallClock clock)
    : folder (songManager),
      now (std::move (clock))
{
}

juce::File LibraryFile::file() const
{
    return folder.getChildFile (baseName + ".sqlite");
}

juce::File LibraryFile::backupFolder() const
{
    return folder.getChildFile ("backups");
}

juce::File LibraryFile::todaysBackup() const
{
    return backupFolder().getChildFile (baseName + "_" + now().formatted ("%Y-%m-%d") + ".sqlite");
}

juce::File LibraryFile::closedNote() const
{
    return backupFolder().getChildFile ("closed");
}

bool LibraryFile::isAsItWasClosed() const
{
    return !journalOf (file()).exists() && closedNote().existsAsFile()
           && closedNote().loadFileAsString() == stateOf (file());
}

juce::Array<juce::File> LibraryFile::backupsNewestFirst() const
{
    auto backups = backupFolder().findChildFiles (juce::File::findFiles, false, baseName + "_*.sqlite");
    // Their names begin alike and end with the date.
    std::sort (backups.begin(), backups.end(),
               [] (const auto& a, const auto& b) { return a.getFileName() > b.getFileName(); });
    return backups;
}

juce::File LibraryFile::moveAside() const
{
    if (!file().exists())
        return {};
    const auto aside =
        folder.getChildFile (baseName + "_damaged_" + now().formatted ("%Y-%m-%d_(%Hh%Mm%Ss)") + ".sqlite")
            .getNonexistentSibling();
    if (!file().moveFileTo (aside))
        return {};
    // Left behind, it would be played into the file that takes the place.
    juce::ignoreUnused (journalOf (file()).moveFileTo (journalOf (aside)));
    return aside;
}

juce::String LibraryFile::replaceLost (const juce::String& whatHappened) const
{
    for (const auto& backup : backupsNewestFirst())
        if (DatabaseFile::check (backup) == DatabaseFile::Health::sound
            && DatabaseFile::copy (backup, file()) == LibraryCode::ok)
            return whatHappened + "; the backup " + backup.getFileName() + " has taken its place.";
    return whatHappened + "; there is no good backup of it, so an empty library has taken its place.";
}

void LibraryFile::backUp() const
{
    if (backupFolder().createDirectory().failed()
        || DatabaseFile::copy (file(), todaysBackup()) != LibraryCode::ok)
        return;
    const auto backups = backupsNewestFirst();
    for (int i = backupsKept; i < backups.size(); ++i)
        juce::ignoreUnused (backups[i].deleteFile());
}

LibraryFile::Session LibraryFile::inMemory() const
{
    return {
        file(), SongDatabase::Storage::memory,
        "Problem creating database file. You need write permission to not only the database file, but also "
        "the containing directory of this file."
    };
}

LibraryFile::Session LibraryFile::prepare()
{
    assertMayBlock();
    opened = false;
    if (folder.createDirectory().failed() || !canWriteIn (folder)
        || (file().exists() && !file().hasWriteAccess()))
        return inMemory();

    Session session;
    session.file = file();
    if (!file().exists() || (file().existsAsFile() && file().getSize() == 0))
    {
        // The file of every library that was ever opened has tables in it.
        if (!backupsNewestFirst().isEmpty())
            session.message = replaceLost ("The library file was missing or empty");
    }
    else if (!isAsItWasClosed() || !todaysBackup().existsAsFile())
    {
        const auto health = DatabaseFile::check (file());
        if (health == DatabaseFile::Health::sound && !todaysBackup().existsAsFile())
            backUp();
        if (health == DatabaseFile::Health::damaged)
        {
            const auto aside = moveAside();
            if (aside == juce::File())
                return inMemory();
            session.message =
                replaceLost ("The library file was damaged and is kept as " + aside.getFileName());
        }
    }

    if (!file().exists())
        juce::ignoreUnused (file().create());
    if (!file().existsAsFile())
        return inMemory();
    opened = true;
    return session;
}

void LibraryFile::noteClosed() const
{
    assertMayBlock();
    if (opened && backupFolder().createDirectory().wasOk())
        juce::ignoreUnused (closedNote().replaceWithText (stateOf (file())));
}
