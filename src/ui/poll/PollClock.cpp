#include "ui/poll/PollClock.h"

#include "ui/poll/PollingView.h"

#include <algorithm>

void PollClock::add (PollingView& view)
{
    views.push_back (&view);
    if (!isTimerRunning())
        startTimer (movingMs);
}

void PollClock::remove (PollingView& view)
{
    std::replace (views.begin(), views.end(), &view, static_cast<PollingView*> (nullptr));
}

void PollClock::timerCallback()
{
    // A poll may close the last window, and the clock with it.
    const juce::SharedResourcePointer<PollClock> untilTheEnd;
    std::erase (views, nullptr);
    if (views.empty())
        return stopTimer();

    const auto calm = ++turn % calmTurns == 0;
    if (calm)
        windows.clear();
    for (size_t i = 0, count = views.size(); i < count; ++i)
        if (views[i] != nullptr && !isMinimised (*views[i]))
            views[i]->poll (calm);
}

bool PollClock::isMinimised (const PollingView& view)
{
    const auto* peer = view.getPeer();
    if (peer == nullptr)
        return false;
    const auto known = std::find_if (windows.begin(), windows.end(),
                                     [peer] (const auto& window) { return window.peer == peer; });
    if (known != windows.end())
        return known->isMinimised;
    windows.push_back ({ peer, peer->isMinimised() });
    return windows.back().isMinimised;
}
