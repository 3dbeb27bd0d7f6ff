#pragma once

#include "analysis/signal/RealFft.h"
#include "support/AudioThread.h"

/** The processor's level of 4 (SSE3), 2 (SSE2), 1 (SSE) and 0 (none of these, or another family). Asked of the
    processor once. Any thread. */
int getProcessorLevel() noexcept;

/** The vector routines of the analysis and stretching code and the factory of its transform, n floats each.

    Arrays may lie anywhere and an output may be one of the inputs, but they must not overlap otherwise; aligned ones
    are quicker. There is one implementation at every level: plain loops, which the compiler turns into the vector
    instructions of the family's least processor. So results have the same bits everywhere. */
struct VectorTable
{
    /** n floats on a boundary of 64 bytes, with no certain content; null without memory. Not on the audio thread. */
    float* (*allocate) (int n);
    void (*free) (float*);

    void (*clear) (float* out, int n);
    void (*copy) (float* out, const float* in, int n);
    void (*add) (float* out, const float* a, const float* b, int n);
    void (*subtract) (float* out, const float* a, const float* b, int n);
    void (*multiply) (float* out, const float* a, const float* b, int n);
    void (*multiplyByConstant) (float* out, const float* in, float factor, int n);
    void (*multiplyAndAdd) (float* inAndOut, const float* a, const float* b, int n);
    void (*square) (float* out, const float* in, int n);
    void (*squareRoot) (float* out, const float* in, int n);

    void (*magnitude) (float* out, const float* real, const float* imaginary, int n);
    /** In radians, -pi to pi. */
    void (*phase) (float* out, const float* real, const float* imaginary, int n);
    void (*fromMagnitudeAndPhase) (float* real, float* imaginary, const float* magnitude, const float* phase,
                                   int n);

    /** The greatest; minus infinity of none. NaN counts as nothing. */
    float (*maximum) (const float* in, int n);
    float (*sum) (const float* in, int n);

    int (*createTransform) (std::unique_ptr<CzplfFFT_If>& out, int size);
};

/** Fills the table when it is called first. Any thread.
    @returns the table, which stays as it is to the end of the process */
const VectorTable& initVectorTable() noexcept;
