#include "../UiBench.h"
#include "WidgetBench.h"
#include "engine/CommandTable.h"
#include "skin/Palette.h"
#include "ui/widgets/PXImageButton.h"
#include "ui/widgets/PXTextButton.h"

#include <gtest/gtest.h>

namespace
{
const juce::ModifierKeys left (juce::ModifierKeys::leftButtonModifier),
    right (juce::ModifierKeys::rightButtonModifier);

/** Told apart by their red. */
std::vector<juce::Colour> six()
{
    std::vector<juce::Colour> colours;
    for (int i = 0; i < 6; ++i)
        colours.push_back (juce::Colour::fromRGB (static_cast<juce::uint8> (20 + 40 * i), 100, 100));
    return colours;
}

int command (const char* constant)
{
    return CommandTable::numberOf (constant);
}

class Listener : public PXImageButtonListener
{
public:
    void clicked (PXImageButton&) override { ++clicks; }
    void rightClicked (PXImageButton&) override { ++rightClicks; }

    int clicks = 0, rightClicks = 0;
};

template <typename Button>
class CommandButtons : public testing::Test
{
};

using BothButtons = testing::Types<PXImageButton, PXTextButton>;
TYPED_TEST_SUITE (CommandButtons, BothButtons);
}

TEST (PXImageButton, EachStateShowsItsPicture)
{
    const auto colours = six();
    PXImageButton button;
    button.setImages (colourStrip ({ colours[0] }, 30, 30), colourStrip ({ colours[1] }, 30, 30),
                      colourStrip ({ colours[2] }, 30, 30), colourStrip ({ colours[3] }, 30, 30),
                      colourStrip ({ colours[4] }, 30, 30), colourStrip ({ colours[5] }, 30, 30));
    button.setBounds (0, 0, 40, 40);

    PXImageButton ofStrip;
    ofStrip.setStrip (SkinPicture (colourStrip (colours, 30, 30), 6));
    ofStrip.setBounds (0, 0, 40, 40);

    const auto window = std::make_unique<juce::DocumentWindow> ("w", juce::Colours::black, 0, false);
    ASSERT_FALSE (window->isActiveWindow());

    for (auto* b : { &button, &ofStrip })
        for (const auto on : { false, true })
        {
            const auto first = on ? 3u : 0u;
            b->setToggleState (on);
            b->isOver = false;
            EXPECT_EQ (centreOf (*b), colours[first]);
            b->mouseEnter (mouse (*b, { 20, 20 }, { 20, 20 }));
            EXPECT_EQ (centreOf (*b), colours[first + 1]);
            b->mouseDown (mouse (*b, { 20, 20 }, { 20, 20 }));
            EXPECT_EQ (centreOf (*b), colours[first + 2]);
            window->Component::addChildComponent (b);
            EXPECT_EQ (centreOf (*b), colours[first]) << "in a window that isn't active";
            window->Component::removeChildComponent (b);
            b->mouseUp (mouse (*b, { 20, 20 }, { 20, 20 }));

            b->setEnabled (false);
            EXPECT_EQ (b->shownPicture(), static_cast<int> (first)) << "disabled under the mouse";
            EXPECT_NEAR (centreOf (*b).getFloatAlpha(), palette::disabledSign, 0.02f);
            b->setEnabled (true);
        }
}

TEST (PXImageButton, ClearPixelsAreNotPartOfItAndSmallOnesAreLargerThanTheyLook)
{
    juce::Image half (juce::Image::ARGB, 30, 30, true);
    half.clear ({ 0, 0, 15, 30 }, juce::Colours::red);
    PXImageButton large, small;
    large.setStrip (half);
    large.setBounds (0, 0, 50, 50);
    small.setStrip (half.rescaled (12, 12));
    small.setBounds (0, 0, 50, 50);

    struct Case
    {
        int x, y;
        bool hitsLarge, hitsSmall;
    };
    // The large one's picture begins at 10; the small one's at 19, its area for the hand at 14.
    for (const auto& c :
         { Case { 9, 25, false, false }, Case { 10, 25, true, false }, Case { 14, 25, true, true },
           Case { 24, 39, true, false }, Case { 25, 25, false, true }, Case { 35, 35, false, true },
           Case { 36, 25, false, false }, Case { 24, 9, false, false }, Case { 24, 14, true, true } })
    {
        EXPECT_EQ (large.hitTest (c.x, c.y), c.hitsLarge) << c.x << " " << c.y;
        EXPECT_EQ (small.hitTest (c.x, c.y), c.hitsSmall) << c.x << " " << c.y;
    }
    EXPECT_EQ (CommandWidget::hitArea ({ 10, 10, 12, 40 }), juce::Rectangle<int> (5, 10, 22, 40));
}

