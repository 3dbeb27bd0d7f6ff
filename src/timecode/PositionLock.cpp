#include "timecode/PositionLock.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace
{
constexpr double longestGapSeconds = 0.06;
constexpr float sureTrust = 0.985f; // no bit disagreed of late
constexpr int widestSlip = 96;      // cycles
constexpr int bitsToRecall = 18;    // a wrong place in 50,000

std::int64_t floorOf (double turns) noexcept
{
    const auto whole = static_cast<std::int64_t> (turns);
    return whole - (turns < static_cast<double> (whole) ? 1 : 0);
}
} // namespace

void PositionLock::prepare (const ControlMedium& newMedium, const GrooveCode& newCode, double sampleRate,
                            int framesInTick) noexcept
{
    medium = &newMedium;
    code = &newCode;
    framesPerTick = framesInTick;
    swiftStep = static_cast<float> (0.5 * medium->carrierHz / sampleRate);
    const auto tickSeconds = static_cast<float> (framesInTick / sampleRate);
    swiftLeak = tickSeconds / 0.03f;
    stepLeak = tickSeconds / 0.002f;
    longestStandTicks = static_cast<int> (0.006f / tickSeconds);
    fastestStep = std::min (0.3, (medium->isOwnDisc() ? 3.1 : 6.6) * medium->carrierHz / sampleRate);
    longestGapTicks = static_cast<int> (longestGapSeconds * sampleRate / framesInTick);
    reset();
}

void PositionLock::reset() noexcept
{
    cycles.fill ({});
    slotLevels = {};
    started = known = remembered = unproved = even = wasEven = false;
    meanHeight = spread = trust = 0;
    swiftness = meanStep = 0;
    cyclesToProve = stoodTicks = heightsSeen = absentTicks = awayTicks = hiddenTicks = doubtful = 0;
}

std::optional<double> PositionLock::cycle() const noexcept
{
    if (!known || doubtful > 0 || unproved || hiddenTicks > longestGapTicks / 12)
        return std::nullopt;
    const auto at = turnsNow + static_cast<double> (offset);
    return at >= 0 && at < static_cast<double> (code->length()) ? std::optional (at) : std::nullopt;
}

void PositionLock::process (const CarrierTracker::Reading& reading) noexcept
{
    turnsNow = reading.turns;
    hiddenTicks = reading.present || reading.away ? 0 : hiddenTicks + 1; // nobody counts in noise
    // A record's level is gone for a moment whenever a hand turns it round.
    if (!reading.away)
        awayTicks = 0;
    else if (++awayTicks == 1)
        wasEven = even;
    watchHand (reading);
    // Nobody knows how far a hand took the record meanwhile, sooner when it moved than when the platter turned evenly: the
    // first bits decide.
    const bool isSwift = swiftness > 4 * swiftStep;
    const auto longestUncounted = longestGapTicks / (wasEven ? 3 : (isSwift ? 16 : 8));
    if (awayTicks > longestUncounted && !unproved)
    {
        unproved = true;
        trust = std::min (trust, 0.55f);
        // A few symbols of the disc are the same in many frames: a whole one decides.
        cyclesToProve = medium->isOwnDisc() ? code->cyclesToLocate() : 0;
        if (isSwift)
            loseCount();
    }
    even = reading.even;
    tooFast = std::abs (reading.turnsPerFrame) > fastestStep;
    if (!reading.present)
    {
        started = false;
        absentTicks += 2;
        if (absentTicks > 2 * longestGapTicks)
            loseCount();
        else
            trust = std::min (trust, 0.55f); // the first bits decide
        unproved = unproved || hiddenTicks > longestGapTicks / 12;
        if (medium->isOwnDisc() && swiftness > 0.5f * swiftStep) // no rest yet: it may go on anywhere
            cyclesToProve = code->cyclesToLocate();
        return;
    }
    absentTicks = std::max (0, absentTicks - 1);
    if (trust > (medium->isOwnDisc() ? 0.62f : 0.7f) && cyclesToProve <= 0) // three symbols or seven bits
        unproved = false;
    const auto last = reading.lateTurns + reading.turnsPerFrame * (framesPerTick - 1);
    if (started && floorOf (reading.lateTurns) == current && floorOf (last) == current)
    {
        gather (reading, 0, framesPerTick);
        return;
    }
    for (int i = 0; i < framesPerTick; ++i)
    {
        const auto number = floorOf (reading.lateTurns + reading.turnsPerFrame * i);
        if (!started || number != current)
            enter (number);
        gather (reading, i, i + 1);
    }
}

