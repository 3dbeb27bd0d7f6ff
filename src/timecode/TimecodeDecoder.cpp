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
constexpr double firstTrialSeconds = 0.2, provedTrialSeconds = 4;
} // namespace

void TimecodeDecoder::prepare (const ControlMedium& newMedium, std::shared_ptr<const GrooveCode> newCode,
                               double sampleRate)
{
    medium = newMedium;
    code = std::move (newCode);
    rate = sampleRate;
    tracker.prepare (medium, rate);
    if (code != nullptr)
        lock.prepare (medium, *code, rate);
    wiringIndex = 0;
    reset();
}

void TimecodeDecoder::reset() noexcept
{
    tracker.reset();
    lock.reset();
    turns = 0;
    wiringsTried = unreadFrames = 0;
    wiringIsProved = false;
}

ControlWiring TimecodeDecoder::wiring() const noexcept
{
    return wirings[static_cast<std::size_t> (wiringIndex)];
}

std::optional<double> TimecodeDecoder::position() const noexcept
{
    const auto cycle = code != nullptr ? lock.cycle() : std::nullopt;
    return cycle.has_value() ? std::optional (*cycle / medium.carrierHz) : std::nullopt;
}

void TimecodeDecoder::process (float left, float right) noexcept
{
    const auto wired = wiring();
    const auto first = (wired.leftInverted ? -1.0f : 1.0f) * left,
               second = (wired.rightInverted ? -1.0f : 1.0f) * right;
    const auto reading = wired.exchanged ? tracker.process (second, first) : tracker.process (first, second);
    turns += tracker.speed() * medium.carrierHz / rate;
    if (code == nullptr)
        return;

    lock.process (reading);
    if (lock.cycle().has_value())
    {
        wiringIsProved = true;
        unreadFrames = 0;
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
    if (++unreadFrames > trial * rate * 1000 / medium.carrierHz)
        tryNextWiring();
}

void TimecodeDecoder::tryNextWiring() noexcept
{
    unreadFrames = 0;
    wiringIsProved = false;
    ++wiringsTried;
    wiringIndex = (wiringIndex + 1) % static_cast<int> (wirings.size());
    tracker.reset();
    lock.reset();
}
