#pragma once

#include "analysis/signal/RealFft.h"

#include <complex>
#include <vector>

/** The transform in plain code of our own, for processors that no library is made for, and to check one by. A complex
    transform of half the length by radix 2, decimated in time, with the two halves of its result parted afterwards. */
class CzplfFFTGen : public CzplfFFT_If
{
public:
    /** @returns AnalysisError::none, badArgument unless the size is a positive power of two, or noMemory */
    static int create (std::unique_ptr<CzplfFFT_If>& out, int size);

    void forward (float* out, const float* in) override;
    void inverse (float* out, const float* in) override;
    int init() override;
    int getSize() const override { return size; }

private:
    using Complex = std::complex<float>;

    explicit CzplfFFTGen (int transformSize);

    void transformWork (bool backwards) noexcept;
    Complex turn (int k, bool backwards) const noexcept;

    const int size;
    int logSize = 0;
    std::vector<Complex> turns; ///< exp (-2 pi i k / size) for k below size / 2
    std::vector<int> reversed;  ///< by bits, for half the size
    std::vector<Complex> work;
};
