#include "library/file/LibraryFile.h"

#include "library/sql/DatabaseFile.h"
#include "support/AudioThread.h"
#include "support/language/Translate.h"

#include <sys/stat.h>

#include <algorithm>

namespace
{
constexpr int backupsKept = 7;
constexpr int dateLength = 10;

/** Behind the library's name, beside its backups. */
constexpr const char* closedNote = ".closed";
constexpr const char* sessions = ".sessions";

constexpr const char* withoutBackup =
    N_ ("The library file is damaged, and there is no good backup of it; it stays as it is.");

/** The size of a new file before there is a song in it, and about that of a write of a few rows. */
constexpr size_t probeBytes = 64 * 1024;

enum class Writing
{
    works,
    isForbidden,
    findsNoRoom
};

/** Makes the folder and tries it: permission bits say nothing of a full disk or a read-only medium, and nothing at all to an administrator. */
Writing tryToWriteIn (const juce::File& folder)
{
    const juce::TemporaryFile probe (folder.getChildFile ("probe"));
    if (folder.createDirectory().wasOk())
    {
        juce::FileOutputStream stream (probe.getFile());
        if (stream.openedOk())
            stream.writeRepeatedByte (0, probeBytes);
    }
    // JUCE's ways to write a whole file don't tell of a full disk. One that is full to the last folder makes no file either.
    if (probe.getFile().getSize() == static_cast<juce::int64> (probeBytes))
        return Writing::works;
    return probe.getFile().exists() || folder.getBytesFreeOnVolume() < static_cast<juce::int64> (probeBytes)
               ? Writing::findsNoRoom
               : Writing::isForbidden;
}

/** Size, number and time of the last change, to the nanosecond: they tell one state of a file from another. */
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
}

LibraryFile::LibraryFile (const juce::File& folder, WallClock clock)
    : LibraryFile (folder.getChildFile ("px_music_library.sqlite"), false, std::move (clock))
{
}

LibraryFile::LibraryFile (const juce::File& file, bool any, WallClock clock)
    : library (file),
      isAnyFile (any),
      now (std::move (clock))
{
}

LibraryFile LibraryFile::named (const juce::File& file, WallClock clock)
{
    return LibraryFile (file.getLinkedTarget(), true, std::move (clock));
}

juce::Time LibraryFile::systemClock()
{
    return juce::Time::getCurrentTime();
}

juce::File LibraryFile::file() const
{
    return library;
}

juce::File LibraryFile::backupFolder() const
{
    return library.getSiblingFile ("backups");
}

juce::File LibraryFile::todaysBackup() const
{
    return backupFolder().getChildFile (library.getFileNameWithoutExtension() + "_"
                                        + now().formatted ("%Y-%m-%d") + library.getFileExtension());
}

juce::File LibraryFile::besideBackups (const char* ending) const
{
    return backupFolder().getChildFile (library.getFileName() + ending);
}

bool LibraryFile::isAsItWasClosed() const
{
    const auto note = besideBackups (closedNote);
    return DatabaseFile::sideFilesOf (library).isEmpty() && note.existsAsFile()
           && note.loadFileAsString() == stateOf (library);
}

juce::Array<juce::File> LibraryFile::backupsNewestFirst() const
{
    // Other libraries may have theirs in the same folder: only the date can be different.
    const auto today = todaysBackup().getFileName();
    const auto begin = library.getFileNameWithoutExtension() + "_";
    juce::Array<juce::File> backups;
    for (const auto& file : backupFolder().findChildFiles (juce::File::findFiles, false))
    {
        const auto name = file.getFileName();
        if (name.length() == today.length() && name.startsWith (begin)
            && name.endsWith (library.getFileExtension())
            && name.substring (begin.length(), begin.length() + dateLength).containsOnly ("0123456789-"))
            backups.add (file);
    }
    std::sort (backups.begin(), backups.end(),
               [] (const auto& a, const auto& b) { return a.getFileName() > b.getFileName(); });
    return backups;
}

bool LibraryFile::hasBackup() const
{
    return !backupsNewestFirst().isEmpty();
}

juce::File LibraryFile::newestGoodBackup() const
{
    for (const auto& backup : backupsNewestFirst())
        if (DatabaseFile::check (backup) == DatabaseFile::Health::sound)
            return backup;
    return {};
}

juce::File LibraryFile::moveAside (const char* why) const
{
    const auto name = library.getFileNameWithoutExtension() + why + now().formatted ("%Y-%m-%d_(%Hh%Mm%Ss)");
    auto aside = library.getSiblingFile (name + library.getFileExtension());
    for (int n = 2; aside.exists() || !DatabaseFile::sideFilesOf (aside).isEmpty(); ++n)
        aside = library.getSiblingFile (name + "(" + juce::String (n) + ")" + library.getFileExtension());
    return DatabaseFile::move (library, aside) ? aside : juce::File();
}

juce::String LibraryFile::replaceLost (const juce::String& whatHappened, const juce::File& backup) const
{
    if (backup != juce::File() && DatabaseFile::copy (backup, library) == LibraryCode::ok)
        return tr ("%1; the backup %2 has taken its place.", whatHappened, backup.getFileName());
    return tr ("%1; there is no good backup of it, so an empty library has taken its place.", whatHappened);
}

