#pragma once

#include "analysis/signal/RealFft.h"
#include "support/AudioThread.h"

#include <memory>
#include <vector>

/** The transform of the analysis: in place, with a window, and the level and angle of the bins. Half-complex packing and no
    scaling, as CzplfFFT_If. One object serves one thread; only create() and init() allocate. */
class CFFT
{
public:
    virtual ~CFFT() = default;

    /** Any thread but the audio thread.
        @param size     a power of two
        @param window   `size` factors, which are copied, or null for none
        @returns what init() returns, or AnalysisError::badArgument for the size; `out` is left alone then */
    static int create (std::unique_ptr<CFFT>& out, int size, const float* window = nullptr);

    /** Applies the window, if there is one, and transforms. */
    PX_AUDIO_THREAD virtual void forward (float* data);
    /** Times `size`, and with no regard to the window. */
    PX_AUDIO_THREAD virtual void inverse (float* data);

    /** Turn the result of forward() into the bins' magnitude, its square, or their angle in radians: in elements 0 to
        size / 2; those above stay as they were. */
    PX_AUDIO_THREAD virtual void magnitude (float* data) const;
    PX_AUDIO_THREAD virtual void power (float* data) const;
    PX_AUDIO_THREAD virtual void phase (float* data) const;

    /** Plans, and takes another window. Any thread but the audio thread.
        @returns AnalysisError::none or noMemory */
    virtual int init (const float* window);

    PX_AUDIO_THREAD virtual void applyWindow (float* data) const;

    int getSize() const { return size; }

private:
    explicit CFFT (int transformSize) : size (transformSize) {}

    template <class OfBin>
    void eachBin (float* data, OfBin ofBin) const;

    const int size;
    std::unique_ptr<CzplfFFT_If> transform;
    std::vector<float> factors;
};
