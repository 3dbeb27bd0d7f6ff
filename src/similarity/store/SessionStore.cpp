#include "similarity/store/SessionStore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <mutex>
#include <utility>

namespace
{
/** An open file under a lock of its own among processes, which ends with it. */
class LockedFile
{
public:
    LockedFile (const std::string& path, int flags)
        : descriptor (open (path.c_str(), flags | O_CLOEXEC, 0644))
    {
        while (descriptor >= 0 && flock (descriptor, LOCK_EX) != 0 && errno == EINTR)
            ;
    }

    ~LockedFile()
    {
        if (descriptor < 0)
            return;
        flock (descriptor, LOCK_UN); // closing alone does not: a mapping keeps the open file
        close (descriptor);
    }

    LockedFile (const LockedFile&) = delete;
    LockedFile& operator= (const LockedFile&) = delete;

    /** False if another file has taken the path while the lock was waited for. */
    bool isAt (const std::string& path) const
    {
        struct stat mine
        {
        }, there {};
        return fstat (descriptor, &mine) == 0 && stat (path.c_str(), &there) == 0
               && mine.st_dev == there.st_dev && mine.st_ino == there.st_ino;
    }

    const int descriptor;
};

bool writeAll (int descriptor, const std::vector<std::byte>& bytes)
{
    for (size_t done = 0; done < bytes.size();)
    {
        const auto written = write (descriptor, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        done += static_cast<size_t> (written);
    }
    return true;
}

std::string tracksText (size_t count)
{
    return std::to_string (count) + (count == 1 ? " track" : " tracks");
}
}

SessionStore::FileState SessionStore::stateOf (int descriptor)
{
    struct stat status
    {
    };
    if (fstat (descriptor, &status) != 0)
        return {};
    return { status.st_dev, status.st_ino, static_cast<uint64_t> (status.st_size) };
}

int SessionStore::takeFile (int descriptor, const std::string& path)
{
    using State = SessionFile::Contents::State;
    const auto state = stateOf (descriptor);
    if (state == known)
        return similarityOk;
    known = state;
    MappedFile mapped (descriptor);
    const auto contents = SessionFile::read (mapped.bytes());
    table.clear();
    table.take (contents);
    file = std::move (mapped);
    storedTracks = contents.tracks.size();
    // Tracks that wait to be saved are newer than those of the file.
    for (const auto& [name, description] : unsaved)
        mustRewrite = table.store (name, description) || mustRewrite;
    mustRewrite =
        mustRewrite || contents.state != State::whole || contents.sample.draw != table.sample().draw;
    if (contents.state == State::whole || state.size == 0)
        return similarityOk;

    mustKeepOld = contents.state != State::torn;
    const auto list = "The list of similar songs " + path;
    sentence = contents.state == State::torn
                   ? list + " was damaged: " + tracksText (table.tracks().size())
                         + " could be read, others are known again when they are analysed."
                   : list + (contents.state == State::version ? " is of another version" : " is damaged")
                         + " and begins anew: songs are known again when they are analysed.";
    return similarityRebuilt;
}

int SessionStore::load (const std::string& path)
{
    const std::unique_lock guard (lock);
    sentence.clear();
    const LockedFile opened (path, O_RDONLY);
    return opened.descriptor < 0 ? similarityNoFile : takeFile (opened.descriptor, path);
}

int SessionStore::save (const std::string& path)
{
    const std::unique_lock guard (lock);
    sentence.clear();
    constexpr auto attempts = 100; // each time another process has renamed a file over it
    for (int attempt = 0; attempt < attempts; ++attempt)
    {
        const LockedFile opened (path, O_RDWR | O_CREAT | O_APPEND);
        if (opened.descriptor < 0)
            return similarityNotWritten;
        if (!opened.isAt (path))
            continue;
        const auto code = takeFile (opened.descriptor, path);
        const auto isMostlyOld = storedTracks + unsaved.size() > 2 * table.tracks().size() + 64;
        if (unsaved.empty() && !mustRewrite)
            return code;
        if (!(known.size == 0 || mustRewrite || isMostlyOld ? rewrite (path) : append (opened.descriptor)))
            return similarityNotWritten;
        unsaved.clear();
        return code;
    }
    return similarityNotWritten;
}

bool SessionStore::append (int descriptor)
{
    std::vector<std::byte> bytes;
    for (const auto& waiting : unsaved)
        if (const auto* const track = table.find (waiting.first))
            SessionFile::append (bytes, table.stored (*track), track->path);
    const auto isWritten = writeAll (descriptor, bytes);
    if (!isWritten)
        // Nobody else writes now: a torn block is taken back, so that the next one can be found.
        mustRewrite = ftruncate (descriptor, static_cast<off_t> (known.size)) != 0;
    storedTracks += isWritten ? unsaved.size() : 0;
    known = stateOf (descriptor);
    return isWritten;
}

bool SessionStore::rewrite (const std::string& path)
{
    std::vector<std::byte> bytes;
    SessionFile::appendHeader (bytes);
    if (table.sample().draw != 0)
        SessionFile::append (bytes, table.sample());
    for (const auto& track : table.tracks())
        SessionFile::append (bytes, table.stored (track), track.path);

    const auto fresh = path + ".new";
    const LockedFile made (fresh, O_RDWR | O_CREAT | O_TRUNC);
    if (made.descriptor < 0 || !writeAll (made.descriptor, bytes) || fsync (made.descriptor) != 0
        || (mustKeepOld && rename (path.c_str(), (path + ".bad").c_str()) != 0)
        || rename (fresh.c_str(), path.c_str()) != 0)
    {
        unlink (fresh.c_str());
        return false;
    }
    mustRewrite = mustKeepOld = false;
    storedTracks = table.tracks().size();
    known = stateOf (made.descriptor);
    return true;
}

std::string SessionStore::notice() const
{
    const std::shared_lock guard (lock);
    return sentence;
}

size_t SessionStore::size() const
{
    const std::shared_lock guard (lock);
    return table.tracks().size();
}

bool SessionStore::find (std::string_view path, SimilarityFacts* facts) const
{
    const std::shared_lock guard (lock);
    const auto* const track = table.find (path);
    if (track != nullptr && facts != nullptr)
        *facts = track->description->facts();
    return track != nullptr;
}

void SessionStore::store (std::string_view path, const SimilarityDescription& description)
{
    const std::unique_lock guard (lock);
    mustRewrite = table.store (path, description) || mustRewrite;
    unsaved.insert_or_assign (std::string (path), description);
}

std::optional<std::vector<NearestTracks::Found>> SessionStore::similar (std::string_view path,
                                                                        const SimilarityQuery& query) const
{
    const std::shared_lock guard (lock);
    const auto* const track = table.find (path);
    if (track == nullptr)
        return {};
    return NearestTracks::find (table, *track, query);
}
