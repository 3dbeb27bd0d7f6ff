#include "EngineFixture.h"

#include <gtest/gtest.h>

#include <set>

TEST (CommandTable, NamesAndConstantsStandAtTheirNumbers)
{
    struct Case
    {
        int number;
        const char *name, *constant;
    };
    for (const auto& c : { Case { 1, "Play/Pause A", "PLAY_PAUSE_A" },
                           { 112, "Delete Hot Cue #8 D", "DELETE_HOT_CUE_8_D" },
                           { 188, "Smartknob #2 On D", "SMARTKNOB_2_ON_D" },
                           { 277, "Crossfader", "CROSSFADER" },
                           { 349, "Effect Select 3 Group D", "EFFECT_SELECT_3_GROUP_D" },
                           { 408, "Slicegate Pad D.8", "SLICEGATE_PAD_D_8" },
                           { 465, "Disk Recorder", "DISK_RECORDER" } })
    {
        EXPECT_EQ (CommandTable::name (c.number), c.name);
        EXPECT_EQ (CommandTable::constant (c.number), c.constant);
        EXPECT_EQ (CommandTable::numberOf (c.constant), c.number);
    }
    for (const int none : { -1, 0, 466, 3180, INT_MAX, INT_MIN })
        EXPECT_FALSE (CommandTable::find (none));
    for (const auto* none : { "PLAY_PAUSE_E", "" })
        EXPECT_EQ (CommandTable::numberOf (none), 0);
}

namespace
{
/** Every deck plays a track, none leads, and automix has nothing to say. */
struct FourDecks : EngineFixture
{
    FourDecks()
    {
        engine->settings.recordFile.set (folder.file ("r.wav").getFullPathName());
        for (int d = 0; d < deckCount; ++d)
            loadNoise (d, 1);
        for (int pad = 0; pad <= Sampler::preview; ++pad)
            engine->sampler.ghostRecordToPad (0, pad, 5);
        engine->sampler.waitUntilIdle();
        engine->deliverMessages();
    }

    float read (int number) { return engine->getParameter (number); }

    void write (int number, double value)
    {
        engine->setParameter (number, static_cast<float> (value));
        engine->deliverMessages();
    }

    /** The readings of a row's commands. */
    std::vector<float> readings (const CommandRow& row)
    {
        std::vector<float> all;
        for (const int number : CommandTable::numbers())
            if (CommandTable::find (number).row == &row)
                all.push_back (read (number));
        return all;
    }
};

bool isSyncOfMaster (CPlatterdex& engine, int number)
{
    const auto master = engine.settings.masterDeck.get();
    return number == CommandTable::numberOf ("SYNC_", master)
           || number == CommandTable::numberOf ("SYNC_LOCK_", master);
}
}

TEST (CommandTable, RowsAreCompleteAndDistinct)
{
    std::set<std::string> names, constants;
    for (const int number : CommandTable::numbers())
    {
        const auto row = CommandTable::find (number);
        const auto name = CommandTable::name (number), constant = CommandTable::constant (number);
        EXPECT_TRUE (!name.empty() && names.insert (name).second) << number;
        EXPECT_TRUE (!constant.empty() && constants.insert (constant).second) << number;
        EXPECT_EQ ((name + constant).find_first_of ("{}"), std::string::npos) << name;
        EXPECT_FALSE (row->reads.empty()) << name;
        EXPECT_EQ (row->writes.empty(), row->kind == CommandKind::meter) << name;
        EXPECT_TRUE (row->range.lowest <= row->rest && row->rest <= row->range.highest) << name;
        EXPECT_TRUE (CommandTable::isUnbuilt (number) || (row->read == nullptr) == (row->reads == "0"))
            << name;
    }
}

TEST (CommandTable, ValuesAnswerWhatWasWrittenAndMoveNoOther)
{
    FourDecks desk;
    for (const int number : CommandTable::numbers())
    {
        const auto command = CommandTable::find (number);
        if (CommandTable::isUnbuilt (number) || command->kind != CommandKind::value
            || command->feedback == CommandFeedback::none)
            continue;
        const auto name = CommandTable::name (number);
        const auto [lowest, highest, step] = command->range;
        auto expected = desk.readings (*command.row);
        const auto write = [&] (double value, double answer)
        {
            desk.write (number, value);
            EXPECT_NEAR (desk.engine->controlValue (number), answer, 1.0e-4) << name;
        };
        for (const auto value : { highest, 0.3 * highest, lowest, command->rest })
            write (value, value);
        write (highest + 1.0e6, highest);
        write (lowest - 1.0e6, lowest);
        write (command->rest, command->rest);
        const auto own = static_cast<size_t> (command.deck * command->numbers.count + command.which);
        expected[own] = desk.read (number);
        EXPECT_EQ (desk.readings (*command.row), expected) << name;
    }
}