void PositionLock::watchHand (const CarrierTracker::Reading& reading) noexcept
{
    const auto step = static_cast<float> (reading.turnsPerFrame);
    swiftness = std::max (std::abs (step), swiftness - swiftness * swiftLeak);
    meanStep += stepLeak * (step - meanStep);
    const bool stands = std::abs (meanStep) < 0.25f * swiftStep || !(reading.present || reading.away);
    stoodTicks = stands && swiftness > swiftStep ? stoodTicks + 1 : 0;
    // No hand stops so short: the signal went away while it moved, and how far it went on nobody counted.
    if (stoodTicks > longestStandTicks)
        loseCount();
}

void PositionLock::loseCount() noexcept
{
    if (known)
        ++epoch;
    known = false;
}

void PositionLock::enter (std::int64_t number) noexcept
{
    if (started && std::abs (number - current) == 1)
        finish (current, number > current);
    enteredForward = !started || number > current;
    current = number;
    started = true;
    auto& fresh = cycleAt (number);
    fresh = {};
    fresh.number = number;
    fresh.epoch = epoch;
}

void PositionLock::gather (const CarrierTracker::Reading& reading, int firstFrame, int endFrame) noexcept
{
    if (reading.coasting)
        return;
    auto& here = cycleAt (current);
    const auto within = static_cast<float> (reading.lateTurns - static_cast<double> (current));
    const auto step = static_cast<float> (reading.turnsPerFrame);
    here.covered += std::abs (step) * static_cast<float> (endFrame - firstFrame);
    if (medium->isOwnDisc())
    {
        for (int i = firstFrame; i < endFrame; ++i)
        {
            const auto slot = static_cast<std::size_t> (std::clamp (
                static_cast<int> ((within + step * static_cast<float> (i)) * slots), 0, slots - 1));
            here.sum[slot] += reading.burst[i];
            here.weight[slot] += reading.burstWeight[i];
        }
        return;
    }
    // A cycle that holds a 0 is weakest at its middle; the reading point of other decoders stands a quarter beside.
    // Weighed by the groove that passed, not by the time that it took.
    const auto passed = std::abs (step) + 1e-6f;
    for (int i = firstFrame; i < endFrame; ++i)
    {
        const auto at = within + step * static_cast<float> (i);
        const auto window = at * (1 - at), weight = passed * window * window;
        here.sum[0] += weight * reading.level[i];
        here.weight[0] += weight;
    }
}

void PositionLock::finish (std::int64_t number, bool forward) noexcept
{
    auto& done = cycleAt (number);
    if (forward != enteredForward || tooFast || !(medium->isOwnDisc() ? readSlots (done) : readHeight (done)))
        return;
    done.read = true;
    if (known)
        test (number, forward);
    if (known && medium->isOwnDisc() && number % 6 == 0 && trust < sureTrust)
        contest (number, forward);
    if (!known && remembered)
        recall (number, forward);
    if (!known || doubtful > 0)
        search (number, forward);
}

