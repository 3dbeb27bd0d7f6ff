#include "session/LibrarySession.h"

#include "library/sql/DatabaseFile.h"
#include "support/language/Translate.h"

juce::File LibraryPlace::usersFolder()
{
    return juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory)
        .getChildFile ("SongManager");
}

LibrarySession::~LibrarySession()
{
    database.close();
    if (library)
        library->noteClosed();
}

juce::String LibrarySession::open (const LibraryPlace& place, Use use, const Offer& offer)
{
    library.emplace (place.file());
    const auto file = library->file();
    const auto path = file.getFullPathName();
    if (use != Use::write && use != Use::show && !file.exists() && !library->hasBackup())
        return tr ("There is no library %1; platterdex import makes one.", path);
    if (file.isDirectory())
        return tr ("%1 is a folder, not a library.", path);
    if (file.getParentDirectory().createDirectory().failed() && use != Use::show)
        return tr ("The folder %1 can't be made.", file.getParentDirectory().getFullPathName());

    auto prepared =
        library->prepare (use == Use::read ? LibraryFile::Purpose::reading : LibraryFile::Purpose::writing);
    if (prepared.backup != juce::File() && offer != nullptr && offer (prepared.message))
        prepared.message = library->putBack (prepared.backup).sentence;
    const auto isInMemory = prepared.storage == SongDatabase::Storage::memory;
    if (isInMemory && use != Use::read && use != Use::show)
        return prepared.message; // what only this process would remember is as good as not done
    const auto isReadable = !isInMemory || (use == Use::show && !file.exists())
                            || DatabaseFile::check (prepared.file) == DatabaseFile::Health::sound;
    if (!isReadable || database.open (prepared.file, prepared.storage) != LibraryCode::ok
        || database.countSongs() < 0)
    {
        database.close();
        const auto name = prepared.file.getFullPathName();
        return DatabaseFile::isLocked (prepared.file)
                   ? tr ("%1 is being written to by another program.", name)
                   : tr ("%1 can't be opened as a library.", name);
    }
    notice = prepared.message;
    return {};
}
