#pragma once

#include "library/database/SongDatabase.h"
#include "library/file/LibraryFile.h"

#include <functional>
#include <optional>

/** The place of a library: the folder of a user's own, or any file that was named. */
struct LibraryPlace
{
    juce::File folder = usersFolder(); ///< "SongManager"
    juce::File named {};               ///< takes the folder's place if it is set

    /** "SongManager" in the user's folder for application data. */
    static juce::File usersFolder();

    LibraryFile file() const
    {
        return named != juce::File() ? LibraryFile::named (named) : LibraryFile (folder);
    }
};

/** Work on one library, from looking after its file to noting that it was closed. One thread at a time. */
class LibrarySession
{
public:
    enum class Use
    {
        read,   ///< the library has to be there, or a backup of it
        change, ///< the same, and it is written to
        write,  ///< it is made if it is missing
        show ///< the same, for a window; where nothing can be stored it goes on in memory, and the notice says so
    };

    LibrarySession() = default;
    ~LibrarySession();
    LibrarySession (const LibrarySession&) = delete;
    LibrarySession& operator= (const LibrarySession&) = delete;

    /** Answers at once whether a backup is put into the place of a library that is missing or empty. */
    using Offer = std::function<bool (const juce::String& message)>;

    /** Opens; once in this object's life. May take a second or two with a large library.
        @param offer   without it no backup is put back
        @returns one sentence on why it can't be opened, or nothing */
    juce::String open (const LibraryPlace&, Use, const Offer& offer = {});

    SongDatabase database;

    /** One sentence on what had to be done with the file, or nothing. */
    juce::String notice;

private:
    std::optional<LibraryFile> library;
};
