#include "../UiBench.h"
#include "WidgetBench.h"
#include "engine/CommandTable.h"
#include "ui/widgets/MenuButton.h"
#include "ui/widgets/PXImageButton.h"
#include "ui/widgets/PXImageLevelMeter.h"
#include "ui/widgets/PXTooltipComponent.h"
#include "ui/widgets/ResizableScrollBar.h"

#include <gtest/gtest.h>

#include <limits>

TEST (LevelMeter, LightsTheCubeRootOfTheLevel)
{
    struct Case
    {
        float level;
        int lit;
    };
    for (const auto& c : { Case { 0.0f, 0 }, Case { 1.0f, 86 }, Case { 0.125f, 43 }, Case { 0.001f, 9 },
                           Case { 0.5f, 68 }, Case { 1.01f, 86 }, Case { 1000.0f, 86 }, Case { -0.5f, 0 },
                           Case { 1.0e-30f, 0 }, Case { std::numeric_limits<float>::infinity(), 86 },
                           Case { std::numeric_limits<float>::quiet_NaN(), 0 } })
        EXPECT_EQ (PXImageLevelMeter::litLength (c.level), c.lit) << c.level;
}

TEST (LevelMeter, PaintsLitPixelsToEachBarsLengthAndRepaintsOnlyWhatChanged)
{
    using namespace juce;
    const auto level = colourStrip ({ Colours::blue, Colours::red }, 86, 16);
    const auto tall = colourStrip ({ Colours::blue, Colours::red }, 16, 86);
    PXImageHorizontalLevelMeter flat;
    PXImageVerticalLevelMeter upright;
    flat.setImages (SkinPicture (level, 2));
    upright.setImages (SkinPicture (tall, 2));
    flat.setBounds (0, 0, 90, 20); // the picture begins at 2, 2
    upright.setBounds (0, 0, 20, 90);
    flat.setLevels (0.125f, 1.0f);
    upright.setLevels (0.125f, 1.0f);

    const auto a = paintedAt (flat, 1.0f), b = paintedAt (upright, 1.0f);
    struct Case
    {
        int along, across;
        Colour colour;
    };
    for (const auto& c :
         { Case { 0, 0, Colours::red }, Case { 42, 6, Colours::red }, Case { 43, 0, Colours::blue },
           Case { 0, 7, Colours::blue }, Case { 0, 8, Colours::blue }, Case { 85, 9, Colours::red },
           Case { 85, 15, Colours::red }, Case { 85, 6, Colours::blue } })
    {
        EXPECT_EQ (a.getPixelAt (2 + c.along, 2 + c.across), c.colour) << c.along << " " << c.across;
        EXPECT_EQ (b.getPixelAt (2 + c.across, 2 + 85 - c.along), c.colour) << c.along << " " << c.across;
    }

    flat.setVisible (true);
    auto& repaints = RepaintCount::of (flat);
    flat.setLevels (0.1251f, 2.0f);
    EXPECT_EQ (repaints.take(), 0) << "the same pixels";
    flat.setLevels (0.5f, 1.0f);
    EXPECT_EQ (repaints.take(), 1);
    EXPECT_EQ (repaints.lastArea, Rectangle<int> (2 + 43, 2, 68 - 43, 7));
}

TEST (SkinPicture, IsSharpAtEveryScale)
{
    for (const auto scale : skin::scales)
    {
        PXImageButton button;
        button.setStrip ("play_40_b");
        button.setBounds (0, 0, 40, 32);
        button.isOver = true;
        const auto strip = skin::strip ("play_40_b", scale);
        const auto expected = strip.image.getClippedImage (strip.pixels (skin::overOff));
        const auto painted = paintedAt (button, scale);
        ASSERT_EQ (painted.getBounds(), expected.getBounds());
        for (int y = 0; y < painted.getHeight(); ++y)
            for (int x = 0; x < painted.getWidth(); ++x)
                ASSERT_EQ (painted.getPixelAt (x, y), expected.getPixelAt (x, y))
                    << "at " << x << " " << y << " scale " << scale;
    }
}

