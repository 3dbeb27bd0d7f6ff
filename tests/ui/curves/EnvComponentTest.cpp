#include "../UiBench.h"
#include "ui/envelope/EnvEditor.h"

#include <gtest/gtest.h>

namespace
{
using Mods = juce::ModifierKeys;
const Mods left (Mods::leftButtonModifier), right (Mods::rightButtonModifier),
    middle (Mods::middleButtonModifier), altRight (Mods::rightButtonModifier | Mods::altModifier),
    shiftLeft (Mods::leftButtonModifier | Mods::shiftModifier);

/** An editor over two curves of straight lines with points at the times 0, 1, 2 and 4. */
struct CurveBench
{
    CurveBench()
    {
        std::vector<EnvelopePoint> points (4);
        const double deltas[] { 0.0, 1.0, 1.0, 2.0 };
        const float values[] { 1.0f, 0.5f, 0.25f, 1.0f };
        for (size_t i = 0; i < 4; ++i)
        {
            points[i].delta = deltas[i];
            points[i].value = values[i];
            points[i].tension = 0.0f;
        }
        Envelope straight;
        straight.setPoints (points);
        bank.replace (0, straight);
        curves.setLanes ({ { &bank, 0, "Time", juce::Colours::white, {} },
                           { &bank, 1, "Volume", juce::Colours::red, {} } });
        editor.setSize (412, 300);
    }

    juce::Point<float> at (int point) const
    {
        return curves.geometry().pointPlace (curves.envelope(), point);
    }
    juce::Point<float> handle (int point) const
    {
        return curves.geometry().tensionPlace (curves.envelope(), point);
    }

    void down (juce::Point<float> place, Mods mods = left)
    {
        curves.mouseDown (mouseAt (curves, place, mods));
    }
    void drag (juce::Point<float> place, Mods mods = left)
    {
        curves.mouseDrag (mouseAt (curves, place, mods));
    }
    void up (juce::Point<float> place, Mods mods = left) { curves.mouseUp (mouseAt (curves, place, mods)); }
    void gesture (juce::Point<float> from, juce::Point<float> by, Mods mods = left)
    {
        down (from, mods);
        drag (from + by * 0.5f, mods);
        drag (from + by, mods);
        up (from + by, mods);
    }
    void click (juce::Point<float> place, Mods mods) { gesture (place, {}, mods); }
    bool key (int code, int mods = 0, juce::juce_wchar text = 0)
    {
        return curves.keyPressed ({ code, mods, text });
    }
    Envelope stored() const { return bank.copy (0); }

    const juce::CriticalSection lock;
    EnvelopeBank bank { 2, lock };
    EnvEditor editor { nullptr };
    EnvComponent& curves { editor.curves() };
};
}

TEST (EnvComponent, ADragMovesAPointAndIsOneEdit)
{
    CurveBench bench;
    const auto before = bench.stored();
    const auto target = bench.curves.geometry().x (1.5) - bench.at (1).x;
    bench.gesture (bench.at (1), { target, -40.0f });
    EXPECT_NEAR (bench.stored().absoluteTime (1), 1.5, 1e-3);
    EXPECT_NEAR (bench.stored().absoluteTime (2), 2.0, 1e-9);
    EXPECT_GT (bench.stored().point (1).value, 0.5f);

    const auto after = bench.stored();
    EXPECT_TRUE (bench.key ('z', Mods::ctrlModifier));
    EXPECT_TRUE (bench.stored().isSameCurve (before));
    EXPECT_FALSE (bench.curves.canUndo());
    EXPECT_TRUE (bench.key ('z', Mods::ctrlModifier | Mods::shiftModifier));
    EXPECT_TRUE (bench.stored().isSameCurve (after));
    bench.key ('z', Mods::ctrlModifier);
    EXPECT_TRUE (bench.key ('y', Mods::ctrlModifier));
    EXPECT_TRUE (bench.stored().isSameCurve (after));
}

TEST (EnvComponent, SnapHoldsUnlessShiftIsDown)
{
    CurveBench bench;
    bench.editor.choose (EnvEditor::snapX);
    bench.editor.choose (EnvEditor::snapY);
    bench.gesture (bench.at (1), { 33.0f, -33.0f });
    EXPECT_EQ (std::fmod (bench.stored().absoluteTime (1), EnvEdit::snapTime), 0.0);
    EXPECT_EQ (std::fmod (bench.stored().point (1).value, 0.0625f), 0.0f);
    bench.gesture (bench.at (1), { 7.0f, 7.0f }, shiftLeft);
    EXPECT_NE (std::fmod (bench.stored().absoluteTime (1), EnvEdit::snapTime), 0.0);
}

