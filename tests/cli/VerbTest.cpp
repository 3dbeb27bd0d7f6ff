#include "Program.h"
#include "engine/CommandTable.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace testing;

TEST (Verbs, HelpAndVersionGoToTheOutput)
{
    const TemporaryFolder folder;
    struct Case
    {
        juce::StringArray arguments;
        const char* part;
    };
    for (const auto& [arguments, part] : {
             Case { { "--help" }, "perform" },
             Case { { "--version" }, "Platterdex " },
             Case { { "perform", "--help" }, "--all-out FILE" },
             Case { { "commands", "--help" }, "--tsv" },
         })
    {
        const auto run = runProgram (arguments, folder);
        EXPECT_EQ (run.exitCode, 0);
        EXPECT_THAT (run.out.joinIntoString ("\n").toStdString(), HasSubstr (part));
        EXPECT_EQ (run.errorLine(), "");
    }
}

TEST (Verbs, AProgramThatIsStartedByItsNameFindsItsDecoder)
{
    const TemporaryFolder folder;
    EncodedFiles::writeWav (EncodedFiles::makeNoise (2, 4410, 44100.0), 44100.0, folder.file ("hit.wav"));
    folder.file ("set.txt").replaceWithText ("0 sample 1 hit.wav\n0.1 end\n");
    const auto programs = juce::File (PX_PROGRAM).getParentDirectory().getFullPathName();
    const auto run =
        runProgram ({ "-c", "PATH='" + programs + "':$PATH; platterdex perform set.txt --out out.wav" },
                    folder, "/bin/sh");
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_EQ (run.errorLine(), "");
}

TEST (Verbs, RefuseWhatTheyDoNotKnow)
{
    const TemporaryFolder folder;
    struct Case
    {
        juce::StringArray arguments;
        const char* part;
    };
    for (const auto& [arguments, part] : {
             Case { { "preform" }, "no verb \"preform\"; see platterdex --help. Did you mean perform?" },
             Case { { "commands", "--csv" }, "no option --csv" },
             Case { { "commands", "--tsv=1" }, "--tsv takes no value" },
             Case { { "commands", "CROSSFADER" }, "takes no argument" },
             Case { { "perform", "--loud" }, "no option --loud" },
             Case { { "perform", "a.txt", "--out" }, "--out needs a value" },
             Case { { "perform", "a.txt", "--out=" }, "--out needs a value" },
             Case { { "perform", "a.txt", "--seed", "1", "--seed", "2" }, "--seed stands there twice" },
         })
    {
        const auto run = runProgram (arguments, folder);
        EXPECT_EQ (run.exitCode, 2) << part;
        EXPECT_TRUE (run.out.isEmpty()) << part;
        EXPECT_EQ (run.err.size(), 1) << run.errorLine();
        EXPECT_THAT (run.errorLine().toStdString(), AllOf (StartsWith ("platterdex: "), HasSubstr (part)));
    }
}

TEST (CommandsVerb, PrintsEveryCommand)
{
    const TemporaryFolder folder;
    const auto run = runProgram ({ "commands", "--tsv" }, folder);
    ASSERT_EQ (run.out.size(), 1 + static_cast<int> (CommandTable::numbers().size()));
    int line = 0;
    for (const int number : CommandTable::numbers())
    {
        juce::StringArray cells;
        cells.addTokens (run.out[++line], "\t", {});
        ASSERT_EQ (cells.size(), 7) << run.out[line];
        EXPECT_EQ (cells[0], juce::String (number));
        EXPECT_EQ (CommandTable::numberOf (cells[2].toStdString()), number);
        EXPECT_EQ (cells[3].toStdString(), CommandTable::name (number));
        EXPECT_EQ (cells[4].isEmpty(), cells[1] == "meter");
        EXPECT_TRUE (cells[5].isNotEmpty());
        EXPECT_EQ (cells[6] == "unbuilt", CommandTable::isUnbuilt (number));
    }

    const auto text = runProgram ({ "commands" }, folder);
    EXPECT_EQ (text.out.size(), run.out.size());
    EXPECT_THAT (text.out[277].toStdString(), AllOf (HasSubstr ("CROSSFADER"), HasSubstr ("value")));
}
