#include "fx/reverb/Reverb.h"

#include <algorithm>
#include <cmath>

namespace
{
// Lengths of the left channel's lines in samples at 44100 Hz.
constexpr std::array combLengths { 1116, 1188, 1277, 1356, 1422, 1491, 1557, 1617 };
constexpr std::array allPassLengths { 556, 441, 341, 225 };
constexpr int rightSpread = 23;
constexpr double tableRate = 44100.0;

// NaN and values beyond 36 dB over full scale are taken as silence.
constexpr float loudest = 64.0f;

size_t lengthAt (double rate, int tableLength)
{
    return static_cast<size_t> (tableLength * rate / tableRate);
}

size_t memoryAt (double rate)
{
    size_t sum = 0;
    for (const auto spread : { 0, rightSpread })
    {
        for (const auto length : combLengths)
            sum += lengthAt (rate, length + spread);
        for (const auto length : allPassLengths)
            sum += lengthAt (rate, length + spread);
    }
    return sum;
}

static_assert (CombBank::pieceFrames <= 225 * Reverb::lowestRate / tableRate,
               "a piece must fit into the shortest line");
}

Reverb::Reverb() : memory (memoryAt (highestRate))
{
    setSampleRate (tableRate);
    update();
}

void Reverb::setSampleRate (double hertz) noexcept
{
    const auto next = hertz >= lowestRate ? std::min (hertz, highestRate) : lowestRate;
    if (next == rate)
        return;
    rate = next;
    bypass.setSampleRate (rate);
    wet.setSampleRate (rate);
    layLines();
    reset();
}

void Reverb::layLines() noexcept
{
    auto* next = memory.data();
    const auto take = [&] (int tableLength)
    {
        const std::span<float> line { next, lengthAt (rate, tableLength) };
        next += line.size();
        return line;
    };
    std::array<std::span<float>, CombBank::combs> lines;
    for (size_t channel = 0; channel < 2; ++channel)
    {
        const auto spread = channel == 0 ? 0 : rightSpread;
        for (size_t i = 0; i < combLengths.size(); ++i)
            lines[2 * i + channel] = take (combLengths[i] + spread);
        for (size_t i = 0; i < allPassLengths.size(); ++i)
            allPasses[channel][i].setLine (take (allPassLengths[i] + spread));
    }
    combs.setLines (lines);
    used = static_cast<size_t> (next - memory.data());
}

void Reverb::reset() noexcept
{
    std::fill_n (memory.begin(), used, 0.0f);
    toSilence = 0;
    combs.reset();
    bypass.settle();
    wet.settle();
}

void Reverb::setSettings (const Settings& next) noexcept
{
    current = next;
    dirty = true;
}

void Reverb::update() noexcept
{
    const auto frozen = current.mode >= 0.5f;
    combFeedback = frozen ? 1.0f : current.roomSize * 0.28f + 0.7f;
    combs.setFeedback (combFeedback, frozen ? 0.0f : current.damp * 0.4f);
    gain = frozen ? 0.0f : 0.015f;
    wet.setTarget (current.wet);
    own = 3.0f * (current.width * 0.5f + 0.5f);
    other = 3.0f * (1.0f - current.width) * 0.5f;
    dry2 = current.dry * 2.0f;
    dirty = false;
}

// A bypass that is lifted later must not let the last song be heard. All lines at once would be half a megabyte in one block.
void Reverb::silenceSome() noexcept
{
    constexpr size_t some = 4096;
    const auto count = std::min (some, toSilence);
    toSilence -= count;
    std::fill_n (memory.begin() + static_cast<std::ptrdiff_t> (toSilence), count, 0.0f);
    combs.reset();
}

void Reverb::process (float* left, float* right, int count) noexcept
{
    if (!bypass.isMoving() && bypass.value() >= 0.995)
    {
        if (toSilence > 0)
            silenceSome();
        return;
    }
    toSilence = used;
    if (dirty)
        update();
    for (int done = 0; done < count; done += CombBank::pieceFrames)
        processPiece (left + done, right + done, std::min (CombBank::pieceFrames, count - done));
}

void Reverb::processPiece (float* left, float* right, int count) noexcept
{
    const auto frames = static_cast<size_t> (count);
    CombBank::Piece input, leftSum, rightSum, off;
    for (size_t i = 0; i < frames; ++i)
        off[i] = static_cast<float> (bypass.next());
    for (size_t i = 0; i < frames; ++i)
    {
        const auto sum = left[i] + right[i];
        // Lines that were silent take the sound in as the bypass fades, so that its front is no step.
        input[i] = (std::fabs (sum) <= loudest ? sum : 0.0f) * gain * (1.0f - off[i]);
    }
    combs.process (input, leftSum, rightSum, count);
    for (auto& allPass : allPasses[0])
        allPass.process (leftSum.data(), count);
    for (auto& allPass : allPasses[1])
        allPass.process (rightSum.data(), count);

    const auto mix = [&] (size_t i, float level)
    {
        const auto outLeft = (leftSum[i] * own + rightSum[i] * other) * level + left[i] * dry2;
        const auto outRight = (rightSum[i] * own + leftSum[i] * other) * level + right[i] * dry2;
        left[i] = CrossFade::mixed (outLeft, left[i], off[i]);
        right[i] = CrossFade::mixed (outRight, right[i], off[i]);
    };
    if (wet.isMoving())
    {
        for (size_t i = 0; i < frames; ++i)
            mix (i, static_cast<float> (wet.next()));
        return;
    }
    const auto level = static_cast<float> (wet.value());
    for (size_t i = 0; i < frames; ++i)
        mix (i, level);
}
