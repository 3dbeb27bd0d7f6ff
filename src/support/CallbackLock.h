#pragma once

#include <juce_core/juce_core.h>

#include <cstdint>

/** Holds the processor's callback lock, the one lock of deck and mixer state, for a handful of field writes.

    The host holds the same lock around an audio block, so what is written under it falls between two blocks, and the
    time it is held is time that a block may have to wait: no string, file, allocation or listener call under it.
    The lock is recursive. */
class CallbackLock
{
public:
    /** @param reason   names the work in CallbackLock::longest(); a string literal */
    CallbackLock (const juce::CriticalSection&, const char* reason) noexcept;
    ~CallbackLock();
    CallbackLock (const CallbackLock&) = delete;
    CallbackLock& operator= (const CallbackLock&) = delete;

    struct Holding
    {
        int64_t nanoseconds = 0;
        const char* reason = "";
    };

    /** The longest holding since the last resetLongest(), over all engines of the process. Any thread. */
    static Holding longest() noexcept;
    static void resetLongest() noexcept;

private:
    const juce::CriticalSection& lock;
    const char* const reason;
    int64_t enteredAt;
};