TEST (EnvComponent, TheRightButtonAddsTakesAwayAndStraightens)
{
    CurveBench bench;
    const juce::Point<float> empty (bench.curves.geometry().x (3.0), 20.0f);
    bench.gesture (empty, { 20.0f, 30.0f }, right);
    ASSERT_EQ (bench.stored().pointCount(), 5);
    EXPECT_NEAR (bench.at (3).x, empty.x + 20.0f, 1.0f) << "it is dragged at once";
    EXPECT_NEAR (bench.stored().absoluteTime (4), 4.0, 1e-9);
    EXPECT_EQ (bench.stored().point (3).type, static_cast<int> (SegmentShape::smooth));

    bench.click (bench.at (3), altRight);
    EXPECT_EQ (bench.stored().pointCount(), 4);
    EXPECT_NEAR (bench.stored().absoluteTime (3), 4.0, 1e-9);
    for (const auto point : { 0, 3 })
        bench.click (bench.at (point), altRight);
    EXPECT_EQ (bench.stored().pointCount(), 4) << "the first and the pinned last one stay";

    bench.gesture (bench.handle (1), { 0.0f, -30.0f });
    EXPECT_NE (bench.stored().point (1).tension, 0.0f);
    bench.click (bench.handle (1), right);
    EXPECT_EQ (bench.stored().point (1).tension, 0.0f);
    const auto before = bench.stored();
    bench.gesture (bench.at (1), { 30.0f, 0.0f }, middle);
    EXPECT_TRUE (bench.stored().isSameCurve (before));
}

TEST (EnvComponent, AHandleBendsTheCurveTowardsTheHand)
{
    CurveBench bench;
    for (const auto& [segment, sign] : { std::pair { 1, 1.0f }, { 3, -1.0f } }) // one falls, one rises
    {
        bench.down (bench.handle (segment));
        bench.drag (bench.handle (segment).translated (0.0f, 25.0f));
        EXPECT_NEAR (bench.stored().point (segment).tension, sign * 0.25f, 0.011f) << segment;
        bench.drag (bench.handle (segment).translated (0.0f, 5000.0f));
        EXPECT_EQ (bench.stored().point (segment).tension, sign);
        bench.up ({});
    }
}

TEST (EnvComponent, WheelAndShiftZoomAndPan)
{
    CurveBench bench;
    const juce::Point<float> place (300.0f, 100.0f);
    const auto under = [&] { return bench.curves.geometry().time (place.x); };
    const auto time = under();
    bench.curves.mouseWheelMove (mouseAt (bench.curves, place, {}), { 0.0f, 0.5f, false, false, false });
    EXPECT_NEAR (bench.curves.view().time.getLength(), 2.0, 1e-9);
    EXPECT_NEAR (under(), time, 1e-5);
    const auto before = bench.stored();
    bench.gesture ({ 200.0f, 20.0f }, { 50.0f, 0.0f }, shiftLeft);
    EXPECT_LT (under(), time);
    EXPECT_TRUE (bench.stored().isSameCurve (before));
    for (int i = 0; i < 9; ++i)
        bench.curves.mouseWheelMove (mouseAt (bench.curves, place, {}), { 0.0f, -0.5f, false, false, false });
    EXPECT_EQ (bench.curves.view(), EnvView());

    bench.curves.zoomEnabled = false;
    bench.curves.mouseWheelMove (mouseAt (bench.curves, place, {}), { 0.0f, 0.5f, false, false, false });
    EXPECT_EQ (bench.curves.view(), EnvView());
}

