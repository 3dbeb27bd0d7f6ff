#include "Program.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace testing;

namespace
{
/** A library of its own, and songs that are named by their files. */
class LibraryVerbs : public Test
{
protected:
    void SetUp() override
    {
        const auto noise = EncodedFiles::makeNoise (2, 44100, 44100.0);
        music.createDirectory();
        for (const auto* name : { "Alpha", "Bravo", "It's\ta \"test\"" })
            EncodedFiles::writeWav (noise, 44100.0, music.getChildFile (juce::String (name) + ".wav"));
        folder.file ("notes.txt").replaceWithText ("no music");
    }

    ProgramRun run (juce::StringArray words)
    {
        words.addArray ({ "--library", "new/folder/l.sqlite" });
        return runProgram (words, folder);
    }

    juce::String outOf (const juce::StringArray& words)
    {
        const auto done = run (words);
        EXPECT_EQ (done.exitCode, 0) << words.joinIntoString (" ");
        EXPECT_EQ (done.errorLine(), "") << words.joinIntoString (" ");
        return done.out.joinIntoString ("|");
    }

    const TemporaryFolder folder;
    const juce::File music = folder.file ("music");
};
}

TEST_F (LibraryVerbs, BuildAndShowALibrary)
{
    struct Step
    {
        juce::StringArray words;
        const char* out;
    };
    for (const auto& [words, out] : {
             Step { { "import", "music" }, "3 audio files, 3 new in the library." },
             Step { { "import", "music/Alpha.wav", "music" }, "4 audio files, 0 new in the library." },
             Step { { "list", "--columns", "title,duration", "--sort", "title", "--desc" },
                    "title\tduration|It's a \"test\"\t1|Bravo\t1|Alpha\t1" },
             Step { { "list", "--search", "R", "--in", "title,genre", "--columns", "title" }, "title|Bravo" },
             Step { { "list", "--kind", "genres" }, "name\tsongs|\t3" },
             Step { { "playlist", "create", "Set", "music/Bravo.wav", "music" },
                    "4 audio files, 0 new in the library." },
             Step { { "import", "music/Alpha.wav", "--playlist", "Set" },
                    "1 audio file, 0 new in the library." },
             Step { { "playlist", "show", "Set", "--columns", "title" },
                    "title|Bravo|Alpha|Bravo|It's a \"test\"|Alpha" },
             Step { { "playlist", "remove", "Set", "1", "4", "5" }, "" },
             Step { { "list", "--kind", "playlist", "Set", "--columns", "title" }, "title|Alpha|Bravo" },
             Step { { "list", "--kind", "playlist", "Set", "--search", "b", "--columns", "title" },
                    "title|Bravo" },
             Step { { "playlist", "create", "Empty" }, "" },
             Step { {
                        "playlist",
                        "rename",
                        "Empty",
                        "-",
                    },
                    "" },
             Step { { "playlist", "list" }, "name\tsongs|Set\t2|-\t0" },
             Step { { "playlist", "delete", "-" }, "" },
             Step { { "playlist", "list" }, "name\tsongs|Set\t2" },
             Step { { "import", "music/Bravo.wav", "--automix" }, "1 audio file, 0 new in the library." },
             Step { { "list", "--kind", "automix", "--columns", "title" }, "title|Bravo" },
             Step { { "export", "Set", "set.m3u" }, "" },
             Step { { "export", "--kind", "library", "all.html" }, "" },
             Step { { "playlist", "import", "set.m3u", "Back" }, "2 songs, 0 new in the library." },
             Step { { "playlist", "show", "Back", "--columns", "title" }, "title|Alpha|Bravo" },
             Step {
                 { "smart", "list" },
                 "name\tsongs|Recently Played\t0|Recently Added\t3|Top 25 Rated\t0|Top 25 Most Played\t0" },
         })
        EXPECT_EQ (outOf (words), out) << words.joinIntoString (" ");
    EXPECT_THAT (folder.file ("all.html").loadFileAsString().toStdString(), HasSubstr ("Bravo"));
}