bool PositionLock::readSlots (Cycle& c) noexcept
{
    for (const auto weight : c.weight)
        if (weight < 0.2f)
            return false;
    const auto foretold = known && even ? code->bitsAt (c.number + offset) : 0;
    for (std::size_t slot = 0; slot < slots; ++slot)
    {
        // Clear and set slots are learnt apart, and by direction: phase errors and clipping move them.
        auto& levels = slotLevels[enteredForward ? 1 : 0][slot];
        const auto height = c.sum[slot] / c.weight[slot];
        const auto middle = 0.5f * (levels.clear + levels.set);
        c.value[slot] =
            std::clamp ((height - middle) / std::max (0.3f, levels.set - levels.clear), -1.0f, 1.0f);
        if (!even)
            continue;
        const bool isSet = known ? (foretold >> slot & 1) != 0 : height > middle;
        if (isSet)
            levels.set += 0.04f * (std::clamp (height, 0.4f, 1.4f) - levels.set);
        else
            levels.clear += 0.04f * (std::clamp (height, -0.4f, 0.4f) - levels.clear);
    }
    return true;
}

bool PositionLock::readHeight (Cycle& c) noexcept
{
    if (c.covered < 0.5f)
        return false;
    const auto height = c.sum[0] / c.weight[0];
    heightsSeen = std::min (heightsSeen + 1, 48);
    meanHeight += (height - meanHeight) / static_cast<float> (heightsSeen);
    spread += (std::abs (height - meanHeight) - spread) / static_cast<float> (heightsSeen);
    c.value[0] = std::clamp ((height - meanHeight) / std::max (spread, 1e-9f), -1.5f, 1.5f);
    return true;
}

unsigned PositionLock::hardBits (std::int64_t number) noexcept
{
    const auto& c = cycleAt (number);
    unsigned bits = 0;
    for (int i = 0; i < code->bitsPerCycle(); ++i)
        bits |= (c.value[static_cast<std::size_t> (i)] > 0 ? 1U : 0U) << i;
    return bits;
}

float PositionLock::agreement (std::int64_t oldest, std::int64_t newest, std::int64_t at,
                               int& bitsSeen) noexcept
{
    float agreed = 0, all = 0;
    bitsSeen = 0;
    for (auto n = oldest; n <= newest; ++n)
    {
        if (!wasRead (n))
            continue;
        const auto expected = code->bitsAt (n + at);
        const auto& c = cycleAt (n);
        for (int i = 0; i < code->bitsPerCycle(); ++i)
        {
            const auto v = c.value[static_cast<std::size_t> (i)];
            agreed += (expected >> i & 1) != 0 ? v : -v;
            all += std::abs (v);
            ++bitsSeen;
        }
    }
    return all > 0 ? agreed / all : 0;
}

int PositionLock::wrongBits (std::int64_t oldest, std::int64_t latest, std::int64_t at) noexcept
{
    int wrong = 0;
    for (auto n = oldest; n <= latest; ++n)
        wrong += std::popcount (hardBits (n) ^ code->bitsAt (n + at));
    return wrong;
}

void PositionLock::recall (std::int64_t newest, bool forward) noexcept
{
    // A record that was held stands where it stood, give or take a turn that nobody counted.
    const auto needed = std::max (bitsToRecall / code->bitsPerCycle(),
                                  code->bitsPerCycle() > 1 ? code->cyclesToLocate() + 1 : 0);
    const auto direction = forward ? -1 : 1;
    for (int i = 0; i < needed; ++i)
        if (!wasRead (newest + direction * i))
            return;
    const auto oldest = std::min (newest, newest + direction * (needed - 1));
    for (const auto shift : { 0, -1, 1, -2, 2 })
        if (wrongBits (oldest, oldest + needed - 1, offset + shift) == 0)
        {
            offset += shift;
            known = true;
            doubtful = cyclesToProve = 0;
            trust = 1;
            return;
        }
}