TEST (PXImageButton, AClickEndsInsideAndTheRightButtonIsAnother)
{
    PXImageButton button;
    button.setStrip (colourStrip (six(), 30, 30));
    button.setBounds (0, 0, 30, 30);
    Listener listener;
    button.addListener (&listener);
    std::vector<bool> presses;
    button.onPress = [&] (bool down) { presses.push_back (down); };

    drag (button, { 5, 5 }, { 10, 10 });
    drag (button, { 5, 5 }, { 50, 10 });
    EXPECT_EQ (listener.clicks, 1);
    EXPECT_EQ (presses, (std::vector { true, false, true, false }));
    drag (button, { 5, 5 }, { 5, 5 }, right);
    EXPECT_EQ (listener.clicks, 1);
    EXPECT_EQ (listener.rightClicks, 1);
    button.setEnabled (false);
    drag (button, { 5, 5 }, { 5, 5 });
    drag (button, { 5, 5 }, { 5, 5 }, right);
    EXPECT_EQ (listener.clicks + listener.rightClicks, 2);
    EXPECT_EQ (presses.size(), 4u);
}

TEST (PXImageButton, APollRepaintsOnlyForAnotherPicture)
{
    PXImageButton button;
    button.setStrip (SkinPicture (colourStrip (six(), 30, 30), 6));
    button.setBounds (0, 0, 30, 30);
    button.setVisible (true);
    paintedAt (button, 1.0f);
    auto& repaints = RepaintCount::of (button);

    for (int i = 0; i < 3; ++i)
        button.poll();
    EXPECT_EQ (repaints.take(), 0);
    button.isOn = true; // as an owner's poll does
    button.poll();
    EXPECT_EQ (repaints.take(), 1);
    button.setToggleState (true);
    EXPECT_EQ (repaints.take(), 0);
    button.setToggleState (false);
    EXPECT_EQ (repaints.take(), 1);
}

TYPED_TEST (CommandButtons, TriggersActAsTheMouseGoesDownAndTheirStateIsFollowed)
{
    const DarkLook dark;
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    TypeParam play;
    if constexpr (std::is_same_v<TypeParam, PXImageButton>)
        play.setStrip ("play_40_a");
    play.setBounds (0, 0, 40, 32);
    play.setVisible (true);
    play.bind (bench.engine, command ("PLAY_PAUSE_A"));
    EXPECT_EQ (play.getTooltip(), "Play/Pause A");
    const auto& deck = *bench.engine.decks.deck (0);

    for (const auto expected : { 1, 0, 1 })
    {
        play.mouseDown (mouse (play, { 20, 16 }, { 20, 16 }));
        EXPECT_EQ (deck.play.on, expected);
        play.mouseUp (mouse (play, { 20, 16 }, { 20, 16 }));
        EXPECT_EQ (deck.play.on, expected);
        play.poll();
        EXPECT_EQ (play.getToggleState(), expected == 1);
    }
}

TYPED_TEST (CommandButtons, HeldCommandsAreReleasedByWhateverEndsThePress)
{
    const DarkLook dark;
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 1);
    const auto& deck = *bench.engine.decks.deck (1);
    auto nudge = std::make_unique<TypeParam>();
    if constexpr (std::is_same_v<TypeParam, PXImageButton>)
        nudge->setStrip ("left_20");
    nudge->setBounds (0, 0, 24, 24);
    nudge->setVisible (true);
    nudge->bind (bench.engine, command ("PITCH_BEND_NUDGE_PLUS_B"));
    const auto press = [&] { nudge->mouseDown (mouse (*nudge, { 12, 12 }, { 12, 12 })); };

    press();
    EXPECT_EQ (deck.play.nudge, 1);
    nudge->mouseDrag (mouse (*nudge, { 90, 12 }, { 12, 12 }));
    EXPECT_EQ (deck.play.nudge, 1) << "a hand that slips off still holds";
    nudge->mouseUp (mouse (*nudge, { 90, 12 }, { 12, 12 }));
    EXPECT_EQ (deck.play.nudge, 0);

    press();
    nudge->setEnabled (false);
    EXPECT_EQ (deck.play.nudge, 0) << "disabled while held";
    nudge->setEnabled (true);

    press();
    EXPECT_EQ (deck.play.nudge, 1);
    nudge.reset();
    EXPECT_EQ (deck.play.nudge, 0) << "gone while held";
}

TYPED_TEST (CommandButtons, TheRightButtonHasACommandOfItsOwn)
{
    const DarkLook dark;
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 2);
    const auto& slot = bench.engine.decks.deck (2)->marks.cues[2];
    TypeParam hotCue;
    if constexpr (std::is_same_v<TypeParam, PXImageButton>)
        hotCue.setStrip ("left_20");
    hotCue.setBounds (0, 0, 24, 24);
    hotCue.setVisible (true);
    hotCue.bind (bench.engine, command ("HOT_CUE_3_C"));
    hotCue.setAlternative (bench.engine, command ("DELETE_HOT_CUE_3_C"));

    drag (hotCue, { 12, 12 }, { 12, 12 });
    EXPECT_GE (slot, 0.0);
    drag (hotCue, { 12, 12 }, { 12, 12 }, right);
    EXPECT_LT (slot, 0.0);
    EXPECT_FALSE (hotCue.isDown());
}
