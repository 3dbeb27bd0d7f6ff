#include "session/archive/DataArchive.h"

#include "library/sql/DatabaseFile.h"
#include "session/archive/TarFile.h"
#include "support/AudioThread.h"
#include "support/files/PrivateFolder.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <unistd.h>

namespace
{
constexpr const char *manifestName = "platterdex-data.txt", *endName = "platterdex-end.txt";
constexpr size_t manifestBytes = 4096;

/** Bytes that unpacking leaves to others on the disk: a recording may be running. */
constexpr juce::int64 roomLeft = 64 << 20;

/** The beginnings of the entries' names. */
constexpr const char *ofRoot = "root/", *ofLibrary = "library/";
constexpr const char *songsName = "songs.sqlite", *historyFolder = "history";

constexpr const char* formerName = "before-restore";

/** The similarity library's own file lies in a folder that it names itself. */
std::vector<juce::File> foldersOf (const Folders& folders, DataArchive::Audio audio)
{
    std::vector<juce::File> all { folders.setup(),
                                  folders.scriptFiles(),
                                  folders.beatmarks(),
                                  folders.languages(),
                                  folders.samples(),
                                  folders.midiFiles(),
                                  folders.vstPlugins(),
                                  folders.playlists(),
                                  folders.slicegateFiles(),
                                  folders.smartknobFiles(),
                                  folders.root.getChildFile ("mufin") };
    if (audio == DataArchive::Audio::included)
        for (const auto& folder : { folders.audio(), folders.diskRecorder(), folders.controlCd() })
            all.push_back (folder);
    return all;
}

/** Files by which running programs know of each other are nobody's data. */
bool isLockFile (const juce::File& file)
{
    return file.hasFileExtension ("lock");
}

struct Entry
{
    juce::String name;
    juce::File file;
};

void addFolder (std::vector<Entry>& entries, const juce::String& begin, const juce::File& folder)
{
    for (const auto& file :
         folder.findChildFiles (juce::File::findFiles, true, "*", juce::File::FollowSymlinks::no))
        if (!isLockFile (file))
            entries.push_back (
                { begin + folder.getFileName() + "/" + file.getRelativePathFrom (folder), file });
}

juce::String manifestOf (const juce::String& version, size_t files)
{
    juce::String text;
    text << "format=" << DataArchive::format << "\nversion=" << version << "\nfiles=" << juce::String (files)
         << "\n";
    return text;
}

juce::String endOf (int files, juce::uint32 sum)
{
    juce::String text;
    text << "files=" << files << "\ncrc32=" << juce::String::toHexString (sum) << "\n";
    return text;
}

/** The values of an archive's first entry; the numbers of anything else are below 0. */
struct Manifest
{
    int format = -1, files = -1;
    juce::String version;

    explicit Manifest (const juce::String& text)
    {
        for (const auto& line : juce::StringArray::fromLines (text))
        {
            const auto name = line.upToFirstOccurrenceOf ("=", false, false);
            const auto value = line.fromFirstOccurrenceOf ("=", false, false).trim();
            if (name == "version")
                version = value.substring (0, 40);
            else if (value.isNotEmpty() && value.length() < 10 && value.containsOnly ("0123456789"))
                (name == "format" ? format : files) = value.getIntValue();
        }
    }
};

/** A name as write() makes them: a place below one of the two beginnings, and no way out of it. */
bool isSafe (const juce::String& name)
{
    const auto parts = juce::StringArray::fromTokens (name, "/", {});
    return (name.startsWith (ofRoot) || name.startsWith (ofLibrary)) && parts.size() >= 2
           && !name.containsAnyOf ("\\\n\r")
           && std::none_of (parts.begin(), parts.end(),
                            [] (const juce::String& part)
                            { return part.isEmpty() || part == "." || part == ".."; });
}

/** @returns one sentence, or nothing once all files lie below the folder */
juce::String unpack (const juce::File& archive, const juce::File& folder, int& files,
                     ImportProgress& progress)
{
    const auto name = archive.getFileName();
    TarReader tar (archive);
    if (tar.next() != TarReader::Step::entry || tar.name() != manifestName)
        return tr ("%1 is no backup of Platterdex.", name.quoted());
    const Manifest manifest (tar.text (manifestBytes));
    if (manifest.format > DataArchive::format)
        return tr ("%1 was made by a newer version of Platterdex (%2), which can restore it.", name.quoted(),
                   manifest.version);
    if (manifest.format < 1)
        return tr ("%1 is no backup of Platterdex.", name.quoted());

    auto damaged = tr ("%1 is damaged; nothing was changed.", name.quoted());
    for (auto isWhole = false;;)
    {
        switch (tar.next())
        {
        case TarReader::Step::end:
            ::sync();
            return isWhole ? juce::String() : damaged;
        case TarReader::Step::damage:
            return damaged;
        case TarReader::Step::entry:
            break;
        }
        if (tar.name() == endName)
        {
            const auto sum = tar.sumBefore();
            isWhole = tar.text (manifestBytes) == endOf (files, sum);
            continue;
        }
        if (isWhole || !isSafe (tar.name()))
            return damaged;
        if (progress.shouldExit())
            return tr ("The restoring was interrupted; nothing was changed.");
        if (folder.getBytesFreeOnVolume() < tar.size() + roomLeft)
            return tr ("There is no room on the disk to unpack %1; nothing was changed.", name.quoted());
        if (!tar.unpack (folder.getChildFile (tar.name())))
            return damaged;
        progress.setStatusText (tar.name());
        progress.setProgress (std::min (1.0, ++files / std::max (1.0, static_cast<double> (manifest.files))));
    }
}

/** Moves of which all come back when this ends before keep(). */
class Moves
{
public:
    ~Moves()
    {
        for (auto each = done.rbegin(); each != done.rend(); ++each)
            each->second.moveFileTo (each->first);
    }

