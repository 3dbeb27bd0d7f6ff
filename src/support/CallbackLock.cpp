#include "support/CallbackLock.h"

#include "support/Relaxed.h"

#include <chrono>

namespace
{
Relaxed<int64_t> longestNanoseconds { 0 };
Relaxed<const char*> longestReason { "" };

int64_t now() noexcept
{
    return std::chrono::steady_clock::now().time_since_epoch().count();
}
}

CallbackLock::CallbackLock (const juce::CriticalSection& toHold, const char* why) noexcept
    : lock (toHold),
      reason (why)
{
    lock.enter();
    enteredAt = now();
}

CallbackLock::~CallbackLock()
{
    const auto held = now() - enteredAt;
    if (held > longestNanoseconds)
    {
        longestNanoseconds = held;
        longestReason = reason;
    }
    lock.exit();
}

CallbackLock::Holding CallbackLock::longest() noexcept
{
    return { longestNanoseconds, longestReason };
}

void CallbackLock::resetLongest() noexcept
{
    longestNanoseconds = 0;
    longestReason = "";
}
