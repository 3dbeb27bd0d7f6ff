#include "library/formats/Location.h"
#include "library/formats/M3u.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

TEST (Location, BecomesThePathThatItNames)
{
    const std::pair<const char*, const char*> locations[] {
        { "file://localhost/home/dj/a.mp3", "/home/dj/a.mp3" },
        { "file://localhost/C:/Music/a%20b.mp3", "C:/Music/a b.mp3" },
        { "file://localhost//server/a.mp3", "/server/a.mp3" },
        { "any seventeen ch.music/a.mp3", "/music/a.mp3" },
        { "file://localhost/Caf%C3%A9/%E2%82%ac%2Bx%25.mp3", "/Caf\xc3\xa9/\xe2\x82\xac+x%.mp3" },
        { "file://localhost/caf%E9\xc3\xa9.mp3", "/caf\xc3\xa9\xc3\xa9.mp3" },
        { "file://localhost/a%zz%4g.mp3", "/a%zz%4g.mp3" },
        { "file://localhost/a%00b", "/ab" },
        { "file://localhost/a%4", "/a" },
        { "file://localhost/a%", "/a" },
        { "file://localhost/", "" },
        { "short", "" },
        { "", "" },
    };
    for (const auto& [location, path] : locations)
        EXPECT_EQ (decodeLocation (juce::String::fromUTF8 (location)), juce::String::fromUTF8 (path))
            << location;
}

TEST (Location, OtherFormsOfFileUrlsCountWhereTheFixedStartLeadsNowhere)
{
    const TemporaryFolder folder;
    const auto path = folder.file ("a b#1.mp3").getFullPathName();
    ASSERT_TRUE (juce::File (path).create());
    const auto encoded = path.replace (" ", "%20").replace ("#", "%23");
    for (const auto* start :
         { "file://localhost", "file://", "file:", "FILE://127.0.0.1", "file://some.other.host.name" })
        EXPECT_EQ (decodeLocation (start + encoded), path) << start;

    // Its first 17 characters may hide a file that is there.
    const auto hidden = "file:///seventeen" + encoded;
    EXPECT_EQ (decodeLocation (hidden), path);
    EXPECT_EQ (decodeLocation ("file:///gone.mp3"), "/gone.mp3");
    EXPECT_EQ (decodeLocation ("file://"), "");
}

TEST (M3u, GivesItsEntriesWhateverTheLineEndsAndTheEncoding)
{
    const juce::StringArray expected { "/a.mp3", juce::String::fromUTF8 ("Bj\xc3\xb6rk/b.mp3"), " c" };
    const std::string text ("#EXTM3U\n#EXTINF:1,x\n/a.mp3\n\n   \nBj\xc3\xb6rk/b.mp3\n c");
    const auto withEnds = [&] (const char* end)
    { return juce::String::fromUTF8 (text.c_str()).replace ("\n", end).toStdString(); };

    for (const auto& bytes : { text, withEnds ("\r\n"), withEnds ("\r"), text + "\n", "\xef\xbb\xbf" + text,
                               std::string ("/a.mp3\nBj\xf6rk/b.mp3\n c\r\n") + std::string (40000, 'x') })
    {
        juce::MemoryInputStream stream (bytes.data(), bytes.size(), false);
        juce::StringArray lines;
        M3u::read (stream, [&] (const juce::String& line, juce::int64) { return lines.add (line), true; });
        EXPECT_EQ (lines, expected) << bytes.substr (0, 40);
    }
}
