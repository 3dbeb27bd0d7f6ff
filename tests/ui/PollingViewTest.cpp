#include "UiBench.h"
#include "ui/widgets/PXImageButton.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace
{
struct View : PollingView
{
    View() : PollingView (Pace::moving) { setVisible (true); }
    void pollMoving() override { ++polls; }
    int polls = 0;
};
}

TEST (PollingView, RestsWhileItOrAnyParentIsHidden)
{
    juce::Component window, panel;
    View view;
    window.addAndMakeVisible (panel);
    panel.addAndMakeVisible (view);
    window.setVisible (true);
    EXPECT_TRUE (view.isPolling());

    for (auto* hidden : std::initializer_list<juce::Component*> { &view, &panel, &window })
    {
        hidden->setVisible (false);
        EXPECT_FALSE (view.isPolling());
        const auto before = view.polls;
        hidden->setVisible (true);
        EXPECT_TRUE (view.isPolling());
        EXPECT_GT (view.polls, before) << "what comes back must not show what was";
    }
}

TEST (PollingView, ForgetsParentsThatItHasLeft)
{
    View view;
    {
        juce::Component first;
        first.addAndMakeVisible (view);
        EXPECT_FALSE (view.isPolling());
        first.setVisible (true);
        EXPECT_TRUE (view.isPolling());
        juce::Component second;
        second.addAndMakeVisible (view);
        first.setVisible (false);
        EXPECT_FALSE (view.isPolling()) << "the second is not visible";
        second.setVisible (true);
        EXPECT_TRUE (view.isPolling());
        second.removeChildComponent (&view);
    }
    EXPECT_TRUE (view.isPolling());
}

TEST (PollingView, ViewsMayComeAndGoInAPoll)
{
    struct Replacing : View
    {
        void pollMoving() override
        {
            View::pollMoving();
            if (onPoll)
                std::exchange (onPoll, {})();
        }
        std::function<void()> onPoll;
    };

    juce::Component window;
    window.setVisible (true);
    Replacing first;
    auto second = std::make_unique<View>();
    View third;
    window.addAndMakeVisible (first);
    window.addAndMakeVisible (*second);
    first.onPoll = [&]
    {
        second.reset();
        window.addAndMakeVisible (third);
        window.removeChildComponent (&first);
        first.setVisible (false);
    };
    for (int turn = 0; turn < 1000 && third.polls < 3; ++turn)
        juce::MessageManager::getInstance()->runDispatchLoopUntil (PollingView::movingMs / 4);
    EXPECT_EQ (second, nullptr);
    EXPECT_GE (third.polls, 3) << "once when it came, and twice by the clock";
    EXPECT_FALSE (first.isPolling());
}

TEST (PollingView, LampsFollowAHandAtTheNextTick)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& play = bench.find<PXImageButton> (bench.editor->deck (0), "_playButton");
    const juce::SharedResourcePointer<PollClock> clock;
    bench.editor->keyPressed (juce::KeyPress (juce::KeyPress::spaceKey));
    clock->tick (false);
    EXPECT_TRUE (play.isOn);
}