TEST (CommandTable, StepsReachBothEndsAndTheirRest)
{
    FourDecks desk;
    for (const int number : CommandTable::numbers())
    {
        const auto row = CommandTable::find (number);
        if (CommandTable::isUnbuilt (number) || row->kind != CommandKind::relative)
            continue;
        const auto name = CommandTable::name (number);
        const auto [lowest, highest, step] = row->range;
        if (step <= 0.0) // moves a selection, which has no value
            continue;
        for (const auto& [value, end] : { std::pair { 127.0, highest }, { 63.0, lowest } })
        {
            for (double at = lowest; at <= highest; at += step)
                desk.write (number, value);
            EXPECT_EQ (desk.read (number), end) << name;
        }
        for (double at = lowest; at < row->rest; at += step)
            desk.write (number, 64.0);
        EXPECT_EQ (desk.read (number), row->rest) << name;
    }
}

TEST (CommandTable, ButtonsAnswerAPressAndTriggersNothingElse)
{
    FourDecks desk;
    for (const int number : CommandTable::numbers())
    {
        const auto row = CommandTable::find (number);
        const auto isTrigger = row->kind == CommandKind::trigger;
        if (CommandTable::isUnbuilt (number) || !(isTrigger || row->kind == CommandKind::state))
            continue;
        const auto name = CommandTable::name (number);
        const auto before = desk.read (number);
        if (isTrigger)
            for (const auto none : { 0.0, -1.0, std::numeric_limits<double>::quiet_NaN() })
                desk.write (number, none);
        EXPECT_TRUE (!isTrigger || desk.read (number) == before) << name;
        // A press that only undoes what an earlier button did, such as the end of a loop, is answered by the next.
        // A loop is taken from a deck faster than a lamp can show.
        bool answers = row->feedback != CommandFeedback::lamp || isSyncOfMaster (*desk.engine, number)
                       || name == "Sampler Record Loop";
        for (int press = 0; press < 2; ++press)
        {
            desk.write (number, 0.01);
            const auto pressed = desk.read (number);
            EXPECT_TRUE (row->feedback != CommandFeedback::lamp || pressed == 0.0f || pressed == 1.0f)
                << name;
            answers = answers || pressed == 1.0f || pressed != before;
            if (!isTrigger)
                desk.write (number, 0.0);
        }
        EXPECT_TRUE (answers) << name;
    }
}

TEST (Commands, DecksTakeTheirValuesInTheirOwnUnits)
{
    EngineFixture fixture;
    fixture.loadNoise (0);
    fixture.set ("PITCH_A", 0.25f);
    EXPECT_EQ (fixture.get ("PITCH_A"), 0.75f) << "the fader is written from high to low";
    fixture.set ("PITCH_RESET_A");
    EXPECT_EQ (fixture.get ("PITCH_A"), 0.5f);

    fixture.set ("KEY_TUNING_A", 1.0f);
    EXPECT_EQ (fixture.get ("KEY_RESET_A"), 12.0f) << "semitones";
    fixture.set ("KEY_RESET_A");
    EXPECT_EQ (fixture.get ("KEY_TUNING_A"), 0.5f);

    fixture.set ("PITCH_BEND_NUDGE_MINUS_A", 1.0f);
    fixture.set ("PITCH_BEND_NUDGE_PLUS_A", 1.0f);
    EXPECT_EQ (fixture.get ("PITCH_BEND_NUDGE_MINUS_A"), 0.0f);
    fixture.set ("PITCH_BEND_NUDGE_PLUS_A", 0.0f);
    EXPECT_EQ (fixture.get ("PITCH_BEND_NUDGE_PLUS_A"), 0.0f);

    fixture.set ("SEEK_A", 0.5f);
    fixture.set ("HOT_CUE_3_A");
    EXPECT_EQ (fixture.get ("DELETE_HOT_CUE_3_A"), 0.0f);
    EXPECT_EQ (fixture.get ("CUE_A"), 1.0f);
    fixture.set ("REWIND_A");
    EXPECT_EQ (fixture.get ("SEEK_A"), 0.0f);
    EXPECT_EQ (fixture.get ("CUE_A"), 0.0f);
    fixture.set ("HOT_CUE_3_A");
    EXPECT_NEAR (fixture.get ("SEEK_A"), 0.5f, 1e-4f);
    fixture.set ("DELETE_HOT_CUE_3_A");
    EXPECT_EQ (fixture.get ("HOT_CUE_3_A"), 0.0f);

    fixture.set ("JOG_SCRATCH_ON_A");
    fixture.engine->dispatch (CommandTable::numberOf ("JOG_A"), 5.0f, -0.01f, 0.5f);
    EXPECT_EQ (fixture.deck().head.jog, 2.5);

    fixture.set ("SNAP");
    for (const auto& setup : fixture.engine->settings.deckSetup)
        EXPECT_TRUE (setup.snap != 0 && setup.quantise != 0);
}

