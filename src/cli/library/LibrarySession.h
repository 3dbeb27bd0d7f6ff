#pragma once

#include "cli/VerbOptions.h"
#include "library/database/SongDatabase.h"
#include "library/file/LibraryFile.h"

#include <optional>

/** A verb's work on a library, from looking after its file to noting that it was closed. */
class LibrarySession
{
public:
    static constexpr VerbOption option { "--library", "FILE", "the library's file (the user's library)" };

    enum class Use
    {
        read,   ///< the library has to be there, or a backup of it
        change, ///< the same, and it is written to
        write   ///< it is made if it is missing
    };

    LibrarySession() = default;
    ~LibrarySession();
    LibrarySession (const LibrarySession&) = delete;
    LibrarySession& operator= (const LibrarySession&) = delete;

    /** The library that the option names, or the user's. */
    static LibraryFile fileFor (const VerbOptions&);

    /** Opens the library that the option names, or the user's. What had to be done with the file is reported. What is
        wrong is too, and the verb ends with ExitCode::badInput. */
    bool open (const VerbOptions&, Use);

    SongDatabase database;

private:
    void offerBackup (LibraryFile::Session&);
    bool openPrepared (Use);

    std::optional<LibraryFile> library;
};
