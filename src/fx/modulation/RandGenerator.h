#pragma once

#include "support/RandGeneratorLCG.h"

namespace fx_dsp
{
/** A source of even noise for effects. */
class rand_generator_base
{
public:
    virtual ~rand_generator_base() = default;

    /** The next value, above 0 and below 1. Any thread, one at a time. */
    virtual double next() noexcept = 0;
};

/** Noise of the minimal standard generator. */
class rand_generator_lcg final : public rand_generator_base
{
public:
    double next() noexcept override { return generator.nextDouble(); }

private:
    RandGeneratorLCG generator;
};
}
