#include "support/AudioThread.h"

#include <cstdio>
#include <cstdlib>

namespace
{
thread_local int audioBlockDepth = 0;
}

AudioThreadScope::AudioThreadScope() noexcept
{
    ++audioBlockDepth;
}

AudioThreadScope::~AudioThreadScope()
{
    --audioBlockDepth;
}

bool AudioThreadScope::isActive() noexcept
{
    return audioBlockDepth > 0;
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
