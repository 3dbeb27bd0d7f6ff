#include "app/TerminationSignals.h"

#include <array>
#include <atomic>
#include <csignal>

namespace
{
constexpr std::array signals { SIGTERM, SIGINT, SIGHUP };
constexpr int lookMs = 100;

std::atomic<bool> wanted { false };
static_assert (std::atomic<bool>::is_always_lock_free);
}

TerminationSignals::TerminationSignals (std::function<void()> q) : quit (std::move (q))
{
    wanted = false;
    for (const auto number : signals)
        std::signal (number, [] (int) { wanted = true; });
    startTimer (lookMs);
}

TerminationSignals::~TerminationSignals()
{
    for (const auto number : signals)
        std::signal (number, SIG_DFL);
}

void TerminationSignals::timerCallback()
{
    if (!wanted)
        return;
    stopTimer();
    quit();
}
