#pragma once

#include <cstdint>
#include <functional>

/** Gives milliseconds that never go back, up to the wrap of 32 bits. Real time on stage; driven by the audio that was
    rendered in an offline run. Called on the audio thread too, so it must not block. */
using MillisecondClock = std::function<uint32_t()>;

/** Milliseconds from `then` to `now`, right over the wrap; 0 if the clock stepped back by up to 1000 ms. */
constexpr uint32_t millisecondsBetween (uint32_t then, uint32_t now) noexcept
{
    const auto elapsed = now - then;
    return elapsed > UINT32_MAX - 1000u ? 0u : elapsed;
}
