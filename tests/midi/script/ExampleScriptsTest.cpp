#include "EngineFixture.h"
#include "ScriptFixture.h"
#include "midi/script/ShippedScripts.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{
/** A shipped script that plays a whole engine, with a fake surface in front. */
struct ExampleFixture : EngineFixture, ScriptFixture
{
    explicit ExampleFixture (const char* name) : ScriptFixture (engine.get())
    {
        const auto* const shipped = ShippedScripts::find (name);
        EXPECT_NE (shipped, nullptr) << name;
        EXPECT_TRUE (shipped != nullptr && script.loadScript (write (std::string (shipped->text))));
        EXPECT_TRUE (told().empty()) << told().front();
    }

    ~ExampleFixture()
    {
        script.stopScript();
        EXPECT_TRUE (isQuiet || told().empty()) << told().front();
    }

    bool reads (const char* constant, double value)
    {
        return comes ([&] { return std::abs (get (constant) - value) < 0.002; });
    }

    bool shows (int status, int data, int value)
    {
        return comes ([&] { return surface.lamp (status, data) == value; });
    }

    bool isQuiet = false; ///< true where the script may log

    using ScriptFixture::folder;
    using ScriptFixture::load;
};
}

TEST (ExampleScripts, TwoDecksPlayAndShowWhatTheyDo)
{
    ExampleFixture f ("two_decks.c");
    f.loadNoise (1);
    EXPECT_TRUE (f.shows (0x91, 0x0B, 0));
    f.post (0x91, 0x0B, 127);
    f.post (0x91, 0x0B, 0);
    EXPECT_TRUE (f.shows (0x91, 0x0B, 127)) << "the play lamp of deck B";
    EXPECT_EQ (f.get ("PLAY_PAUSE_B"), 1.0f);
    EXPECT_EQ (f.surface.lamp (0x90, 0x0B), 0) << "and of it alone";

    f.post (0x91, 0x22, 127);
    EXPECT_TRUE (f.reads ("HOT_CUE_3_B", 1.0));
    EXPECT_TRUE (f.shows (0x91, 0x22, 127));
    f.post (0xB1, 0x13, 32);
    EXPECT_TRUE (f.reads ("VOLUME_B", 32 / 127.0));
    f.post (0xB0, 0x0F, 127);
    EXPECT_TRUE (f.reads ("EQ_LOW_A", 1.0));
    f.post (0xB2, 0x13, 0);
    f.post (0xB0, 0x1F, 127);
    EXPECT_TRUE (f.reads ("CROSSFADER", 1.0));

    f.script.stopScript();
    EXPECT_EQ (f.surface.lamp (0x91, 0x0B), 0) << "no lamp is left";
}

TEST (ExampleScripts, PadGridSetsAndDeletesCuesInColours)
{
    ExampleFixture f ("pad_grid.c");
    f.loadNoise (1);
    f.post (0x90, 32 + 2, 127);
    f.post (0x90, 32 + 2, 0);
    EXPECT_TRUE (f.reads ("HOT_CUE_3_B", 1.0));
    EXPECT_TRUE (f.shows (0x90, 32 + 2, 9)) << "amber, deck B's";
    EXPECT_TRUE (f.shows (0x90, 32 + 3, 0));
    f.post (0x90, 48, 127);
    EXPECT_TRUE (f.shows (0x90, 48, 21)) << "plays";

    f.post (0x90, 48 + 7, 127);
    EXPECT_TRUE (f.shows (0x90, 48 + 7, 5)) << "shift";
    EXPECT_TRUE (f.shows (0x90, 32 + 2, 5) && f.shows (0x90, 32 + 2, 0)) << "blinks red";
    f.post (0x90, 32 + 2, 127);
    EXPECT_TRUE (f.reads ("HOT_CUE_3_B", 0.0));
}

