#include "standalone/ApplicationSignals.h"

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

ApplicationSignals::ApplicationSignals (std::function<void()> q) : quit (std::move (q))
{
    wanted = false;
    for (const auto number : signals)
        std::signal (number, [] (int) { wanted = true; });
    startTimer (lookMs);
}

ApplicationSignals::~ApplicationSignals()
{
    for (const auto number : signals)
        std::signal (number, SIG_DFL);
}

void ApplicationSignals::timerCallback()
{
    if (!wanted)
        return;
    stopTimer();
    quit();
}
