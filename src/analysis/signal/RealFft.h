#pragma once

#include <memory>

/** A transform of a real signal whose length N is a power of two, packed in N floats.

    The packing is half-complex: element k holds the real part of bin k for k of 0 to N/2, and element N - k its
    imaginary part for k of 1 to N/2 - 1. Neither direction scales, so forward and inverse together multiply by N.
    One object serves one thread; it allocates at creation only. */
class CzplfFFT_If
{
public:
    virtual ~CzplfFFT_If() = default;

    /** @param in   N floats; `out` may be the same array */
    virtual void forward (float* out, const float* in) = 0;
    virtual void inverse (float* out, const float* in) = 0;

    /** Plans the transform; done by whoever makes one. @returns AnalysisError::none or noMemory */
    virtual int init() = 0;

    virtual int getSize() const = 0;
};

/** Makes the fastest transform there is for this processor. Any thread, but never the audio thread: planning takes a lock and allocates.
    @returns AnalysisError::none, badArgument unless the size is a positive power of two, or noMemory */
int createFFT (std::unique_ptr<CzplfFFT_If>& out, int size);