TEST (SkinPicture, HasNoSeamsWhereItIsDrawnWideAndSeenThrough)
{
    const SkinPicture button ("button_24");
    juce::Image image (juce::Image::ARGB, 200, 24, true);
    juce::Graphics g (image);
    button.drawWide (g, image.getBounds(), skin::normalOn, 0.4f);
    for (int x = 9; x < 191; ++x)
        ASSERT_EQ (image.getPixelAt (x, 12), image.getPixelAt (8, 12)) << x;
    EXPECT_NEAR (image.getPixelAt (8, 12).getFloatAlpha(), 0.4f, 0.02f);
}

TEST (CommandBinding, StepsGoEachWayAndThePitchIsTurnedRound)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    const CommandBinding size (bench.engine, CommandTable::numberOf ("LOOP_SIZE_A")),
        pitch (bench.engine, CommandTable::numberOf ("PITCH_A"));
    if (!CommandTable::isUnbuilt (size.number()))
    {
        const auto before = size.value();
        size.step (1);
        EXPECT_EQ (size.value(), before + 1.0);
        size.step (-1);
        size.step (-1);
        EXPECT_EQ (size.value(), before - 1.0);
    }
    pitch.set (0.2);
    EXPECT_NEAR (pitch.value(), 0.2, 1.0e-6);
    EXPECT_NEAR (bench.engine.getParameter (pitch.number()), 0.8f, 1.0e-6f);

    const CommandBinding unbound;
    unbound.press();
    EXPECT_EQ (unbound.value(), 0.0);
    EXPECT_FALSE (unbound.isHeld());
}

TEST (PXTooltipComponent, LiesBesideWhatIsKeptFree)
{
    using Area = juce::Rectangle<int>;
    const Area room (800, 600);
    const juce::Array<Area> waves { Area (200, 100, 400, 140), Area (200, 300, 400, 140) };
    struct Case
    {
        Area wanted, place;
    };
    const Case cases[] {
        { { 10, 10, 100, 40 }, { 10, 10, 100, 40 } },     // touches nothing
        { { 300, 110, 100, 40 }, { 300, 60, 100, 40 } },  // above it
        { { 300, 220, 100, 40 }, { 300, 240, 100, 40 } }, // below it
        { { 190, 200, 100, 70 }, { 100, 200, 100, 70 } }, // not between the two, where it has no room
        { { 550, 160, 100, 70 }, { 600, 160, 100, 70 } }, { { 0, 120, 700, 500 }, {} },
    };
    for (const auto& [wanted, place] : cases)
        EXPECT_EQ (PXTooltipComponent::placeBeside (wanted, waves, room), place) << wanted.toString();
}

TEST (PXTooltipComponent, ComesAfterARestFollowsTheMouseAndGoesWithAPress)
{
    const DarkLook dark;
    juce::Component editor;
    editor.setSize (800, 600);
    PXImageButton play, cue;
    juce::Label plain;
    play.setTooltip ("Play");
    cue.setTooltip ("Cue");
    for (auto* c : std::initializer_list<juce::Component*> { &play, &cue, &plain })
        editor.addAndMakeVisible (*c);
    bool wanted = true;
    PXTooltipComponent tip (editor, [&] { return wanted; });

    struct Step
    {
        juce::uint32 now;
        juce::Component* under;
        juce::Point<int> at;
        bool pressed, wanted;
        const char* shown;
    };
    const juce::uint32 t = 5000;
    for (const auto& s :
         { Step { t, &play, { 10, 10 }, false, true, "" },
           Step { t + 600, &play, { 12, 10 }, false, true, "" },
           Step { t + 700, &play, { 12, 10 }, false, true, "Play" },
           Step { t + 740, &cue, { 60, 10 }, false, true, "Cue" },
           Step { t + 780, &plain, { 90, 10 }, false, true, "" },
           Step { t + 800, &play, { 10, 10 }, false, true, "" },
           Step { t + 1400, &play, { 60, 10 }, false, true, "" }, // moved on: the rest begins again
           Step { t + 2000, &play, { 60, 10 }, false, true, "" },
           Step { t + 2100, &play, { 60, 10 }, false, true, "Play" },
           Step { t + 2140, &play, { 60, 10 }, true, true, "" },
           Step {
               t + 9000, &play, { 60, 10 }, false, true, "" }, // put away until the mouse has been elsewhere
           Step { t + 9100, &plain, { 60, 10 }, false, true, "" },
           Step { t + 9200, &play, { 60, 10 }, false, true, "" },
           Step { t + 9900, &play, { 60, 10 }, false, true, "Play" },
           Step { t + 9940, &play, { 60, 10 }, false, false, "" } })
    {
        wanted = s.wanted;
        tip.follow (s.under, s.at, s.pressed, s.now);
        EXPECT_EQ (tip.text(), s.shown) << s.now - t;
        EXPECT_EQ (tip.isVisible(), *s.shown != 0) << s.now - t;
        if (tip.isVisible())
        {
            EXPECT_TRUE (editor.getLocalBounds().contains (tip.getBounds()));
            EXPECT_FALSE (tip.getBounds().contains (s.at));
            EXPECT_LT (tip.getPosition().getDistanceFrom (s.at), 40);
        }
    }
    wanted = true;
    tip.follow (&plain, { 0, 0 }, false, 20000);
    for (const auto corner : { juce::Point<int> (799, 599), { 0, 599 }, { 799, 0 } })
    {
        tip.follow (&play, corner, false, 30000);
        tip.follow (&play, corner, false, 31000);
        EXPECT_TRUE (editor.getLocalBounds().contains (tip.getBounds()));
        EXPECT_FALSE (tip.getBounds().contains (corner));
    }
}

