#include "cli/library/LibrarySession.h"

#include "cli/TerminalOutput.h"
#include "library/sql/DatabaseFile.h"

#include <unistd.h>

#include <iostream>
#include <string>

LibrarySession::~LibrarySession()
{
    database.close();
    if (library)
        library->noteClosed();
}

LibraryFile LibrarySession::fileFor (const VerbOptions& given)
{
    if (given.has (option.name))
        return LibraryFile::named (given.fileOf (option.name));
    return LibraryFile (juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory)
                            .getChildFile ("SongManager"));
}

bool LibrarySession::open (const VerbOptions& given, Use use)
{
    library.emplace (fileFor (given));
    const auto file = library->file();
    const auto path = file.getFullPathName();
    if (use != Use::write && !file.exists() && !library->hasBackup())
        failWith ("There is no library " + path + "; platterdex import makes one.");
    else if (file.isDirectory())
        failWith (path + " is a folder, not a library.");
    else if (file.getParentDirectory().createDirectory().failed())
        failWith ("The folder " + file.getParentDirectory().getFullPathName() + " can't be made.");
    else
        return openPrepared (use);
    return false;
}

void LibrarySession::offerBackup (LibraryFile::Session& session)
{
    if (session.backup == juce::File() || ::isatty (STDIN_FILENO) == 0 || ::isatty (STDERR_FILENO) == 0)
        return;
    reportLine ("platterdex: " + session.message);
    reportLine ("Put it there now? [y/N]");
    std::string answer;
    std::getline (std::cin, answer);
    session.message = answer == "y" || answer == "Y" ? library->putBack (session.backup) : juce::String();
}

bool LibrarySession::openPrepared (Use use)
{
    auto session =
        library->prepare (use == Use::read ? LibraryFile::Purpose::reading : LibraryFile::Purpose::writing);
    offerBackup (session);
    const auto isInMemory = session.storage == SongDatabase::Storage::memory;
    if (isInMemory && use != Use::read)
    {
        // What only this process would remember is as good as not done.
        failWith (session.message);
        return false;
    }
    const auto isReadable = !isInMemory || DatabaseFile::check (session.file) == DatabaseFile::Health::sound;
    if (!isReadable || database.open (session.file, session.storage) != LibraryCode::ok
        || database.countSongs() < 0)
    {
        database.close();
        failWith (session.file.getFullPathName()
                  + (DatabaseFile::isLocked (session.file) ? " is being written to by another program."
                                                           : " can't be opened as a library."));
        return false;
    }
    if (session.message.isNotEmpty())
        reportLine ("platterdex: " + session.message);
    return true;
}
