#pragma once

#include "library/file/LibraryFile.h"
#include "library/import/ImportProgress.h"
#include "settings/Folders.h"

/** All that a user has made with the program in one file, a tar compressed by gzip: settings, mappings, presets, samples, playlists,
    analysis, the library and its history. The songs themselves stay where they are, and so do recordings and imported audio unless
    they are asked for.

    Its first entry, "platterdex-data.txt", names the format, by whose number versions of the program read or refuse it; the
    last one, "platterdex-end.txt", how many files it should hold.
    Everything may take minutes and belongs on a thread that may block. */
class DataArchive
{
public:
    /** The number behind "format": raised when an older program could not make use of an archive. */
    static constexpr int format = 1;

    enum class Audio
    {
        leftOut,
        included ///< the folders of recordings and of imported tracks
    };

    struct Outcome
    {
        juce::String fault; ///< one sentence, or nothing if all of it was done
        int files = 0;

        /** Restoring: the folder with what was in the way, if there was anything. */
        juce::File former {};

        /** Restoring: the archive has a library; the former one is kept beside its new place. */
        bool hasLibrary = false;
    };

    /** The file takes its name when it is complete. Programs may be at work in the folders: each file is taken as it stands.
        @param version   of the program, for people who look into the archive */
    static Outcome write (const Folders&, const LibraryFile&, const juce::File& archive, Audio,
                          const juce::String& version, ImportProgress&);

    /** Puts an archive's files in the place of those that are there, which are kept in a folder beside them. Nothing is touched
        before the whole archive is unpacked and looked through; where a file can't take its place all go back. No program may
        have the root in use, see RootLock; the library file has to be prepared, and not open. */
    static Outcome restore (const juce::File& archive, const Folders&, LibraryFile&, ImportProgress&);
};
