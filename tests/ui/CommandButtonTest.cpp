#include "UiBench.h"

#include <gtest/gtest.h>

namespace
{
const juce::ModifierKeys right (juce::ModifierKeys::rightButtonModifier);

void press (juce::Component& c, juce::ModifierKeys with = juce::ModifierKeys::leftButtonModifier)
{
    c.mouseDown (mouseAt (c, c.getLocalBounds().getCentre().toFloat(), with));
}

void release (juce::Component& c, juce::ModifierKeys with = juce::ModifierKeys::leftButtonModifier)
{
    c.mouseUp (mouseAt (c, c.getLocalBounds().getCentre().toFloat(), with));
}
}

TEST (CommandButton, PlayTogglesAsItGoesDownAndIsLitWhilePlaying)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& play = bench.button (0, "Play");
    const auto& deck = *bench.engine.decks.deck (0);

    for (const auto expected : { 1, 0, 1 })
    {
        press (play);
        EXPECT_EQ (deck.playState, expected);
        release (play);
        EXPECT_EQ (deck.playState, expected);
        bench.refresh();
        EXPECT_EQ (play.getToggleState(), expected == 1);
    }
    for (int other = 1; other < deckCount; ++other)
        EXPECT_EQ (bench.engine.decks.deck (other)->playState, 0);
}

TEST (CommandButton, HeldCommandsAreReleasedByWhateverEndsThePress)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 1);
    auto& nudge = bench.button (1, "+");
    const auto& deck = *bench.engine.decks.deck (1);

    press (nudge);
    EXPECT_EQ (deck.nudge, 1);
    release (nudge);
    EXPECT_EQ (deck.nudge, 0);

    press (nudge);
    nudge.setEnabled (false);
    EXPECT_EQ (deck.nudge, 0) << "disabled while held";
    nudge.setEnabled (true);

    press (nudge);
    EXPECT_EQ (deck.nudge, 1);
    bench.editor.reset();
    EXPECT_EQ (deck.nudge, 0) << "window closed while held";
}

TEST (CommandButton, CuePlaysWhileHeldAtTheCuePoint)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& cue = bench.button (0, "Cue");
    const auto& deck = *bench.engine.decks.deck (0);
    press (cue); // stores the cue
    release (cue);
    press (cue);
    EXPECT_EQ (deck.playState, 1);
    bench.render();
    release (cue);
    EXPECT_EQ (deck.playState, 0);
}

TEST (CommandButton, RightButtonDeletesAHotCueAndPressesNothing)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 2);
    auto& hotCue = bench.button (2, "3");
    const auto& slot = bench.engine.decks.deck (2)->cues[2];

    press (hotCue);
    release (hotCue);
    EXPECT_GE (slot, 0.0);
    bench.refresh();
    EXPECT_TRUE (hotCue.getToggleState());

    press (hotCue, right);
    hotCue.mouseDrag (mouseAt (hotCue, { 5.0f, 5.0f }, right));
    release (hotCue, right);
    EXPECT_LT (slot, 0.0);
    EXPECT_FALSE (hotCue.isDown());

    auto& play = bench.button (2, "Play");
    press (play, right);
    release (play, right);
    EXPECT_EQ (bench.engine.decks.deck (2)->playState, 0);
}