TEST (Commands, EffectsAreToldInTheirOwnWords)
{
    EngineFixture fixture;
    const auto text = [&] (const char* constant)
    { return fixture.engine->displayText (CommandTable::numberOf (constant)); };
    EXPECT_EQ (text ("EFFECT_SELECT_1_GROUP_D"), "Flanger");
    EXPECT_EQ (text ("EFFECT_SELECT_2_GROUP_D"), "Phaser");
    EXPECT_EQ (text ("EFFECT_SELECT_3_GROUP_D"), "Delay");
    EXPECT_EQ (text ("EFFECT_PARAM_3_GROUP_D"), "1/8");
    EXPECT_EQ (text ("FX_DRY_WET_GROUP_D"), "50%");
    fixture.set ("EFFECT_SELECT_3_GROUP_D", 0.95f);
    EXPECT_EQ (text ("EFFECT_SELECT_3_GROUP_D"), "Reverb");
    fixture.set ("EFFECT_PARAM_3_GROUP_D", 0.25f);
    EXPECT_EQ (text ("EFFECT_PARAM_3_GROUP_D"), "25%");
    EXPECT_EQ (text ("EFFECT_SELECT_3_GROUP_A"), "Delay") << "another deck's";
}

TEST (Commands, LoopsAreSwitchedSizedAndRead)
{
    EngineFixture fixture;
    fixture.loadNoise (1, 10);
    const auto expect = [&] (float loop, float leap, float size, float moveSize)
    {
        EXPECT_EQ (fixture.get ("LOOP_B"), loop);
        EXPECT_EQ (fixture.get ("LEAP_B"), leap);
        EXPECT_EQ (fixture.get ("LOOP_SIZE_B"), size);
        EXPECT_EQ (fixture.get ("LOOP_MOVE_SIZE_B"), moveSize);
    };
    expect (0, 0, 7, 5);
    fixture.set ("LOOP_B");
    fixture.set ("LOOP_HALF_B");
    fixture.set ("LOOP_MOVE_SIZE_B", 64.0f);
    expect (1, 0, 6, 6);
    fixture.set ("LOOP_B");
    fixture.set ("LEAP_B");
    fixture.set ("LOOP_DOUBLE_B");
    fixture.set ("LOOP_SIZE_B", 127.0f);
    expect (0, 1, 8, 6);
    fixture.set ("LOOP_SIZE_B", 1.0f); // from a host any step is one down
    fixture.set ("LOOP_MOVE_SIZE_B", 0.0f);
    fixture.set ("LEAP_B", 0.0f);
    expect (0, 1, 7, 5);
    fixture.set ("LEAP_B");
    fixture.set ("LOOP_MOVE_FORWARD_B"); // by a beat
    fixture.set ("LOOP_IN_B");
    fixture.set ("LOOP_MOVE_FORWARD_B");
    fixture.set ("LOOP_OUT_B");
    const auto& loops = fixture.deck (1).loops;
    EXPECT_EQ (loops.mode, manualLoop);
    EXPECT_NEAR (loops.out - loops.in, fixture.deck (1).beatFrames(), 1.0e-6);
    fixture.set ("LOOP_MOVE_BACKWARD_B");
    EXPECT_EQ (loops.in, 0.0);
    fixture.set ("RELOOP_B");
    EXPECT_EQ (fixture.deck (1).head.position, 0.0);
}

TEST (Commands, SetMasterCountsStandaloneOnly)
{
    EngineFixture fixture;
    fixture.set ("MASTER_C");
    EXPECT_EQ (fixture.get ("MASTER_C"), 1.0f);
    EXPECT_EQ (fixture.get ("MASTER_A"), 0.0f);
    fixture.makeEngine (false);
    fixture.set ("MASTER_C");
    EXPECT_EQ (fixture.get ("MASTER_C"), 0.0f);
    for (const auto& [number, value] : { std::pair { 3180, 1.0f }, { 3181, 3180.0f } })
        fixture.engine->setParameter (number, value);
    EXPECT_EQ (fixture.engine->decks.isStandalone, 0);
    fixture.engine->setParameter (3180, 3180.0f);
    EXPECT_EQ (fixture.get ("MASTER_C"), 1.0f);
}

TEST (Commands, EveryNumberTakesEveryValueOnEmptyAndLoadedDecks)
{
    EngineFixture fixture;
    fixture.engine->settings.recordFile.set (fixture.folder.file ("r.wav").getFullPathName());
    for (int round = 0; round < 2; ++round)
    {
        for (int number = -2; number < 1010; ++number)
            for (const float value :
                 { 0.0f, 1.0f, 64.0f, -1.0f, 1e30f, std::numeric_limits<float>::infinity() })
            {
                fixture.engine->dispatch (number, value, 1.0f, 1.0f);
                ASSERT_TRUE (std::isfinite (fixture.engine->getParameter (number))) << number;
            }
        const auto out = fixture.render (4096);
        for (int c = 0; c < out.getNumChannels(); ++c)
            for (const auto sample : EngineFixture::channel (out, c))
                ASSERT_TRUE (std::isfinite (sample));
        if (round == 0)
            for (int d = 0; d < deckCount; ++d)
                fixture.loadNoise (d, 1);
    }
}