    bool move (const juce::File& from, const juce::File& to)
    {
        if (!to.getParentDirectory().createDirectory().wasOk() || to.exists() || !from.moveFileTo (to))
            return false;
        done.emplace_back (from, to);
        return true;
    }

    void keep() { done.clear(); }

private:
    std::vector<std::pair<juce::File, juce::File>> done;
};

/** Puts each of a folder's children at its place; what is there goes to `former`. */
bool exchange (Moves& moves, const juce::File& unpacked, const juce::File& place, const juce::File& former)
{
    for (const auto& each : unpacked.findChildFiles (juce::File::findFilesAndDirectories, false))
    {
        const auto target = place.getChildFile (each.getFileName());
        if (target.exists() && !moves.move (target, former.getChildFile (each.getFileName())))
            return false;
        if (!moves.move (each, target))
            return false;
    }
    return true;
}
}

DataArchive::Outcome DataArchive::write (const Folders& folders, const LibraryFile& library,
                                         const juce::File& archive, Audio audio, const juce::String& version,
                                         ImportProgress& progress)
{
    assertMayBlock();
    Outcome outcome;
    std::vector<Entry> entries;
    for (const auto& folder : foldersOf (folders, audio))
        addFolder (entries, ofRoot, folder);
    // Another program may be writing to the library: what goes in is a copy that stands still.
    const PrivateFolder place;
    const auto songs = place.file (songsName);
    if (library.file().existsAsFile())
    {
        if (DatabaseFile::copy (library.file(), songs) != LibraryCode::ok)
        {
            outcome.fault = tr ("The library can't be read, so no backup was made.");
            return outcome;
        }
        entries.push_back ({ juce::String (ofLibrary) + songsName, songs });
        addFolder (entries, ofLibrary, library.file().getSiblingFile (historyFolder));
    }

    const juce::TemporaryFile made (archive);
    TarWriter tar (made.getFile());
    auto isGood = tar.add (manifestName, manifestOf (version, entries.size()));
    for (size_t i = 0; i < entries.size() && isGood; ++i)
    {
        // Temporary files go between the look into their folder and their turn.
        if (!entries[i].file.existsAsFile())
            continue;
        if (progress.shouldExit())
        {
            outcome.fault = tr ("The backup was interrupted; none was made.");
            return outcome;
        }
        progress.setStatusText (entries[i].name);
        progress.setProgress (static_cast<double> (i) / static_cast<double> (entries.size()));
        isGood = tar.add (entries[i].name, entries[i].file);
        if (isGood)
            ++outcome.files;
        else
            outcome.fault =
                tr ("%1 can't be put into the backup, so none was made.", entries[i].file.getFullPathName());
    }
    isGood = isGood && tar.add (endName, endOf (outcome.files, tar.sum()));
    isGood = tar.close() && isGood;
    if ((!isGood || !made.overwriteTargetFileWithTemporary()) && outcome.fault.isEmpty())
        outcome.fault = tr ("%1 can't be written.", archive.getFullPathName());
    return outcome;
}

DataArchive::Outcome DataArchive::restore (const juce::File& archive, const Folders& folders,
                                           LibraryFile& library, ImportProgress& progress)
{
    assertMayBlock();
    Outcome outcome;
    // On the root's own volume, so that each file takes its place in one step.
    const auto unpacked = folders.root.getNonexistentChildFile ("restoring", {}, false);
    outcome.fault = unpack (archive, unpacked, outcome.files, progress);
    const auto songs = unpacked.getChildFile (ofLibrary).getChildFile (songsName);
    if (outcome.fault.isEmpty() && songs.existsAsFile()
        && DatabaseFile::check (songs) != DatabaseFile::Health::sound)
        outcome.fault = tr ("%1 is damaged; nothing was changed.", archive.getFileName().quoted());

    const auto now = juce::Time::getCurrentTime().formatted ("%Y-%m-%d_(%Hh%Mm%Ss)");
    const auto former = folders.root.getNonexistentChildFile (formerName + ("_" + now), {}, false);
    if (outcome.fault.isEmpty())
    {
        Moves moves;
        const auto history = library.file().getSiblingFile (historyFolder);
        const auto unpackedLibrary = unpacked.getChildFile (ofLibrary);
        auto isDone = exchange (moves, unpacked.getChildFile (ofRoot), folders.root, former);
        if (isDone && unpackedLibrary.getChildFile (historyFolder).isDirectory())
            isDone = (!history.isDirectory() || moves.move (history, former.getChildFile (historyFolder)))
                     && moves.move (unpackedLibrary.getChildFile (historyFolder), history);
        if (isDone && songs.existsAsFile())
        {
            const auto replacement = library.putBack (songs);
            isDone = outcome.hasLibrary = replacement.isDone;
            if (!isDone)
                outcome.fault = replacement.sentence;
        }
        if (isDone)
            moves.keep();
        else if (outcome.fault.isEmpty())
            outcome.fault = tr ("The files can't take their places; nothing was changed.");
    }
    if (former.isDirectory())
    {
        if (outcome.fault.isEmpty())
            outcome.former = former;
        else
            former.deleteFile(); // only where it is empty
    }
    unpacked.deleteRecursively();
    return outcome;
}
