#include "support/AudioThread.h"

#include <cstdio>
#include <cstdlib>

// The real-time sanitizer's run time, where a program is linked with it.
// NOLINTBEGIN(bugprone-reserved-identifier): its names
extern "C" __attribute__ ((weak)) void __rtsan_disable();
extern "C" __attribute__ ((weak)) void __rtsan_enable();
extern "C" __attribute__ ((weak)) void __rtsan_realtime_enter();
extern "C" __attribute__ ((weak)) void __rtsan_realtime_exit();
// NOLINTEND(bugprone-reserved-identifier)

namespace
{
thread_local int audioBlockDepth = 0;
}

AudioThreadScope::AudioThreadScope() noexcept
{
    ++audioBlockDepth;
    if (__rtsan_realtime_enter != nullptr)
        __rtsan_realtime_enter();
}

AudioThreadScope::~AudioThreadScope()
{
    if (__rtsan_realtime_exit != nullptr)
        __rtsan_realtime_exit();
    --audioBlockDepth;
}

bool AudioThreadScope::isActive() noexcept
{
    return audioBlockDepth > 0;
}

AllowedLockScope::AllowedLockScope() noexcept
{
    if (__rtsan_disable != nullptr)
        __rtsan_disable();
}

AllowedLockScope::~AllowedLockScope()
{
    if (__rtsan_enable != nullptr)
        __rtsan_enable();
}

void assertMayBlock() noexcept
{
#ifndef NDEBUG
    if (AudioThreadScope::isActive())
    {
        std::fputs ("A function that may block was entered on the audio thread.\n", stderr);
        std::abort();
    }
#endif
}
