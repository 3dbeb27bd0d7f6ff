// The check of the audio thread must itself be able to fail.

#include "support/AudioThread.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <mutex>

extern "C"
{
    void __rtsan_ensure_initialized();
}

namespace
{
template <typename Act>
void inRealTime (Act act)
{
    __rtsan_ensure_initialized();
    const AudioThreadScope audioThread;
    act();
}
}

TEST (RealTimeCheck, CatchesWhatTheAudioThreadMustNotDo)
{
    EXPECT_DEATH (inRealTime ([] { delete new volatile int (1); }), "RealtimeSanitizer");
    EXPECT_DEATH (inRealTime (
                      []
                      {
                          std::mutex lock;
                          lock.lock();
                      }),
                  "RealtimeSanitizer");
    EXPECT_DEATH (inRealTime ([] { std::fclose (std::fopen ("/dev/null", "r")); }), "RealtimeSanitizer");
}

TEST (RealTimeCheck, LetsPassWhatIsAllowedByName)
{
    std::mutex lock;
    inRealTime (
        [&]
        {
            const AllowedLockScope allowed;
            const std::lock_guard guard (lock);
        });
}
