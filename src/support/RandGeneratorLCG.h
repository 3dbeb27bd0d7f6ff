#pragma once

#include <cstdint>

/** The minimal standard linear congruential generator (multiplier 16807, modulus 2^31 - 1), in Schrage's form. */
class RandGeneratorLCG
{
public:
    static constexpr int32_t defaultSeed = 29377;

    explicit constexpr RandGeneratorLCG (int32_t initialSeed = defaultSeed) noexcept { seed (initialSeed); }

    /** Any number; 0 and multiples of the modulus, which the generator could never leave, become the default. */
    constexpr void seed (int64_t next) noexcept
    {
        state = static_cast<int32_t> ((next % modulus + modulus) % modulus);
        if (state == 0)
            state = defaultSeed;
    }

    /** The next state, 1 to 2^31 - 2. */
    constexpr int32_t nextInt() noexcept
    {
        const auto high = state / quotient;
        const auto low = state % quotient;
        state = multiplier * low - remainder * high;
        if (state <= 0)
            state += modulus;
        return state;
    }

    /** The next value, above 0 and below 1. */
    constexpr double nextDouble() noexcept { return nextInt() * (1.0 / modulus); }

private:
    static constexpr int32_t modulus = 0x7fffffff, multiplier = 16807, quotient = 127773, remainder = 2836;
    int32_t state = defaultSeed;
};