TEST (EnvComponent, ThePointMenuOffersWhatCanBeDone)
{
    CurveBench bench;
    const auto texts = [&] (int point)
    {
        const auto menu = bench.curves.pointMenu (point);
        juce::StringArray all;
        for (juce::PopupMenu::MenuItemIterator item (menu); item.next();)
            if (!item.getItem().isSeparator)
                all.add ((item.getItem().isEnabled ? "" : "-") + item.getItem().text
                         + (item.getItem().isTicked ? "*" : ""));
        return all;
    };
    auto expected = juce::StringArray { "-Point 2 / 4", "Delete Point", "Single Curve*" };
    for (size_t i = 1; i < SegmentShapes::names.size(); ++i)
        expected.add (SegmentShapes::names[i]);
    expected.addArray ({ "Copy Value", "-Paste Value" });
    EXPECT_EQ (texts (1), expected);
    EXPECT_EQ (texts (0)[1], "-Delete Point");
    EXPECT_FALSE (texts (3).contains ("Delete Point"));

    bench.curves.pointMenuChosen (2, EnvComponent::typeItem + static_cast<int> (SegmentShape::hold));
    EXPECT_EQ (bench.stored().point (2).type, 2);
    bench.curves.pointMenuChosen (2, EnvComponent::copyItem);
    EXPECT_TRUE (texts (1).contains ("Paste Value (1.000)"));
    bench.gesture (bench.at (0), { 0.0f, 60.0f });
    EXPECT_LT (bench.stored().point (0).value, 1.0f);
    bench.curves.pointMenuChosen (2, EnvComponent::pasteItem);
    EXPECT_EQ (bench.stored().point (0).value, 1.0f);
    bench.curves.pointMenuChosen (1, EnvComponent::deleteItem);
    EXPECT_EQ (bench.stored().pointCount(), 3);
}

TEST (EnvComponent, TheKeyboardReachesEverything)
{
    CurveBench bench;
    EXPECT_TRUE (bench.key (juce::KeyPress::rightKey));
    EXPECT_EQ (bench.curves.selectedPoint(), 1);
    bench.key (juce::KeyPress::upKey);
    EXPECT_NEAR (bench.stored().point (1).value, 0.51f, 1e-6);
    bench.key (juce::KeyPress::upKey, Mods::shiftModifier);
    EXPECT_NEAR (bench.stored().point (1).value, 0.511f, 1e-6);
    bench.key (juce::KeyPress::rightKey, Mods::ctrlModifier);
    EXPECT_NEAR (bench.stored().absoluteTime (1), 1.03125, 1e-9);
    bench.key (juce::KeyPress::upKey, Mods::ctrlModifier);
    EXPECT_NEAR (bench.stored().point (1).tension, 0.05f, 1e-6);
    bench.key (juce::KeyPress::insertKey);
    EXPECT_EQ (bench.stored().pointCount(), 5);
    EXPECT_EQ (bench.curves.selectedPoint(), 2);
    bench.key (juce::KeyPress::deleteKey);
    EXPECT_EQ (bench.stored().pointCount(), 4);
    bench.key (juce::KeyPress::endKey);
    EXPECT_EQ (bench.curves.selectedPoint(), 3);
    bench.key ('+', 0, '+');
    EXPECT_NEAR (bench.curves.view().time.getLength(), 2.0, 1e-9);
    EXPECT_FALSE (bench.key ('q'));
    int edits = 0;
    for (; bench.curves.canUndo(); ++edits)
        bench.key ('z', Mods::ctrlModifier);
    EXPECT_EQ (edits, 6);
}

TEST (EnvComponent, ChangesOfOthersAreShownAndEndTheHistory)
{
    CurveBench bench;
    bench.gesture (bench.at (1), { 20.0f, 20.0f });
    bench.bank.replace (0, Envelope());
    bench.curves.refresh();
    EXPECT_TRUE (bench.curves.envelope().isSameCurve (Envelope()));
    EXPECT_FALSE (bench.curves.canUndo());

    bench.curves.recordAround ([&] { bench.bank.replace (1, Envelope (bench.curves.envelope())); });
    EXPECT_FALSE (bench.curves.canUndo()) << "nothing has changed";
    auto other = Envelope();
    other.flip();
    bench.curves.recordAround ([&] { bench.bank.replace (0, { other, other }); });
    bench.curves.undo();
    EXPECT_TRUE (bench.bank.copy (0).isSameCurve (Envelope())
                 && bench.bank.copy (1).isSameCurve (Envelope()));
}

TEST (EnvEditor, TurnsCopiesAndPastesTheCurveThatIsEdited)
{
    CurveBench bench;
    bench.editor.choose (EnvEditor::copyState);
    bench.editor.choose (EnvEditor::flipLevels);
    EXPECT_EQ (bench.stored().point (2).value, 0.75f);
    bench.editor.choose (EnvEditor::normaliseLevels);
    EXPECT_EQ (bench.stored().point (2).value, 1.0f);
    bench.curves.selectLane (1);
    bench.editor.choose (EnvEditor::pasteState);
    EXPECT_EQ (bench.bank.copy (1).point (2).value, 0.25f);
    EXPECT_EQ (bench.stored().point (2).value, 1.0f);
    bench.curves.undo();
    bench.curves.undo();
    EXPECT_EQ (bench.curves.selectedLane(), 0);
    EXPECT_EQ (bench.stored().point (2).value, 0.75f);
}
