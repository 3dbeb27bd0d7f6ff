#include "ui/poll/PollClock.h"

#include <algorithm>

namespace
{
constexpr int hurriedTickCount = 2;
constexpr int restingTurns = 2;          ///< views are asked at every such tick while no deck changes
constexpr int atOnceMs = 1, soonMs = 20; ///< a block of audio may lie between a hand and what it changes
}

void PollClock::add (Client& client)
{
    clients.push_back (&client);
    if (!isTimerRunning())
        startTimer (movingMs);
}

void PollClock::remove (Client& client)
{
    std::replace (clients.begin(), clients.end(), &client, static_cast<Client*> (nullptr));
}

void PollClock::add (Source& source)
{
    sources.push_back (&source);
    source.look();
}

void PollClock::remove (Source& source)
{
    std::erase (sources, &source);
}

bool PollClock::look()
{
    auto changed = false;
    for (auto* source : sources)
        changed |= source->look();
    return changed;
}

void PollClock::hurry()
{
    if (!isTimerRunning())
        return;
    hurriedTicks = hurriedTickCount;
    startTimer (atOnceMs);
}

void PollClock::timerCallback()
{
    const auto hurried = hurriedTicks > 0;
    if (hurried)
        startTimer (--hurriedTicks > 0 ? soonMs : movingMs);
    const auto changed = look(), calm = ++turn % calmTurns == 0 || hurried;
    if (changed || calm || turn % restingTurns == 0)
        ask (calm);
}

void PollClock::tick (bool calm)
{
    look();
    ask (calm);
}

void PollClock::ask (bool calm)
{
    // A poll may close the last window, and the clock with it.
    const juce::SharedResourcePointer<PollClock> untilTheEnd;
    std::erase (clients, nullptr);
    if (clients.empty())
        return stopTimer();

    if (calm)
        windows.clear();
    for (size_t i = 0, count = clients.size(); i < count; ++i)
        if (clients[i] != nullptr && !isMinimised (*clients[i]))
            clients[i]->poll (calm);
}

bool PollClock::isMinimised (const Client& client)
{
    const auto* peer = client.window();
    if (peer == nullptr)
        return false;
    const auto known = std::find_if (windows.begin(), windows.end(),
                                     [peer] (const auto& window) { return window.peer == peer; });
    if (known != windows.end())
        return known->isMinimised;
    windows.push_back ({ peer, peer->isMinimised() });
    return windows.back().isMinimised;
}
