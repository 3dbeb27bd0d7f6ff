#include "library/formats/PropertyList.h"

#include "support/xml/XmlPullParser.h"

#include <array>
#include <limits>
#include <string_view>
#include <utility>

using PropertyList::TrackKey;

namespace
{
struct KeyInfo
{
    std::string_view key, type;
    TrackKey meaning;
};

constexpr std::array<KeyInfo, 17> trackKeys { {
    { "Track ID", "integer", TrackKey::trackId },
    { "Name", "string", TrackKey::name },
    { "Artist", "string", TrackKey::artist },
    { "Album", "string", TrackKey::album },
    { "Grouping", "string", TrackKey::grouping },
    { "Genre", "string", TrackKey::genre },
    { "Kind", "string", TrackKey::kind },
    { "Size", "integer", TrackKey::size },
    { "Total Time", "integer", TrackKey::totalTime },
    { "Track Number", "integer", TrackKey::trackNumber },
    { "Year", "integer", TrackKey::year },
    { "Bit Rate", "integer", TrackKey::bitRate },
    { "Sample Rate", "integer", TrackKey::sampleRate },
    { "Play Count", "integer", TrackKey::playCount },
    { "Comments", "string", TrackKey::comments },
    { "Rating", "integer", TrackKey::rating },
    { "Location", "string", TrackKey::location },
} };

/** Walks the tree of a document, one element at a time. A callback gets an element that has begun and must read it to its
    end, by text(), skip() or one of the walks. */
class TreeWalk
{
public:
    explicit TreeWalk (std::unique_ptr<juce::InputStream> source) : parser (std::move (source)) {}

    const std::string& name() const { return parser.name(); }
    bool is (std::string_view wanted) const { return parser.name() == wanted; }

    /** Calls for each element in the one that has begun. */
    template <typename Function>
    void children (Function&& onChild)
    {
        const auto outer = parser.depth();
        while (!isStopped)
        {
            const auto event = parser.next();
            if (event == XmlPullParser::Event::start)
                onChild();
            else if (isOver (event) || parser.depth() < outer)
                return;
        }
    }

    /** Calls with each key of the dictionary that has begun, the element being its value. */
    template <typename Function>
    void pairs (Function&& onPair)
    {
        std::string key;
        auto hasKey = false;
        children (
            [&]
            {
                if (is ("key"))
                {
                    key = text();
                    hasKey = true;
                }
                else if (std::exchange (hasKey, false))
                    onPair (key);
                else
                    skip();
            });
    }

    /** All of the text in the element, and its end. */
    std::string text()
    {
        std::string all;
        const auto outer = parser.depth();
        while (parser.depth() >= outer)
        {
            const auto event = parser.next();
            if (isOver (event))
                break;
            if (event == XmlPullParser::Event::text
                && all.size() + parser.text().size() <= PropertyList::maxValueBytes)
                all += parser.text();
        }
        return all;
    }

    juce::String string()
    {
        const auto bytes = text();
        return juce::String::fromUTF8 (bytes.data(), static_cast<int> (bytes.size()));
    }

    void skip()
    {
        const auto outer = parser.depth();
        while (parser.depth() >= outer && !isOver (parser.next()))
        {
        }
    }

    void stop() { isStopped = true; }

    /** True once the document can't be read on: what was read last may be half of it. */
    bool isBroken() const { return parser.fault().has_value(); }

    /** Reads what is left. @returns true if the document is well formed, or the walk was stopped */
    bool isGood()
    {
        if (isStopped)
            return true;
        auto event = parser.next();
        while (!isOver (event))
            event = parser.next();
        return event == XmlPullParser::Event::finished;
    }

    double part() const
    {
        return parser.length() > 0
                   ? static_cast<double> (parser.position()) / static_cast<double> (parser.length())
                   : 0.0;
    }

private:
    static bool isOver (XmlPullParser::Event event)
    {
        return event == XmlPullParser::Event::finished || event == XmlPullParser::Event::failed;
    }

    XmlPullParser parser;
    bool isStopped = false;
};

PropertyList::Track readTrack (TreeWalk& walk)
{
    PropertyList::Track track;
    walk.pairs (
        [&] (const std::string& key)
        {
            for (const auto& known : trackKeys)
                if (known.key == key && walk.is (known.type))
                {
                    track[known.meaning] = walk.string();
                    return;
                }
            walk.skip();
        });
    return track;
}

void readEntries (TreeWalk& walk, std::vector<int32_t>& ids)
{
    walk.children (
        [&]
        {
            if (!walk.is ("dict"))
                return walk.skip();
            walk.pairs (
                [&] (const std::string& key)
                {
                    if (key != "Track ID" || !walk.is ("integer"))
                        return walk.skip();
                    if (const auto id = PropertyList::idOf (walk.string()); id >= 0)
                        ids.push_back (id);
                });
        });
}

PropertyList::Playlist readPlaylist (TreeWalk& walk)
{
    PropertyList::Playlist playlist;
    walk.pairs (
        [&] (const std::string& key)
        {
            if (key == "Name" && walk.is ("string"))
                playlist.name = walk.string();
            else if (walk.is ("array"))
                readEntries (walk, playlist.trackIds);
            else
            {
                playlist.isSpecial =
                    playlist.isSpecial || (key == "Distinguished Kind" && walk.is ("integer"));
                walk.skip();
            }
        });
    return playlist;
}

void readLibrary (TreeWalk& walk, const PropertyList::Visitor& visitor)
{
    walk.pairs (
        [&] (const std::string& key)
        {
            if (key == "Tracks" && walk.is ("dict"))
                walk.pairs (
                    [&] (const std::string&)
                    {
                        if (!walk.is ("dict"))
                            return walk.skip();
                        const auto track = readTrack (walk);
                        if (!walk.isBroken() && !visitor.onTrack (track, walk.part()))
                            walk.stop();
                    });
            else if (key == "Playlists" && walk.is ("array"))
                walk.children (
                    [&]
                    {
                        if (!walk.is ("dict"))
                            return walk.skip();
                        const auto playlist = readPlaylist (walk);
                        if (!walk.isBroken() && !visitor.onPlaylist (playlist, walk.part()))
                            walk.stop();
                    });
            else
                walk.skip();
        });
}
}

int32_t PropertyList::idOf (const juce::String& text)
{
    const auto digits = text.trim();
    if (digits.isEmpty() || digits.length() > 10 || !digits.containsOnly ("0123456789"))
        return -1;
    const auto number = digits.getLargeIntValue();
    return number <= std::numeric_limits<int32_t>::max() ? static_cast<int32_t> (number) : -1;
}

bool PropertyList::read (std::unique_ptr<juce::InputStream> source, const Visitor& visitor)
{
    TreeWalk walk (std::move (source));
    auto isList = false;
    walk.children (
        [&]
        {
            isList = walk.is ("plist");
            if (!isList)
                return walk.skip();
            walk.children (
                [&]
                {
                    if (walk.is ("dict"))
                        readLibrary (walk, visitor);
                    else
                        walk.skip();
                });
        });
    return walk.isGood() && isList;
}
