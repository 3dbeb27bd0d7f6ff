#include "timecode/TimecodeDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace
{
/** A way in which the signal may have come here. */
struct Path
{
    ControlWiring wiring;
    PhonoCurve::Kind curve = PhonoCurve::Kind::none;
};
using Curve = PhonoCurve::Kind;

// The likely ones first: cables exchanged, then one pair of wires turned in a cartridge.
constexpr std::array recordPaths { Path {},
                                   Path { { true, false, false } },
                                   Path { { false, true, true } },
                                   Path { { false, true, false } },
                                   Path { { false, false, true } },
                                   Path { { true, true, true } },
                                   Path { { true, true, false } },
                                   Path { { true, false, true } } };

// A phono stage bends a disc's bursts, not a record's cycles.
constexpr std::array discPaths { Path {},
                                 Path { { true, false, false } },
                                 Path { {}, Curve::inverse },
                                 Path { {}, Curve::replay },
                                 Path { { false, true, true } },
                                 Path { { false, true, false } },
                                 Path { { false, false, true } },
                                 Path { { true, false, false }, Curve::inverse },
                                 Path { { true, false, false }, Curve::replay },
                                 Path { { true, true, true } },
                                 Path { { true, true, false } },
                                 Path { { true, false, true } } };

PX_AUDIO_THREAD std::span<const Path> pathsOf (const ControlMedium& medium) noexcept
{
    return medium.isOwnDisc() ? std::span<const Path> (discPaths) : recordPaths;
}

// In a cycle at nominal speed: they leave the direction sure at seven times that.
constexpr double fewestFrames = 16;
constexpr float loudest = 8; // of an input, full scale 1; what is above is no signal

/** Nothing in place of what is no signal, not a number among it. */
PX_AUDIO_THREAD float tamed (float sample) noexcept
{
    return std::abs (sample) <= loudest ? sample : 0;
}
constexpr double firstTrialSeconds = 0.2, provedTrialSeconds = 4, secondsBetweenRounds = 8;
} // namespace

void TimecodeDecoder::prepare (const ControlMedium& newMedium, std::shared_ptr<const GrooveCode> newCode,
                               double sampleRate)
{
    medium = newMedium;
    code = std::move (newCode);
    inputRate = sampleRate;
    averaged = 1;
    while (inputRate / (2 * averaged) >= fewestFrames * medium.carrierHz)
        averaged *= 2;
    const auto rate = inputRate / averaged;
    tracker.prepare (medium, rate);
    phono.prepare (inputRate);
    if (code != nullptr)
        lock.prepare (medium, *code, rate, tracker.framesInTick());
    pathIndex = 0;
    curve = Curve::none;
    reset();
}

void TimecodeDecoder::reset() noexcept
{
    tracker.reset();
    lock.reset();
    secondsTravelled = secondsHidden = 0;
    leftTick = rightTick = {};
    gathered = inAverage = 0;
    leftSum = rightSum = 0;
    pathsTried = unreadTicks = 0;
    pathIsProved = false;
}

ControlWiring TimecodeDecoder::wiring() const noexcept
{
    return pathsOf (medium)[static_cast<std::size_t> (pathIndex)].wiring;
}

std::optional<double> TimecodeDecoder::position() const noexcept
{
    const auto cycle = code != nullptr ? lock.cycle() : std::nullopt;
    return cycle.has_value() ? std::optional (*cycle / medium.carrierHz + pendingSeconds()) : std::nullopt;
}

void TimecodeDecoder::process (float left, float right) noexcept
{
    if (curve != Curve::none)
    {
        left = phono.process (curve, 0, tamed (left));
        right = phono.process (curve, 1, tamed (right));
    }
    if (averaged > 1)
    {
        leftSum += left;
        rightSum += right;
        if (++inAverage < averaged)
            return;
        left = leftSum / static_cast<float> (averaged);
        right = rightSum / static_cast<float> (averaged);
        leftSum = rightSum = 0;
        inAverage = 0;
    }
    leftTick[gathered] = tamed (left);
    rightTick[gathered] = tamed (right);
    if (++gathered < tracker.framesInTick())
        return;
    gathered = 0;
    processTick();
}

void TimecodeDecoder::processTick() noexcept
{
    const auto wired = wiring();
    if (wired.leftInverted || wired.rightInverted)
        for (int i = 0; i < TickLanes::size; ++i)
        {
            leftTick[i] *= wired.leftInverted ? -1.0f : 1.0f;
            rightTick[i] *= wired.rightInverted ? -1.0f : 1.0f;
        }
    const auto& reading =
        wired.exchanged ? tracker.process (rightTick, leftTick) : tracker.process (leftTick, rightTick);
    const auto frames = tracker.framesInTick();
    secondsTravelled += tracker.speed() * frames * averaged / inputRate;
    // Way that a dropout hid is made up for when the carrier is back at once.
    if (reading.away)
    {
        secondsHidden += tracker.speed() == 0 ? reading.turnsPerFrame * frames / medium.carrierHz : 0;
        ticksAfterHidden = 0;
    }
    else if (secondsHidden != 0)
    {
        const bool isBack = reading.present && tracker.speed() != 0;
        secondsTravelled += isBack ? secondsHidden : 0;
        if (isBack || ++ticksAfterHidden * frames * averaged > 0.02 * inputRate)
            secondsHidden = 0;
    }
    if (code == nullptr)
        return;
    lock.process (reading);
    watchPath (reading);
}

void TimecodeDecoder::watchPath (const CarrierTracker::Reading& reading) noexcept
{
    if (isLocked())
    {
        pathIsProved = true;
        unreadTicks = 0;
        return;
    }
    const auto fast = std::abs (tracker.speed());
    if (!reading.present || fast < 0.5 || fast > 1.8 || !reading.even || tracker.isClipped())
        return;
    // Each round through all paths listens twice as long, for poor signals. Between rounds the plain path rules, so that
    // an unknown record keeps its direction.
    const auto rounds = std::min (4, pathsTried / static_cast<int> (pathsOf (medium).size()));
    const auto trial = pathIsProved                   ? provedTrialSeconds
                       : pathIndex == 0 && rounds > 0 ? secondsBetweenRounds
                                                      : firstTrialSeconds * (1 << rounds);
    if (++unreadTicks > trial * inputRate / (averaged * tracker.framesInTick()) * 1000 / medium.carrierHz)
        tryNextPath();
}

void TimecodeDecoder::tryNextPath() noexcept
{
    unreadTicks = 0;
    pathIsProved = false;
    ++pathsTried;
    pathIndex = (pathIndex + 1) % static_cast<int> (pathsOf (medium).size());
    curve = pathsOf (medium)[static_cast<std::size_t> (pathIndex)].curve;
    phono.reset();
    tracker.reset();
    lock.reset();
}
