#include "midi/script/ScriptTurn.h"

#include "support/AudioThread.h"

void ScriptTurn::take()
{
    assertMayBlock();
    std::unique_lock guard (lock);
    waitFor (nextTicket++, guard);
}

void ScriptTurn::give()
{
    {
        const std::lock_guard guard (lock);
        ++serving;
    }
    served.notify_all();
}

void ScriptTurn::handOver()
{
    std::unique_lock guard (lock);
    if (nextTicket == serving + 1)
        return;
    const auto ticket = nextTicket++;
    ++serving;
    served.notify_all();
    waitFor (ticket, guard);
}

void ScriptTurn::waitFor (uint64_t ticket, std::unique_lock<std::mutex>& guard)
{
    if (serving != ticket)
    {
        ++waiting;
        served.wait (guard, [&] { return serving == ticket; });
        --waiting;
    }
    since = Clock::now();
}