TEST (ResizableScrollBar, ItsEndsZoomWithinTheLimits)
{
    const DarkLook dark;
    struct Case
    {
        bool vertical;
        int from, to;
        juce::Range<double> expected;
    };
    // 400 pixels stand for 0 to 100; the thumb lies from 100 to 300.
    for (const auto vertical : { false, true })
        for (const auto& c :
             { Case { vertical, 104, 144, { 35, 75 } }, Case { vertical, 296, 256, { 25, 65 } },
               Case { vertical, 104, 4, { 0, 75 } }, Case { vertical, 104, -96, { 0, 75 } },
               Case { vertical, 296, 900, { 25, 100 } }, Case { vertical, 296, 0, { 25, 35 } },
               Case { vertical, 104, 400, { 65, 75 } } })
        {
            ResizableScrollBar bar (vertical);
            bar.setBounds (0, 0, vertical ? 12 : 400, vertical ? 400 : 12);
            bar.setRangeLimits (0.0, 100.0);
            bar.setCurrentRange (25.0, 50.0);
            bar.setSmallestRange (10.0);
            const auto place = [=] (int along)
            { return (vertical ? juce::Point<int> (6, along) : juce::Point<int> (along, 6)).toFloat(); };
            drag (bar, place (c.from), place (c.to));
            EXPECT_NEAR (bar.getCurrentRange().getStart(), c.expected.getStart(), 1.0e-9) << c.from << c.to;
            EXPECT_NEAR (bar.getCurrentRange().getEnd(), c.expected.getEnd(), 1.0e-9) << c.from << c.to;
            bar.mouseDoubleClick (mouse (bar, place (200), place (200)));
            EXPECT_EQ (bar.getCurrentRange(), bar.getRangeLimit());
        }
}

TEST (SMLookAndFeel, AGhostBoxShowsOnlyItsArrow)
{
    const DarkLook dark;
    juce::ComboBox box (SMLookAndFeel::ghostName);
    box.addItem ("1/4", 1);
    box.setSelectedId (1, juce::dontSendNotification);
    box.setBounds (0, 0, 80, 24);
    const auto image = paintedAt (box, 1.0f);
    int left = 0, right = 0;
    for (int y = 0; y < 24; ++y)
        for (int x = 0; x < 80; ++x)
            if (image.getPixelAt (x, y).getAlpha() > 0)
                ++(x < 60 ? left : right);
    EXPECT_EQ (left, 0);
    EXPECT_GT (right, 8);

    box.setName ("_otherBox");
    EXPECT_EQ (paintedAt (box, 1.0f).getPixelAt (30, 12).getAlpha(), 255);
}
