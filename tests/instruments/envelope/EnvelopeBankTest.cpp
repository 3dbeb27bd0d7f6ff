#include "instruments/envelope/EnvelopeBank.h"

#include "Curves.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

TEST (EnvelopeBank, TheAudioThreadHearsEditsWholeOrNotAtAll)
{
    const juce::CriticalSection callbackLock;
    EnvelopeBank bank (3, callbackLock);
    const auto flat = [] (float level)
    {
        return Curves::of ({ Curves::point (0.0, level, SegmentShape::hold),
                             Curves::point (4.0, level, SegmentShape::hold) });
    };
    bank.replace (0, { flat (0.0f), flat (0.0f), flat (0.0f) });

    std::atomic<bool> done { false };
    std::thread audio (
        [&]
        {
            EnvelopeCursor cursor;
            while (!done)
            {
                const juce::ScopedLock block (callbackLock);
                const auto level = bank.audible (0).evaluate (1.0, cursor);
                EXPECT_EQ (bank.audible (2).evaluate (1.0), level);
            }
        });
    std::thread other (
        [&]
        {
            while (!done)
                EXPECT_EQ (bank.copy (1).pointCount(), 2);
        });
    for (int i = 1; i <= 2000; ++i)
        bank.replace (0, { flat (i / 2000.0f), flat (0.5f), flat (i / 2000.0f) });
    done = true;
    audio.join();
    other.join();
    EXPECT_EQ (bank.copy (2).evaluate (1.0), 1.0);
    EXPECT_EQ (bank.revision (1), 2001u);
}
