#include "Program.h"
#include "library/sql/SqlConnection.h"
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
        words.addArray ({ "--library", library.getFullPathName() });
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
    juce::File library = folder.file ("new/folder/l.sqlite");

    /** The names of the library's files that begin so, with blanks between. */
    juce::String filesLike (const juce::String& pattern)
    {
        juce::StringArray names;
        for (const auto& file :
             library.getParentDirectory().findChildFiles (juce::File::findFiles, true, pattern))
            names.add (file.getFileName());
        names.sort (false);
        return names.joinIntoString (" ");
    }

    /** Writes over the library's rows and leaves its first page. */
    void damage()
    {
        juce::MemoryBlock content;
        ASSERT_TRUE (library.loadFileAsData (content));
        for (size_t i = 4096; i < content.getSize(); ++i)
            content[i] = static_cast<char> (i * 31);
        ASSERT_TRUE (library.replaceWithData (content.getData(), content.getSize()));
    }
};

const juce::StringArray titles { "list", "--columns", "title", "--sort", "title" };
constexpr const char* allTitles = "title|Alpha|Bravo|It's a \"test\"";
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
             Step { { "playlist", "remove", "Set", "1", "4", "5" }, "Took 3 songs out of \"Set\"." },
             Step { { "list", "--kind", "playlist", "Set", "--columns", "title" }, "title|Alpha|Bravo" },
             Step { { "list", "--kind", "playlist", "Set", "--search", "b", "--columns", "title" },
                    "title|Bravo" },
             Step { { "playlist", "create", "Empty" }, "Made the playlist \"Empty\"." },
             Step { { "playlist", "rename", "Empty", "-" }, "Named it \"-\"." },
             Step { { "playlist", "list" }, "name\tsongs|Set\t2|-\t0" },
             Step { { "playlist", "delete", "-" }, "Deleted the playlist \"-\"." },
             Step { { "playlist", "list" }, "name\tsongs|Set\t2" },
             Step { { "import", "music/Bravo.wav", "--automix" }, "1 audio file, 0 new in the library." },
             Step { { "automix", "show", "--columns", "title" }, "title|Bravo" },
             Step { { "list", "--kind", "automix", "--columns", "title" }, "title|Bravo" },
             Step { { "automix", "clear" }, "Took 1 song out of the automix list." },
             Step { { "automix", "show", "--columns", "title" }, "title" },
             Step {
                 { "smart", "list" },
                 "name\tsongs|Recently Played\t0|Recently Added\t3|Top 25 Rated\t0|Top 25 Most Played\t0" },
         })
        EXPECT_EQ (outOf (words), out) << words.joinIntoString (" ");
    EXPECT_EQ (library.getSiblingFile ("music_folders.txt").loadFileAsString(),
               music.getFullPathName() + "\n")
        << "windows look there for new files";
    outOf ({ "export", "Set", "set.m3u" });
    EXPECT_EQ (outOf ({ "export", "--kind", "library", "all.html" }),
               "Wrote 3 songs to " + folder.file ("all.html").getFullPathName() + ".");
    EXPECT_THAT (folder.file ("all.html").loadFileAsString().toStdString(), HasSubstr ("Bravo"));
    EXPECT_EQ (outOf ({ "playlist", "import", "set.m3u", "Back" }), "2 songs, 0 new in the library.");
    EXPECT_EQ (outOf ({ "playlist", "show", "Back", "--columns", "title" }), "title|Alpha|Bravo");
    EXPECT_EQ (outOf ({ "playlist", "clear", "Back" }), "Took 2 songs out of \"Back\".");

    folder.file ("music/Alpha.wav").deleteFile();
    EXPECT_EQ (outOf ({ "remove", "--missing" }), "Took 1 song out of the library.");
    EXPECT_EQ (outOf ({ "remove", "music/Bravo.wav" }), "Took 1 song out of the library.");
    EXPECT_EQ (outOf ({ "list", "--columns", "title" }), "title|It's a \"test\"");
    EXPECT_EQ (outOf ({ "remove", "music" }), "Took 1 song out of the library.");
    EXPECT_EQ (outOf ({ "playlist", "list" }), "name\tsongs|Set\t0|Back\t0");
}

TEST_F (LibraryVerbs, MakeSmartPlaylistsFromTheirRules)
{
    outOf ({ "import", "music" });
    const auto rules = outOf ({ "smart", "rules", "Top 25 Rated" });
    folder.file ("rules.xml")
        .replaceWithText (rules.replace ("\"rating\" ", "\"title\" ")
                              .replace ("is greater than", "starts with")
                              .replace ("value1=\"3\"", "value1=\"A\""));
    EXPECT_EQ (outOf ({ "smart", "create", "A's", "--rules", "rules.xml" }),
               "Made the smart playlist \"A's\".");
    EXPECT_EQ (outOf ({ "smart", "show", "A's", "--columns", "title" }), "title|Alpha");
    EXPECT_EQ (outOf ({ "list", "--kind", "smart", "A's", "--columns", "title" }), "title|Alpha");
    outOf ({ "smart", "rename", "A's", "B" });
    outOf ({ "smart", "delete", "B" });
    EXPECT_THAT (outOf ({ "smart", "list" }).toStdString(), Not (HasSubstr ("|B")));
}

