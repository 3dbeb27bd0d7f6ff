#include "timecode/CDTracker.h"
#include "timecode/ControlDisc.h"

#include "ControlSignal.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
constexpr double frameSeconds = controlDisc::cyclesPerFrame / controlDisc::carrierHz;

struct Tracked
{
    CDTracker tracker;
    std::vector<double> speeds, positions;
    int known = 0;
};

Tracked track (const ControlSignal& signal)
{
    Tracked result;
    result.speeds.resize (signal.size());
    result.positions.resize (signal.size());
    result.tracker.setSampleRate (signal.rate);
    result.tracker.process (signal.left.data(), signal.right.data(), result.speeds.data(),
                            result.positions.data(), static_cast<int> (signal.size()));
    for (const auto position : result.positions)
        result.known += position >= 0 ? 1 : 0;
    return result;
}

ControlSignal disc (double start, double speed, double seconds = 1)
{
    return play (*findControlMedium ("cd"), start, seconds,
                 [speed] (double) { return std::optional (speed); });
}
}

TEST (CDTracker, SpeedIsReadFromCrossingsWhetherOrNotBurstsStandThere)
{
    for (const auto speed : { 1.0, 0.5, -1.0, 0.2, 1.6 })
    {
        const auto result = track (disc (100, speed));
        EXPECT_NEAR (result.tracker.getSpeed(), speed, 0.01) << speed;
        const auto decodes = std::abs (speed) > 0.25 && std::abs (speed) < 1.5;
        EXPECT_EQ (result.known > 0, decodes) << speed;
    }
}

TEST (CDTracker, ADecodedFrameStandsAtItsEndForwardsAndASixthInBackwards)
{
    for (const auto speed : { 1.0, -1.0 })
    {
        const auto result = track (disc (100, speed));
        for (const auto position : result.positions)
            if (position >= 0)
            {
                const auto frames = position / frameSeconds - (speed > 0 ? 0 : 1.0 / 6);
                EXPECT_NEAR (frames, std::round (frames), 1e-6) << position;
                EXPECT_NEAR (position, 100, 1.1);
            }
        EXPECT_NEAR (result.tracker.getPosition(), 100 + speed, 0.01);
    }
}

TEST (CDTracker, SilenceBringsSpeedToZeroAndLosesTheSignal)
{
    auto signal = disc (10, 1);
    change (signal,
            [] (float& left, float& right, double time)
            {
                if (time > 0.5)
                    left = right = 0;
            });
    const auto result = track (signal);
    EXPECT_EQ (result.tracker.getSpeed(), 0.0);
    EXPECT_TRUE (result.tracker.isSignalLost());
}

TEST (CDTracker, AJumpIsBelievedWithItsSecondFrame)
{
    auto signal = disc (10, 1, 0.5);
    const auto second = disc (200, 1, 0.5);
    signal.left.insert (signal.left.end(), second.left.begin(), second.left.end());
    signal.right.insert (signal.right.end(), second.right.begin(), second.right.end());
    signal.place.insert (signal.place.end(), second.place.begin(), second.place.end());
    const auto result = track (signal);
    int framesUntilBelieved = 0;
    for (auto i = signal.at (0.5); i < signal.size() && result.positions[i] < 150; ++i)
        framesUntilBelieved = static_cast<int> (i - signal.at (0.5)) / controlDisc::samplesPerFrame;
    EXPECT_GE (framesUntilBelieved, 1);
    EXPECT_LE (framesUntilBelieved, 3);
}