void LibraryFile::backUp() const
{
    if (DatabaseFile::copy (library, todaysBackup()) != LibraryCode::ok)
        return;
    const auto backups = backupsNewestFirst();
    // The largest stays: after a loss it holds what the newer ones miss.
    const auto* const largest =
        std::max_element (backups.begin(), backups.end(),
                          [] (const auto& a, const auto& b) { return a.getSize() < b.getSize(); });
    for (int i = backupsKept; i < backups.size(); ++i)
        if (backups[i] != *largest)
            juce::ignoreUnused (backups[i].deleteFile());
}

LibraryFile::Session LibraryFile::inMemoryOfFullDisk() const
{
    return { library, SongDatabase::Storage::memory,
             tr ("There is no room for the library file on the disk: nothing that is done to the library is "
                 "kept.") };
}

LibraryFile::Session LibraryFile::inMemory() const
{
    return { library, SongDatabase::Storage::memory,
             tr ("Problem creating database file. You need write permission to not only the database file, "
                 "but also "
                 "the containing directory of this file.") };
}

void LibraryFile::repair (bool isAlone, Session& session)
{
    const auto backup = newestGoodBackup();
    if (!isAlone || DatabaseFile::isLocked (library))
        session.message =
            tr ("The library file is damaged, and another program has it open; it stays as it is.");
    else if (isAnyFile && backup == juce::File())
        session.message = tr (withoutBackup);
    else if (const auto aside = moveAside ("_damaged_"); aside == juce::File())
        session = inMemory();
    else
    {
        session.message =
            replaceLost (tr ("The library file was damaged and is kept as %1", aside.getFileName()), backup);
        isSound = true;
    }
}

void LibraryFile::beginAnew (Session& session)
{
    // Its side files have lost the file that they belong to, and would be played into the new one.
    if (!DatabaseFile::sideFilesOf (library).isEmpty() && moveAside ("_lost_") == juce::File())
    {
        session = inMemory();
        return;
    }
    isSound = true;
    session.backup = newestGoodBackup();
    if (session.backup != juce::File())
        session.message = tr ("The library file was missing or empty, so a new library was begun. To have "
                              "the songs back, put its "
                              "backup %1 in its place.",
                              session.backup.getFullPathName());
}

LibraryFile::Replacement LibraryFile::putBack (const juce::File& backup)
{
    assertMayBlock();
    const auto isAlone = lock.takeAlone (besideBackups (sessions));
    const juce::ScopeGuard shareAgain { [this] { lock.share(); } };
    if (!isAlone || (DatabaseFile::isLocked (library) && library.getSize() > 0))
        return { false, tr ("Another program has the library open; it stays as it is.") };
    const auto aside = moveAside ("_replaced_");
    if (aside == juce::File() || DatabaseFile::copy (backup, library) != LibraryCode::ok)
        return { false, tr ("The backup %1 can't be put in the library's place.", backup.getFileName()) };
    return { true, tr ("The backup %1 has taken the library's place.", backup.getFileName()) };
}

void LibraryFile::lookAfter (Purpose purpose, bool isAlone, Session& session)
{
    // The file of every library that was ever opened has tables in it, unless another program is just making them.
    const auto isEmpty = library.existsAsFile() && library.getSize() == 0;
    if (isEmpty && (!isAlone || DatabaseFile::isLocked (library)))
        return;
    if (isEmpty || !library.exists())
    {
        beginAnew (session);
        return;
    }
    const auto wantsBackup = purpose == Purpose::writing && !todaysBackup().existsAsFile();
    isSound = isAsItWasClosed();
    if (isSound && !wantsBackup)
        return;
    const auto health = DatabaseFile::check (library);
    isSound = health == DatabaseFile::Health::sound;
    if (isSound && wantsBackup)
        backUp();
    if (health == DatabaseFile::Health::damaged)
        repair (isAlone, session);
}

LibraryFile::Session LibraryFile::prepare (Purpose purpose)
{
    assertMayBlock();
    isSound = false;
    lock.release();
    const auto folder = library.getParentDirectory();
    if (library.exists() && !library.hasWriteAccess())
        return inMemory();
    if (const auto writing = tryToWriteIn (folder); writing != Writing::works)
        return writing == Writing::findsNoRoom ? inMemoryOfFullDisk() : inMemory();

    Session session;
    session.file = library;
    if (purpose == Purpose::reading && isAsItWasClosed())
    {
        isSound = true;
        return session;
    }
    if (isAnyFile && !backupFolder().exists() && library.getSize() > 0
        && DatabaseFile::check (library) == DatabaseFile::Health::damaged)
    {
        // No folder beside what is no library.
        session.message = tr (withoutBackup);
        return session;
    }
    if (backupFolder().createDirectory().failed())
        return inMemory();
    const auto isAlone = lock.takeAlone (besideBackups (sessions));
    if (!isAlone)
        lock.share();
    lookAfter (purpose, isAlone, session);
    if (session.storage == SongDatabase::Storage::file && !library.exists())
        juce::ignoreUnused (library.create());
    if (isAlone)
        lock.share();
    if (!library.existsAsFile())
        session = inMemory();
    isSound = isSound && session.storage == SongDatabase::Storage::file;
    return session;
}

void LibraryFile::noteClosed()
{
    assertMayBlock();
    if (isSound && !isAsItWasClosed())
        juce::ignoreUnused (besideBackups (closedNote).replaceWithText (stateOf (library)));
    isSound = false;
    lock.release();
}
