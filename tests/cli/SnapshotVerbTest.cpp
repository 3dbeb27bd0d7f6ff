#include "Program.h"
#include "shared/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <juce_graphics/juce_graphics.h>

using namespace testing;

namespace
{
juce::Image pictureOf (const juce::File& file)
{
    return juce::PNGImageFormat::loadFrom (file);
}
}

TEST (SnapshotVerb, PaintsTheSamePictureTwiceAtTheSizeItIsAskedFor)
{
    const TemporaryFolder folder;
    folder.file ("set.txt").replaceWithText ("0 set CROSSFADER 0.1\n0.5 set EQ_LOW_KILL_A 1\n1 end\n");
    const juce::StringArray common { "snapshot", "--size", "1024x728", "--four", "--after", "set.txt" };
    for (const auto* name : { "one.png", "two.png" })
    {
        auto arguments = common;
        arguments.addArray (juce::StringArray { "--out", name });
        const auto run = runProgram (arguments, folder);
        EXPECT_EQ (run.exitCode, 0) << run.errorLine();
    }
    juce::MemoryBlock one, two;
    folder.file ("one.png").loadFileAsData (one);
    folder.file ("two.png").loadFileAsData (two);
    EXPECT_GT (one.getSize(), 10'000u);
    EXPECT_TRUE (one == two);
    const auto picture = pictureOf (folder.file ("one.png"));
    EXPECT_EQ (picture.getBounds(), juce::Rectangle<int> (1024, 728));

    EXPECT_EQ (runProgram ({ "snapshot", "--out", "header.png", "--view", "header", "--scale", "2" }, folder)
                   .exitCode,
               0);
    EXPECT_EQ (pictureOf (folder.file ("header.png")).getBounds(), juce::Rectangle<int> (2540, 96));

    EXPECT_EQ (
        runProgram ({ "snapshot", "--out", "plain.png", "--size", "1024x728", "--four" }, folder).exitCode,
        0);
    folder.file ("plain.png").loadFileAsData (two);
    EXPECT_FALSE (one == two) << "the set must be seen";
}

TEST (SnapshotVerb, RefusesWhatItCanNotPaintInOneSentence)
{
    const TemporaryFolder folder;
    struct Case
    {
        juce::StringArray arguments;
        const char* part;
    };
    for (const auto& [arguments, part] : {
             Case { {}, "needs --out FILE.png" },
             Case { { "--out", "a.png", "extra" }, "takes options only" },
             Case { { "--out", "a.png", "--size", "1024" }, "--size takes" },
             Case { { "--out", "a.png", "--size", "1023x728" }, "--size takes" },
             Case { { "--out", "a.png", "--size", "1280x2561" }, "--size takes" },
             Case { { "--out", "a.png", "--size", "axb" }, "--size takes" },
             Case { { "--out", "a.png", "--scale", "3" }, "--scale takes" },
             Case { { "--out", "a.png", "--tab", "cloud" }, "no page \"cloud\"" },
             Case { { "--out", "a.png", "--view", "moon" }, "no view \"moon\"" },
             Case { { "--out", "a.png", "--view", "deckc" }, "--four only" },
             Case { { "--out", "a.png", "--after", "none.txt" }, "does not exist" },
             Case { { "--out", "a.jpg" }, "a.jpg does not end in .png" },
             Case { { "--out", "no/such/a.png" }, "can't be written" },
         })
    {
        juce::StringArray whole { "snapshot" };
        whole.addArray (arguments);
        const auto run = runProgram (whole, folder);
        EXPECT_EQ (run.exitCode, 2) << part;
        EXPECT_EQ (run.err.size(), 1) << run.errorLine();
        EXPECT_THAT (run.errorLine().toStdString(), AllOf (StartsWith ("platterdex: "), HasSubstr (part)));
        EXPECT_FALSE (folder.file ("a.png").exists());
    }
}
