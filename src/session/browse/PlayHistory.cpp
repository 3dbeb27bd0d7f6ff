#include "session/browse/PlayHistory.h"

#include "library/exchange/PlaylistPage.h"
#include "library/formats/M3u.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <array>

namespace
{
constexpr const char* pattern = "history_*.tsv";
constexpr const char* firstLine = "time\tdeck\tpath\ttitle\tartist\n";
constexpr const char* timeFormat = "%Y-%m-%d %H:%M:%S";

/** A text as a cell: tabs and line ends become blanks. A path with one in it is told apart by "\\t" and "\\n". */
juce::String cellOf (const juce::String& text)
{
    return text.replace ("\\", "\\\\").replace ("\t", "\\t").replace ("\n", "\\n").replace ("\r", "\\r");
}

juce::String textOf (const juce::String& cell)
{
    if (!cell.containsChar ('\\'))
        return cell;
    juce::String text;
    for (auto c = cell.getCharPointer(); !c.isEmpty();)
    {
        const auto letter = c.getAndAdvance();
        if (letter != '\\' || c.isEmpty())
        {
            text += letter;
            continue;
        }
        const auto escaped = c.getAndAdvance();
        text << juce::String::charToString (escaped == 't'   ? juce::juce_wchar { '\t' }
                                            : escaped == 'n' ? juce::juce_wchar { '\n' }
                                            : escaped == 'r' ? juce::juce_wchar { '\r' }
                                                             : escaped);
    }
    return text;
}

/** "2026-11-22 23:05:09" in local time; nothing for what is none. */
juce::Time timeOf (const juce::String& text)
{
    const auto parts = juce::StringArray::fromTokens (text, "- :", {});
    if (parts.size() != 6)
        return {};
    const auto number = [&] (int i) { return parts[i].getIntValue(); };
    return { number (0), number (1) - 1, number (2), number (3), number (4), number (5) };
}

juce::String lineOf (const PlayedSong& song)
{
    return juce::StringArray { song.time.formatted (timeFormat), juce::String (song.deck + 1),
                               cellOf (song.path), cellOf (song.title), cellOf (song.artist) }
               .joinIntoString ("\t")
           + "\n";
}

juce::String pageOf (const juce::String& name, const std::vector<PlayedSong>& songs)
{
    constexpr std::array columns { "#", "Time", "Deck", "Title", "Artist" };
    const auto count = static_cast<int> (songs.size());
    auto html =
        PlaylistPage::header (name, juce::String (count) + (count == 1 ? " song" : " songs"), columns);
    for (int i = 0; i < count; ++i)
    {
        const auto& song = songs[static_cast<size_t> (i)];
        html << PlaylistPage::row ({ juce::String (i + 1), song.time.formatted ("%H:%M:%S"),
                                     juce::String (song.deck + 1), song.title, song.artist });
    }
    return html + PlaylistPage::footer();
}

/** A line that a power cut left half is none. */
std::optional<PlayedSong> songOf (const juce::String& line)
{
    const auto cells = juce::StringArray::fromTokens (line, "\t", {});
    if (cells.size() != 5 || cells[0] == "time")
        return {};
    return PlayedSong { timeOf (cells[0]), juce::jlimit (0, 3, cells[1].getIntValue() - 1), textOf (cells[2]),
                        textOf (cells[3]), textOf (cells[4]) };
}
}

PlayHistory::PlayHistory (const juce::File& f) : folder (f) {}

bool PlayHistory::note (const PlayedSong& song)
{
    const std::scoped_lock scope (lock);
    played.push_back (song.path);
    if (own == juce::File())
    {
        // Two windows that begin in one second have two files.
        const auto name = "history_" + song.time.formatted ("%Y%m%d_%H%M%S");
        auto file = folder.getChildFile (name + ".tsv");
        for (auto i = 2; file.exists(); ++i)
            file = folder.getChildFile (name + "_" + juce::String (i) + ".tsv");
        if (folder.createDirectory().failed() || !file.appendText (firstLine, false, false, nullptr))
            return false;
        own = file;
    }
    return own.appendText (lineOf (song), false, false, nullptr);
}

bool PlayHistory::isPlayed (const juce::String& path) const
{
    const std::scoped_lock scope (lock);
    return std::find (played.begin(), played.end(), path) != played.end();
}

void PlayHistory::resetPlayed (const juce::StringArray& paths)
{
    const std::scoped_lock scope (lock);
    std::erase_if (played, [&paths] (const juce::String& path) { return paths.contains (path); });
}

juce::File PlayHistory::fileOf (int32_t session) const
{
    for (const auto& file : folder.findChildFiles (juce::File::findFiles, false, pattern))
        if (idOf (file) == session)
            return file;
    return {};
}

int32_t PlayHistory::idOf (const juce::File& file)
{
    return file.getFileName().hashCode() & 0x7fffffff;
}

std::vector<SourceItem> PlayHistory::sessions() const
{
    auto files = folder.findChildFiles (juce::File::findFiles, false, pattern);
    std::sort (files.begin(), files.end(),
               [] (const juce::File& a, const juce::File& b) { return a.getFileName() > b.getFileName(); });
    std::vector<SourceItem> items;
    for (const auto& file : files)
    {
        SourceItem item;
        item.kind = SongListKind::history;
        item.id = idOf (file);
        item.sortOrder = static_cast<int32_t> (items.size());
        item.name = nameOf (file);
        items.push_back (item);
    }
    return items;
}

std::vector<PlayedSong> PlayHistory::songs (int32_t session) const
{
    std::vector<PlayedSong> songs;
    for (const auto& line : juce::StringArray::fromLines (fileOf (session).loadFileAsString()))
        if (const auto song = songOf (line))
            songs.push_back (*song);
    return songs;
}

juce::String PlayHistory::nameOf (const juce::File& file)
{
    // "history_20261122_230509.tsv"
    const auto digits = file.getFileNameWithoutExtension().substring (8);
    return digits.substring (0, 4) + "-" + digits.substring (4, 6) + "-" + digits.substring (6, 8) + " "
           + digits.substring (9, 11) + ":" + digits.substring (11, 13)
           + (digits.length() > 15 ? " (" + digits.substring (16) + ")" : juce::String());
}

juce::String PlayHistory::exportTo (int32_t session, const juce::File& file) const
{
    const auto all = songs (session);
    juce::String text;
    if (M3u::isExtensionOf (file))
    {
        text = M3u::header();
        for (const auto& song : all)
            text << M3u::entry (-1, song.title, song.artist, song.path);
    }
    else if (file.hasFileExtension ("html;htm"))
    {
        text = pageOf (nameOf (fileOf (session)), all);
    }
    else
    {
        text = firstLine;
        for (const auto& song : all)
            text << lineOf (song);
    }
    return file.replaceWithText (text, false, false, "\n")
               ? juce::String()
               : tr ("%1 can't be written.", file.getFullPathName());
}

bool PlayHistory::remove (int32_t session)
{
    const auto file = fileOf (session);
    const std::scoped_lock scope (lock);
    return file != juce::File() && file != own && file.deleteFile();
}
