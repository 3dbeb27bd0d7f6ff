#include "ui/PollingView.h"

#include <algorithm>

PollingView::PollingView (Pace p) : pace (p) {}

PollingView::~PollingView()
{
    leaveParents();
}

void PollingView::refresh()
{
    pollMoving();
    pollCalm();
}

void PollingView::parentHierarchyChanged()
{
    leaveParents();
    for (auto* parent = getParentComponent(); parent != nullptr; parent = parent->getParentComponent())
    {
        parent->addComponentListener (this);
        watchedParents.push_back (parent);
    }
    followVisibility();
}

void PollingView::leaveParents()
{
    for (auto* parent : watchedParents)
        parent->removeComponentListener (this);
    watchedParents.clear();
}

void PollingView::componentBeingDeleted (juce::Component& parent)
{
    std::erase (watchedParents, &parent);
}

void PollingView::followVisibility()
{
    const auto visible = isVisible()
                         && std::all_of (watchedParents.begin(), watchedParents.end(),
                                         [] (const auto* parent) { return parent->isVisible(); });
    if (visible == isTimerRunning())
        return;
    if (!visible)
        return stopTimer();
    turn = 0;
    startTimer (pace == Pace::moving ? movingMs : calmMs);
    refresh();
}

void PollingView::timerCallback()
{
    if (const auto* peer = getPeer(); peer != nullptr && peer->isMinimised())
        return;
    if (pace == Pace::moving)
        pollMoving();
    if (pace == Pace::calm || ++turn % (calmMs / movingMs) == 0)
        pollCalm();
}
