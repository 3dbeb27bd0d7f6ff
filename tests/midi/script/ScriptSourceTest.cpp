#include "midi/script/ScriptSource.h"
#include "ScriptFixture.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using testing::HasSubstr;

namespace
{
std::string repeated (const std::string& text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

/** Builds a text as a script; the build is the test, whatever comes of it. */
ScriptLanguage::Build build (const std::string& text)
{
    ScriptJournal journal;
    ScriptTurn turn;
    const ScriptWorld world { .journal = journal };
    ScriptFunctions functions (world, turn);
    ScriptLanguage language (functions);
    return language.build (juce::File ("/nowhere/script.c"), text, {});
}
}

TEST (ScriptSource, NestedAndLongCodeIsRefusedOrCompiled)
{
    const std::string inFunction = "void f() { int a = 1; bool b = true; ";
    const std::string sources[] {
        inFunction + "a = " + repeated ("(", 20000) + "1" + repeated (")", 20000) + "; }",
        inFunction + repeated ("{", 20000) + repeated ("}", 20000) + " }",
        repeated ("namespace n {", 10000) + repeated ("}", 10000),
        inFunction + repeated ("array<", 10000) + "int" + repeated (">", 10000) + " c; }",
        inFunction + repeated ("if(b) ", 7000) + "; }",
        inFunction + repeated ("if(b); else ", 5000) + "; }",
        inFunction + "a = " + repeated ("a = ", 15000) + "1; }",
        inFunction + "a = " + repeated ("b ? 1 : ", 7000) + "1; }",
        inFunction + "a = " + repeated ("- ", 30000) + "1; }",
        inFunction + repeated ("while(b) ", 7000) + "; }",
        inFunction + "a" + repeated (".a", 15000) + "; }",
    };
    for (const auto& source : sources)
    {
        const auto built = build (source);
        EXPECT_FALSE (built.messages.empty()) << source.substr (0, 60);
        EXPECT_LE (built.messages.size(), ScriptLanguage::mostMessages + 1);
    }
}

TEST (ScriptSource, LimitsLookThroughTextsAndComments)
{
    const auto deep = repeated ("(", 1000);
    EXPECT_FALSE (faultOf ("// " + deep + "\n/* " + deep + " */ string s = \"" + deep + "\\\"" + deep
                           + "\"; '" + deep + "' \"\"\" " + deep + "\n\" \"\"\""));
    const auto fault = faultOf ("// \"\nint a;\n  x = " + deep);
    ASSERT_TRUE (fault);
    const auto open = faultOf ("int a; /*/ int b;\n");
    ASSERT_TRUE (open);
    EXPECT_EQ (open->column, 8) << "a comment that does not end";

    // The compiler's texts go on over ends of lines, and a long one that breaks off has it look behind the end.
    EXPECT_FALSE (faultOf ("string s = \"" + deep + "\n" + deep + "\"; string t = \"open"));
    const auto longText = faultOf ("string s = \"\n\"; [a \"\"\" b \\\"\n\"\"");
    ASSERT_TRUE (longText);
    EXPECT_THAT (longText->text, HasSubstr ("in three quotes"));
    EXPECT_EQ (longText->line, 2);
    EXPECT_EQ (longText->column, 7);
    EXPECT_EQ (fault->line, 3);
    EXPECT_EQ (fault->column, 7 + ScriptLimits::nesting);
}

TEST (ScriptSource, IncludesReachTheScriptsFoldersOnly)
{
    ScriptFixture f;
    f.write ("const int FROM_OUTSIDE = 1;", "outside.h");
    const auto inside = f.folder.file ("here/inside");
    ASSERT_TRUE (inside.createDirectory().wasOk());
    ASSERT_TRUE (
        inside.getChildFile ("deep.h").replaceWithText ("#include \"deep.h\"\n#include \"deeper.h\"\n"));
    ASSERT_TRUE (inside.getChildFile ("deeper.h").replaceWithText ("const int DEEP = 5;"));
    ASSERT_EQ (mkfifo (f.folder.file ("here/pipe.h").getFullPathName().toRawUTF8(), 0600), 0);
    struct Case
    {
        juce::String include;
        bool isFound;
    };
    const Case cases[] { { "inside/deep.h", true }, { "px_commands.h", true },
                         { "../outside.h", false }, { f.folder.file ("outside.h").getFullPathName(), false },
                         { "pipe.h", false },       { "/dev/zero", false },
                         { "missing.h", false },    { "", false } };
    for (const auto& c : cases)
    {
        const auto file = f.folder.file ("here/script.c");
        file.replaceWithText ("#include \"" + c.include + "\"\n" + ScriptFixture::withBodies ({}));
        EXPECT_EQ (f.script.loadScript (file), c.isFound) << c.include;
    }
    for (const auto& text : f.told())
        EXPECT_FALSE (text.contains ("FROM_OUTSIDE")) << text;
}

TEST (ScriptSource, FilesThatAreNoScriptsAreRefused)
{
    ScriptFixture f;
    EXPECT_FALSE (f.script.loadScript ({}));
    EXPECT_FALSE (f.script.loadScript (f.folder));
    EXPECT_FALSE (f.script.loadScript (f.folder.file ("missing.c")));
    EXPECT_TRUE (f.told().empty());
    EXPECT_FALSE (f.load (juce::String::repeatedString ("// long\n", 40000)));
    EXPECT_THAT (f.told().back().toStdString(), HasSubstr ("is longer than 256 KB."));
    EXPECT_TRUE (
        f.load (juce::String::charToString (0xfeff) + ScriptFixture::withBodies ({}).replace ("\n", "\r\n")))
        << "a byte order mark";
    EXPECT_FALSE (f.load (""));
}