TEST_F (LibraryVerbs, ImportNothingThatNoDeckCouldLoad)
{
    for (const auto* name : { "empty.mp3", "lies.flac", "header.wav" })
        music.getChildFile (name).create();
    music.getChildFile ("lies.flac").replaceWithText (juce::String::repeatedString ("no audio", 1000));
    juce::MemoryBlock wav;
    music.getChildFile ("Alpha.wav").loadFileAsData (wav);
    music.getChildFile ("header.wav").replaceWithData (wav.getData(), 44);

    const auto done = run ({ "import", "music", "--automix" });
    EXPECT_EQ (done.exitCode, 2);
    EXPECT_EQ (done.out.joinIntoString ("|"), "3 audio files, 3 new in the library.");
    ASSERT_EQ (done.err.size(), 4) << done.errorLine();
    EXPECT_THAT (done.err[0].toStdString(), HasSubstr ("empty.mp3: The file is empty."));
    EXPECT_THAT (done.err[1].toStdString(), HasSubstr ("header.wav: "));
    EXPECT_THAT (done.err[2].toStdString(), HasSubstr ("lies.flac: "));
    EXPECT_THAT (done.err[3].toStdString(), HasSubstr ("3 audio files not imported"));
    EXPECT_EQ (outOf ({ "automix", "show", "--columns", "title" }), "title|Alpha|Bravo|It's a \"test\"");
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
             Case { { "list", "--sort", "colour" },
                    "no column \"colour\" to sort by or search in; there are " },
             Case { { "list", "--columns", "titel,artist" }, "no column \"titel\"; there are " },
             Case { { "list", "--columns", "titel" }, "Did you mean title?" },
             Case { { "list", "--in", "title" }, "--search" },
             Case { { "list", "stray" }, "\"stray\"" },
             Case { { "playlist" }, "needs an action" },
             Case { { "playlist", "fly" }, "no action \"fly\"" },
             Case { { "playlist", "shwo", "Set" }, "Did you mean show?" },
             Case { { "playlist", "show", "Sat" }, "no playlist \"Sat\". Did you mean Set?" },
             Case { { "remove" }, "needs a file or folder" },
             Case { { "remove", "elsewhere" }, "has no song" },
             Case { { "playlist", "add", "Set" }, "takes NAME PATH..." },
             Case { { "playlist", "list", "Set" }, "takes no argument" },
             Case { { "playlist", "create", "Set" }, "a list \"Set\" already" },
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

TEST_F (LibraryVerbs, CopyTheLibraryOnceADayAndPutTheCopyInADamagedOnesPlace)
{
    outOf ({ "import", "music" });
    const auto backups = library.getSiblingFile ("backups");
    for (int day = 1; day <= 8; ++day)
        ASSERT_TRUE (
            library.copyFileTo (backups.getChildFile ("l_2001-01-0" + juce::String (day) + ".sqlite")));
    // Another library's.
    ASSERT_TRUE (library.copyFileTo (backups.getChildFile ("l_b_2001-01-01.sqlite")));
    outOf (titles);
    EXPECT_FALSE (filesLike ("l_*.sqlite").contains ("l_20" + juce::Time::getCurrentTime().formatted ("%y")));
    outOf ({ "playlist", "create", "Set" });
    outOf ({ "playlist", "create", "Later" });
    const auto kept = filesLike ("l_2*.sqlite");
    EXPECT_TRUE (kept.startsWith ("l_2001-01-03.sqlite l_2001-01-04.sqlite")) << kept;
    EXPECT_EQ (juce::StringArray::fromTokens (kept, false).size(), 7) << kept;
    EXPECT_EQ (filesLike ("l_b*"), "l_b_2001-01-01.sqlite");

    for (const auto isThere : { true, false })
    {
        if (isThere)
            damage();
        else
            ASSERT_TRUE (library.deleteFile());
        const auto done = run (titles);
        EXPECT_EQ (done.exitCode, 0);
        EXPECT_EQ (done.out.joinIntoString ("|"), isThere ? allTitles : "title");
        EXPECT_EQ (done.err.size(), 1);
        const auto said = done.errorLine().toStdString();
        if (isThere)
        {
            EXPECT_THAT (
                said,
                AllOf (StartsWith ("platterdex: The library file was damaged and is kept as l_damaged_"),
                       EndsWith (".sqlite has taken its place.")));
        }
        else
        {
            EXPECT_THAT (said, AllOf (StartsWith ("platterdex: The library file was missing"),
                                      HasSubstr ("its backup " + backups.getFullPathName().toStdString())));
        }
        EXPECT_TRUE (isThere
                     || backups.findChildFiles (juce::File::findFiles, false, "l_2001-01-08*")[0].copyFileTo (
                         library));
        EXPECT_EQ (outOf (titles), allTitles);
        EXPECT_EQ (juce::StringArray::fromTokens (filesLike ("l_damaged_*"), false).size(), 1);
    }
}

TEST_F (LibraryVerbs, LeaveALibraryAloneThatAnotherProgramHasLocked)
{
    outOf ({ "import", "music" });
    outOf ({ "playlist", "create", "Set" });
    struct Case
    {
        bool isDamaged;
        const char* lock;
        int readCode;
        const char* read;
        const char* written;
    };
    for (const auto& [isDamaged, lock, readCode, read, written] : {
             Case { false, "BEGIN EXCLUSIVE", 0, "", "Nothing was changed: another program" },
             Case { true, "BEGIN IMMEDIATE", 2, "", "another program" },
         })
    {
        // Every session looks at the file.
        ASSERT_TRUE (library.getSiblingFile ("backups/l.sqlite.closed").deleteFile());
        if (isDamaged)
            damage();
        SqlConnection other;
        ASSERT_EQ (other.open (library.getFullPathName()), 0);
        ASSERT_EQ (other.run (lock), 0);
        const auto listed = run (titles), changed = run ({ "playlist", "create", "More" });
        EXPECT_EQ (listed.exitCode, readCode) << lock;
        EXPECT_THAT (listed.errorLine().toStdString(), HasSubstr (read));
        EXPECT_EQ (changed.exitCode, 2) << lock;
        EXPECT_THAT (changed.errorLine().toStdString(), HasSubstr (written));
        EXPECT_EQ (filesLike ("l_damaged*"), "") << lock;
        other.close();
        const auto later = run (titles);
        EXPECT_EQ (later.out.joinIntoString ("|"), allTitles) << lock;
        EXPECT_EQ (later.err.size(), isDamaged ? 1 : 0);
        EXPECT_EQ (outOf ({ "playlist", "list" }).contains ("More"), false);
    }
}

TEST_F (LibraryVerbs, TakeBackWhatAKilledProgramHadBegun)
{
    outOf ({ "import", "music" });
    const auto whole = library;
    for (const auto& words : { titles, juce::StringArray { "playlist", "create", "Set" } })
    {
        SqlConnection other;
        ASSERT_EQ (other.open (whole.getFullPathName()), 0);
        for (const auto* sql :
             { "PRAGMA cache_size=1", "PRAGMA synchronous=OFF", "BEGIN", "DELETE FROM songs",
               "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
               "INSERT INTO songs (filename) SELECT '/' || i FROM n" })
            ASSERT_EQ (other.run (sql), 0) << sql;
        // The disk holds now what a kill would leave.
        library = folder.file ("killed " + words[0] + "/l.sqlite");
        ASSERT_TRUE (library.getParentDirectory().createDirectory().wasOk());
        const auto beside = [] (const juce::File& file)
        { return juce::File (file.getFullPathName() + "-wal"); };
        ASSERT_TRUE (whole.copyFileTo (library) && beside (whole).copyFileTo (beside (library)));
        ASSERT_GT (beside (library).getSize(), 4096 * 20);
        ASSERT_EQ (other.run ("ROLLBACK"), 0);
        outOf (words);
        EXPECT_EQ (outOf (titles), allTitles);
        EXPECT_EQ (filesLike ("l_damaged*"), "");
    }
}

TEST_F (LibraryVerbs, LeaveANamedFileThatIsNoLibraryAsItIs)
{
    library = folder.file ("notes.txt");
    for (const auto& words : { titles, juce::StringArray { "import", "music" } })
    {
        const auto done = run (words);
        EXPECT_EQ (done.exitCode, 2);
        EXPECT_EQ (done.err.size(), 1);
        EXPECT_THAT (done.errorLine().toStdString(), HasSubstr ("can't be opened as a library"));
    }
    EXPECT_EQ (library.loadFileAsString(), "no music");
    EXPECT_EQ (filesLike ("notes*.txt"), "notes.txt");
    EXPECT_FALSE (folder.file ("backups").exists());
}

TEST_F (LibraryVerbs, ReadWhereNothingCanBeStored)
{
    outOf ({ "import", "music" });
    for (const auto& words : { titles, juce::StringArray { "playlist", "create", "Set" },
                               juce::StringArray { "export", "--kind", "library", "all.m3u" } })
    {
        // As on a full disk, for the administrator too; the signal that comes with it must not end the program.
        juce::ChildProcess process;
        ASSERT_TRUE (process.start (juce::StringArray {
            "/bin/sh", "-c",
            "(cd '" + folder.file ("").getFullPathName() + "'; ulimit -f 0; DISPLAY= '" PX_PROGRAM "' "
                + words.joinIntoString (" ") + " --library '" + library.getFullPathName()
                + "' 2>&1; echo $?) | cat" }));
        const auto said = linesOf (process.readAllProcessOutput()).joinIntoString ("|");
        const auto isRead = words == titles;
        EXPECT_THAT (said.toStdString(),
                     AllOf (HasSubstr ("There is no room for the library"), EndsWith (isRead ? "|0" : "|2")));
        EXPECT_EQ (said.contains (allTitles), isRead) << said;
        EXPECT_EQ (said.contains ("all.m3u can't be written."), words[0] == "export") << said;
    }
    EXPECT_EQ (outOf ({ "playlist", "list" }), "name\tsongs");
}
