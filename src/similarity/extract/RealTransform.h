#pragma once

#include <memory>
#include <span>

/** The power spectrum of a windowed real signal, over FFTW. One thread; planning takes FFTW's lock. */
class RealTransform
{
public:
    /** @param size   a power of two */
    explicit RealTransform (int size);
    ~RealTransform();

    /** The power of bins 0 to size / 2 of a Hann-windowed signal, scaled so that a full-scale sine gives 1. Holds until
        the next call. @param in   `size` samples */
    std::span<const float> power (const float* in);

    /** The autocorrelation of a signal that is padded with as many zeros: lags 0 to size / 2 - 1.
        @param in   `size` / 2 samples */
    std::span<const float> autocorrelation (const float* in);

private:
    struct State;
    std::unique_ptr<State> state;
};
