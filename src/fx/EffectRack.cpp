#include "fx/EffectRack.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace
{
constexpr double lowestBpm = 1.0, highestBpm = 10000.0, unknownBpm = 120.0;

/** 48 dB above full scale. */
constexpr float loudest = 256.0f;

void silenceNonsense (float* samples, int frames) noexcept
{
    for (int i = 0; i < frames; ++i)
        samples[i] = samples[i] <= loudest && samples[i] >= -loudest ? samples[i] : 0.0f;
}

bool isSilent (const float* samples, int frames) noexcept
{
    auto bits = 0u;
    for (int i = 0; i < frames; ++i)
        bits |= std::bit_cast<uint32_t> (samples[i]);
    return (bits & 0x7fffffffu) == 0;
}

bool isNumber (double value) noexcept
{
    return std::isfinite (value);
}
}

EffectRack::EffectRack()
    : slots { EffectSlot (FxType::flanger), EffectSlot (FxType::phaser), EffectSlot (FxType::delay) }
{
    setSampleRate (44100.0);
}

void EffectRack::setSampleRate (double rate) noexcept
{
    filter.setSampleRate (rate);
    split.setSampleRate (rate);
    for (auto& each : slots)
        each.setSampleRate (rate);
}

void EffectRack::setFxParameter (int slot, FxParameter parameter, double value) noexcept
{
    if (slot >= 0 && slot < slotCount)
        slots[static_cast<size_t> (slot)].setFxParameter (parameter, value);
}

void EffectRack::selectFx (int slot, double value) noexcept
{
    if (slot >= 0 && slot < slotCount)
        slots[static_cast<size_t> (slot)].selectFx (value);
}

void EffectRack::setStep (int slot, int effect, double value) noexcept
{
    if (slot >= 0 && slot < slotCount && effect >= 0 && effect < FxType::count)
        slots[static_cast<size_t> (slot)].setStep (effect, value);
}

std::string EffectRack::fxParameterText (int slot, FxParameter parameter) const
{
    return slot >= 0 && slot < slotCount ? slots[static_cast<size_t> (slot)].parameterText (parameter)
                                         : std::string();
}

void EffectRack::setDryWet (double value) noexcept
{
    for (auto& each : slots)
        each.setFxParameter (FxParameter::dryWet, value);
}

void EffectRack::setFrequency (double value) noexcept
{
    for (auto& each : slots)
        each.setFxParameter (FxParameter::frequency, value);
}

void EffectRack::setFilter (double value) noexcept
{
    if (!isNumber (value))
        return;
    filterKnob = std::clamp (value, 0.0, 1.0);
    filter.set (filterKnob);
}

void EffectRack::setBand (BandSplit::Band band, bool isOn) noexcept
{
    bands[static_cast<size_t> (band)] = isOn;
    split.setBand (band, isOn);
}

void EffectRack::process (float* left, float* right, int frames, double bpm) noexcept
{
    const auto tempo = isNumber (bpm) && bpm > 0.0 ? std::clamp (bpm, lowestBpm, highestBpm) : unknownBpm;
    for (int done = 0; done < frames; done += longestPiece)
        processPiece (left + done, right + done, std::min (longestPiece, frames - done), tempo);
}

void EffectRack::processPiece (float* left, float* right, int frames, double bpm) noexcept
{
    silenceNonsense (left, frames);
    silenceNonsense (right, frames);
    filter.process (left, right, frames, bpm);

    std::array<float, longestPiece> sideLeft, sideRight;
    const auto nothing = split.isAtRest() && isSilent (left, frames) && isSilent (right, frames);
    const auto hasSide = !nothing && split.process (left, right, sideLeft.data(), sideRight.data(), frames);
    for (auto& each : slots)
        each.process (left, right, frames, bpm);
    if (!hasSide)
        return;
    for (int i = 0; i < frames; ++i)
    {
        left[i] += sideLeft[static_cast<size_t> (i)];
        right[i] += sideRight[static_cast<size_t> (i)];
    }
}
