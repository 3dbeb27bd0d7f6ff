#include "ui/poll/PollingView.h"

#include <algorithm>

PollingView::PollingView (Pace p) : pace (p) {}

PollingView::~PollingView()
{
    leaveParents();
    if (polling)
        clock->remove (*this);
}

void PollingView::refresh()
{
    clock->look();
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
    if (visible == polling)
        return;
    polling = visible;
    if (!visible)
        return clock->remove (*this);
    clock->add (*this);
    refresh();
}

void PollingView::poll (bool calmToo)
{
    if (pace == Pace::moving)
        pollMoving();
    if (calmToo)
        pollCalm();
}
