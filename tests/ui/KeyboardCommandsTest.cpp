#include "UiBench.h"

#include "engine/CommandTable.h"

#include <gtest/gtest.h>

#include <set>

TEST (KeyboardCommands, EveryKeyHasOneBuiltCommand)
{
    std::set<std::pair<int, int>> keys;
    for (const auto& binding : keyBindings())
    {
        EXPECT_TRUE (keys.insert ({ binding.keyCode, binding.modifiers }).second) << binding.keyName;
        EXPECT_NE (binding.constant == nullptr, binding.action == KeyAction::none) << binding.keyName;
        if (binding.constant == nullptr)
            continue;
        const auto number = CommandTable::numberOf (binding.constant);
        EXPECT_GT (number, 0) << binding.constant;
        EXPECT_FALSE (CommandTable::isUnbuilt (number)) << binding.constant;
    }
}

TEST (KeyboardCommands, AKeyActsOnceHoweverLongItRepeats)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    bool down = true;
    KeyboardCommands keyboard (bench.engine, [&down] (int) { return down; });
    const juce::KeyPress space (juce::KeyPress::spaceKey);
    const auto& deck = *bench.engine.decks.deck (0);

    for (int repeat = 0; repeat < 5; ++repeat)
    {
        EXPECT_TRUE (keyboard.keyPressed (space));
        keyboard.keyStateChanged();
        EXPECT_EQ (deck.play.on, 1);
    }
    down = false;
    keyboard.keyStateChanged();
    EXPECT_EQ (deck.play.on, 1);
    down = true;
    keyboard.keyPressed (space);
    EXPECT_EQ (deck.play.on, 0);
}

TEST (KeyboardCommands, HeldCommandsEndWithTheKeyOrTheFocus)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 1);
    bool down = true;
    KeyboardCommands keyboard (bench.engine, [&down] (int) { return down; });
    const auto& deck = *bench.engine.decks.deck (1);

    EXPECT_TRUE (keyboard.keyPressed (juce::KeyPress ('p'))) << "the case of a letter is nothing to a key";
    EXPECT_EQ (deck.play.nudge, 1);
    keyboard.keyStateChanged();
    EXPECT_EQ (deck.play.nudge, 1);
    down = false;
    keyboard.keyStateChanged();
    EXPECT_EQ (deck.play.nudge, 0);

    down = true;
    keyboard.keyPressed (juce::KeyPress ('P'));
    keyboard.releaseAll();
    EXPECT_EQ (deck.play.nudge, 0);
}

TEST (KeyboardCommands, StepsTheCrossfaderAndAsksForWhatIsNoCommand)
{
    UiBench bench;
    KeyboardCommands keyboard (bench.engine, [] (int) { return true; });
    for (int repeat = 0; repeat < 30; ++repeat)
        keyboard.keyPressed (juce::KeyPress (','));
    EXPECT_EQ (bench.engine.settings.crossfader, 0.0) << "a step for each repeat, and not beyond the end";

    const auto before = bench.engine.settings.editor[EditorPreference::spectralWaveform] != 0;
    bench.editor->keyPressed (juce::KeyPress ('c', juce::ModifierKeys::ctrlModifier, 0));
    EXPECT_NE (bench.engine.settings.editor[EditorPreference::spectralWaveform] != 0, before);
}

TEST (KeyboardCommands, LeavesOtherKeysToOthers)
{
    UiBench bench;
    KeyboardCommands keyboard (bench.engine, [] (int) { return true; });
    EXPECT_FALSE (keyboard.keyPressed (juce::KeyPress ('q', juce::ModifierKeys::ctrlModifier, 0)));
    EXPECT_FALSE (keyboard.keyPressed (juce::KeyPress (juce::KeyPress::escapeKey)));
}