TEST_F (LibraryVerbs, MakeSmartPlaylistsFromTheirRules)
{
    outOf ({ "import", "music" });
    const auto rules = outOf ({ "smart", "rules", "Top 25 Rated" });
    folder.file ("rules.xml")
        .replaceWithText (rules.replace ("\"rating\" ", "\"title\" ")
                              .replace ("is greater than", "starts with")
                              .replace ("value1=\"3\"", "value1=\"A\""));
    EXPECT_EQ (outOf ({ "smart", "create", "A's", "--rules", "rules.xml" }), "");
    EXPECT_EQ (outOf ({ "smart", "show", "A's", "--columns", "title" }), "title|Alpha");
    EXPECT_EQ (outOf ({ "list", "--kind", "smart", "A's", "--columns", "title" }), "title|Alpha");
    EXPECT_EQ (outOf ({ "smart", "rename", "A's", "B" }), "");
    EXPECT_EQ (outOf ({ "smart", "delete", "B" }), "");
    EXPECT_THAT (outOf ({ "smart", "list" }).toStdString(), Not (HasSubstr ("|B")));
}

TEST_F (LibraryVerbs, RefuseInOneSentence)
{
    EXPECT_THAT (run ({ "list" }).errorLine().toStdString(), HasSubstr ("There is no library"));
    EXPECT_FALSE (folder.file ("new").exists());
    outOf ({ "import", "music" });
    outOf ({ "playlist", "create", "Set" });
    folder.file ("rules.xml").replaceWithText ("<rules/>");

    struct Case
    {
        juce::StringArray words;
        const char* part;
    };
    for (const auto& [words, part] : {
             Case { { "import" }, "needs a file or folder" },
             Case { { "import", "missing.wav" }, "missing.wav does not exist" },
             Case { { "import", "notes.txt" }, "is no audio file" },
             Case { { "import", "music", "--playlist", "X" }, "no playlist \"X\"" },
             Case { { "import", "music", "--playlist", "Set", "--automix" }, "don't go together" },
             Case { { "list", "--kind", "records" }, "no kind \"records\"" },
             Case { { "list", "--kind", "album" }, "needs a name" },
             Case { { "list", "--kind", "album", "X" }, "No song has the album \"X\"" },
             Case { { "list", "--sort", "colour" }, "no column \"colour\" to sort" },
             Case { { "list", "--columns", "title,loudness" }, "no column \"loudness\"" },
             Case { { "list", "--in", "title" }, "--search" },
             Case { { "list", "stray" }, "\"stray\"" },
             Case { { "playlist" }, "needs an action" },
             Case { { "playlist", "fly" }, "no action \"fly\"" },
             Case { { "playlist", "add", "Set" }, "takes NAME PATH..." },
             Case { { "playlist", "list", "Set" }, "takes no argument" },
             Case { { "playlist", "create", "Set" }, "a playlist \"Set\" already" },
             Case { { "playlist", "create", " " }, "needs a name" },
             Case { { "playlist", "remove", "Set", "1" }, "not \"1\"" },
             Case { { "playlist", "rename", "Set", "Set" }, "already" },
             Case { { "playlist", "import", "missing.m3u" }, "can't be read" },
             Case { { "smart", "create", "X" }, "needs --rules" },
             Case { { "smart", "create", "X", "--rules", "rules.xml" }, "holds no rules" },
             Case { { "smart", "show", "Top" }, "no smart playlist \"Top\"" },
             Case { { "export", "Set" }, "one file" },
             Case { { "export", "Set", "set.txt" }, "not \"set.txt\"" },
             Case { { "export", "Set", "missing/set.m3u" }, "can't be written" },
         })
    {
        const auto done = run (words);
        EXPECT_EQ (done.exitCode, 2) << words.joinIntoString (" ");
        EXPECT_TRUE (done.out.isEmpty()) << words.joinIntoString (" ");
        EXPECT_EQ (done.err.size(), 1) << done.errorLine();
        EXPECT_THAT (done.errorLine().toStdString(), AllOf (StartsWith ("platterdex: "), HasSubstr (part)));
    }
    EXPECT_EQ (outOf ({ "playlist", "list" }), "name\tsongs|Set\t0");
}
