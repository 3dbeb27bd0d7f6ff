#include "ui/PollingView.h"

#include <gtest/gtest.h>

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
