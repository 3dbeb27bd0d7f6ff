#include "ui/poll/PollClock.h"

#include <algorithm>

namespace
{
constexpr int hurriedTickCount = 2;
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

void PollClock::look()
{
    for (auto* source : sources)
        source->look();
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
    tick (++turn % calmTurns == 0 || hurried);
}

void PollClock::tick (bool calm)
{
    // A poll may close the last window, and the clock with it.
    const juce::SharedResourcePointer<PollClock> untilTheEnd;
    std::erase (clients, nullptr);
    if (clients.empty())
        return stopTimer();

    if (calm)
        windows.clear();
    look();
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
