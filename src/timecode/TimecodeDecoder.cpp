#include "timecode/TimecodeDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
// The likely ones first: cables exchanged, then one pair of wires turned in a cartridge.
constexpr std::array wirings { ControlWiring {},
                               ControlWiring { true, false, false },
                               ControlWiring { false, true, true },
                               ControlWiring { false, true, false },
                               ControlWiring { false, false, true },
                               ControlWiring { true, true, true },
                               ControlWiring { true, true, false },
                               ControlWiring { true, false, true } };
// In a cycle at nominal speed: they leave the direction sure at seven times that.
constexpr double fewestFrames = 16;
constexpr float loudest = 8; // of an input, full scale 1; what is above is no signal
constexpr double firstTrialSeconds = 0.2, provedTrialSeconds = 4;
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
    if (code != nullptr)
        lock.prepare (medium, *code, rate, tracker.framesInTick());
    wiringIndex = 0;
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
    wiringsTried = unreadTicks = 0;
    wiringIsProved = false;
}

ControlWiring TimecodeDecoder::wiring() const noexcept
{
    return wirings[static_cast<std::size_t> (wiringIndex)];
}

std::optional<double> TimecodeDecoder::position() const noexcept
{
    const auto cycle = code != nullptr ? lock.cycle() : std::nullopt;
    return cycle.has_value() ? std::optional (*cycle / medium.carrierHz + pendingSeconds()) : std::nullopt;
}

void TimecodeDecoder::process (float left, float right) noexcept
{
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
    leftTick[gathered] = std::abs (left) <= loudest ? left : 0; // not a number is no signal either
    rightTick[gathered] = std::abs (right) <= loudest ? right : 0;
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
    watchWiring (reading);
}

void TimecodeDecoder::watchWiring (const CarrierTracker::Reading& reading) noexcept
{
    if (isLocked())
    {
        wiringIsProved = true;
        unreadTicks = 0;
        return;
    }
    const auto fast = std::abs (tracker.speed());
    if (!reading.present || fast < 0.5 || fast > 1.8 || !reading.even)
        return;
    // Each round through all wirings listens twice as long, for poor signals.
    const auto trial =
        wiringIsProved
            ? provedTrialSeconds
            : firstTrialSeconds * (1 << std::min (4, wiringsTried / static_cast<int> (wirings.size())));
    if (++unreadTicks > trial * inputRate / (averaged * tracker.framesInTick()) * 1000 / medium.carrierHz)
        tryNextWiring();
}

void TimecodeDecoder::tryNextWiring() noexcept
{
    unreadTicks = 0;
    wiringIsProved = false;
    ++wiringsTried;
    wiringIndex = (wiringIndex + 1) % static_cast<int> (wirings.size());
    tracker.reset();
    lock.reset();
}