void PositionLock::search (std::int64_t newest, bool forward) noexcept
{
    const auto wanted = code->cyclesToLocate();
    const auto all = wanted + code->cyclesToBelieve() + (remembered ? 0 : 3); // the first place counts most
    const auto direction = forward ? -1 : 1;                                  // towards what was read before
    for (int i = 0; i < all; ++i)
        if (!wasRead (newest + direction * i))
            return;
    const auto oldest = std::min (newest, newest + direction * (all - 1));
    const auto latest = oldest + all - 1;
    std::array<unsigned, 32> window {};
    const auto first = forward ? newest - wanted + 1 : newest;
    for (int i = 0; i < wanted; ++i)
        window[static_cast<std::size_t> (i)] = hardBits (first + i);
    const auto found = code->locate (std::span (window).first (static_cast<std::size_t> (wanted)));
    if (!found.has_value())
        return;
    const auto candidate = *found - first;
    // Two wrong bits of a symbol could be another one, which the frames beside would contradict by just two.
    if (wrongBits (oldest, latest, candidate) > (code->bitsPerCycle() > 1 ? 1 : 0))
        return;
    offset = candidate;
    remembered = true;
    known = true;
    doubtful = cyclesToProve = 0;
    trust = 1;
}

void PositionLock::contest (std::int64_t newest, bool forward) noexcept
{
    // Frames hold their number, so neighbours differ in a few bits only: too few to be missed by the running test.
    const auto direction = forward ? -1 : 1;
    const auto all = 3 * code->cyclesToLocate(); // each digit thrice: dust can't put one wrong
    const auto oldest = std::min (newest, newest + direction * (all - 1)), latest = oldest + all - 1;
    for (auto n = oldest; n <= latest; ++n)
        if (!wasRead (n))
            return;
    if (wrongBits (oldest, latest, offset) < 2)
        return;
    std::array<unsigned, 32> window {};
    const auto wanted = code->cyclesToLocate();
    for (int i = 0; i < wanted; ++i)
        window[static_cast<std::size_t> (i)] = hardBits (oldest + i);
    const auto found = code->locate (std::span (window).first (static_cast<std::size_t> (wanted)));
    if (found.has_value() && wrongBits (oldest, latest, *found - oldest) == 0
        && clarity (oldest, latest, offset, *found - oldest) > 0.5f)
        offset = *found - oldest;
}

float PositionLock::clarity (std::int64_t oldest, std::int64_t latest, std::int64_t at,
                             std::int64_t other) noexcept
{
    float clear = 0;
    int count = 0;
    for (auto n = oldest; n <= latest; ++n)
    {
        const auto differing = code->bitsAt (n + at) ^ code->bitsAt (n + other);
        for (int i = 0; i < code->bitsPerCycle(); ++i)
            if ((differing >> i & 1) != 0)
            {
                clear += std::abs (cycleAt (n).value[static_cast<std::size_t> (i)]);
                ++count;
            }
    }
    return count > 0 ? clear / static_cast<float> (count) : 0;
}

void PositionLock::test (std::int64_t newest, bool forward) noexcept
{
    int bits = 0;
    trust += 0.06f * (agreement (newest, newest, offset, bits) - trust);
    if (cyclesToProve > 0)
        cyclesToProve = wrongBits (newest, newest, offset) == 0 ? cyclesToProve - 1 : code->cyclesToLocate();
    const auto direction = forward ? -1 : 1;
    const auto other = newest + direction * 31;
    const auto oldest = std::min (newest, other), latest = std::max (newest, other);
    if (trust > 0.4f)
    {
        doubtful = 0;
        return;
    }
    ++doubtful;
    float best = 0;
    std::int64_t at = 0;
    for (int shift = -widestSlip; shift <= widestSlip; ++shift)
        if (const auto a = agreement (oldest, latest, offset + shift, bits); a > best)
        {
            best = a;
            at = shift;
        }
    if (best > 0.9f && bits >= 30 * code->bitsPerCycle())
    {
        offset += at;
        trust = best;
        doubtful = 0;
    }
    else if (doubtful > 64)
        known = remembered = false;
}
