#pragma once

#include "similarity/store/MappedFile.h"
#include "similarity/store/NearestTracks.h"

#include <map>
#include <optional>
#include <shared_mutex>
#include <string>

/** A session and its file. Any thread that may block. */
class SessionStore
{
public:
    /** @returns a SimilarityCode */
    int load (const std::string& path);

    /** Appends what is new; where the sample is another one, or half the file is out of date, writes the file anew beside
        the old one and renames it. Other processes wait meanwhile, and what they have appended is taken over. */
    int save (const std::string& path);

    std::string notice() const;
    size_t size() const;

    /** @returns false if the track isn't known */
    bool find (std::string_view path, SimilarityFacts*) const;
    void store (std::string_view path, const SimilarityDescription&);

    /** @returns nothing if the track isn't known, else its neighbours, which may be none */
    std::optional<std::vector<NearestTracks::Found>> similar (std::string_view path,
                                                              const SimilarityQuery&) const;

private:
    /** The file as it was last read or written: another one of that name, or a longer one, is read again. */
    struct FileState
    {
        uint64_t device = 0, node = 0, size = 0;
        bool operator== (const FileState&) const = default;
    };

    static FileState stateOf (int descriptor);
    int takeFile (int descriptor, const std::string& path);
    bool append (int descriptor);
    bool rewrite (const std::string& path);

    mutable std::shared_mutex lock; ///< of all below
    MappedFile file;                ///< tracks point into it
    TrackTable table;
    std::map<std::string, SimilarityDescription, std::less<>> unsaved;
    size_t storedTracks = 0; ///< in the file, those out of date included
    bool mustRewrite = false, mustKeepOld = false;
    FileState known;
    std::string sentence;
};