TEST (ExampleScripts, JogScratchesBendsAndSearches)
{
    ExampleFixture f ("jog_scratch.c");
    f.loadNoise (0);
    f.set ("SEEK_A", 0.5f);
    const auto moves = [&] (int value, float sense)
    {
        const auto before = f.get ("SEEK_A");
        for (int i = 0; i < 40; ++i)
            f.post (0xB0, 0x22, value);
        return ScriptFixture::comes (
            [&]
            {
                f.render (512);
                return sense * (f.get ("SEEK_A") - before) > 0.001f;
            });
    };
    f.post (0x90, 0x36, 127);
    EXPECT_TRUE (f.shows (0x90, 0x36, 127));
    EXPECT_TRUE (moves (64 + 20, 1.0f));
    f.render (44100);
    EXPECT_TRUE (moves (64 - 20, -1.0f));
    f.post (0x90, 0x36, 0);
    EXPECT_TRUE (f.reads ("JOG_SCRATCH_ON_A", 0.0));

    f.post (0x91, 0x3F, 127);
    f.loadNoise (1);
    for (int i = 0; i < 10; ++i)
        f.post (0xB1, 0x22, 64 + 10);
    EXPECT_TRUE (f.reads ("SEEK_B", 0.2));

    f.post (0xB1, 0x00, 96);
    f.post (0xB1, 0x20, 1);
    EXPECT_TRUE (f.reads ("PITCH_B", 1.0 - (96 * 128 + 1) / 16383.0));
}

TEST (ExampleScripts, LevelMetersRiseAndFall)
{
    ExampleFixture f ("level_meters.c");
    f.loadNoise (0);
    EXPECT_TRUE (f.shows (0xB0, 0x50, 0));
    f.set ("CROSSFADER", 0.0f);
    f.set ("PLAY_PAUSE_A");
    EXPECT_TRUE (ScriptFixture::comes (
        [&]
        {
            f.render (512);
            return f.surface.lamp (0xB0, 0x50) > 0 && f.surface.lamp (0xB0, 0x54) > 0;
        }));
    f.set ("PLAY_PAUSE_A");
    f.render (44100);
    EXPECT_TRUE (f.shows (0xB0, 0x50, 0));
    EXPECT_TRUE (f.shows (0xB0, 0x54, 0));
}

TEST (ExampleScripts, ShowMessagesTellsEachControlOnce)
{
    ExampleFixture f ("show_messages.c");
    f.isQuiet = true;
    for (int i = 0; i < 3; ++i)
        f.post (0xB4, 7, i, "Box");
    f.post (0x90, 60, 127, "Box");
    EXPECT_TRUE (ScriptFixture::comes ([&] { return f.journal.newest() >= 2; }));
    f.script.stopScript();
    EXPECT_THAT (f.told(),
                 ElementsAre ("Box: channel 5, controller 7, value 0", "Box: channel 1, note 60, value 127"));
}

TEST (ShippedScripts, CommandsHeaderHasEveryCommandUnderItsNumber)
{
    ScriptFixture f;
    juce::String body;
    auto count = 0;
    for (const int number : CommandTable::numbers())
    {
        body << "if(" << CommandTable::constant (number) << " != " << number << ") log(\"" << number
             << "\");\n";
        ++count;
    }
    ASSERT_TRUE (f.load (ScriptFixture::withBodies ({}, {}, body, {}, "#include \"px_commands.h\"\n")));
    EXPECT_EQ (count, 471);
    EXPECT_TRUE (f.told().empty()) << f.told().front();
}

TEST (ShippedScripts, InstallBringsTheHeaderUpToDateAndSparesTheRest)
{
    const TemporaryFolder folder;
    const auto scripts = folder.file ("script_files");
    ASSERT_TRUE (ShippedScripts::install (scripts));
    const auto header = scripts.getChildFile ("px_commands.h"),
               example = scripts.getChildFile ("two_decks.c");
    const auto wanted = header.loadFileAsString();
    header.appendText ("// old");
    example.replaceWithText ("// mine");
    ASSERT_TRUE (ShippedScripts::install (scripts));
    EXPECT_EQ (header.loadFileAsString(), wanted);
    EXPECT_EQ (example.loadFileAsString(), "// mine");
}
