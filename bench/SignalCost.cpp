#include "measure/Machine.h"
#include "measure/Timing.h"

#include "analysis/signal/FastResample.h"
#include "analysis/signal/RealFft.h"
#include "analysis/signal/Resample.h"
#include "analysis/signal/spare/FftSplit.h"
#include "shared/Signals.h"

#include <cstdio>
#include <functional>

// bench_signal: the transform, and how much faster than they sound the resamplers run.

namespace
{
constexpr int repeats = 200, channels = 2, block = 512;
constexpr double rate = 44100.0;

/** The median over the repeats, in nanoseconds for one call: each is of `calls` of them, long enough for the clock. */
double medianOf (int calls, const std::function<void()>& call)
{
    Timing::Durations durations (repeats);
    for (int i = 0; i < repeats; ++i)
    {
        const auto start = Timing::nanoseconds();
        for (int k = 0; k < calls; ++k)
            call();
        durations.add (Timing::nanoseconds() - start);
    }
    return durations.quantile (0.5) / calls;
}

void printTransforms()
{
    std::printf ("\n%-24s %12s\n", "transform", "us");
    for (const int size : { 512, 2048, 4096, 16384 })
    {
        std::unique_ptr<CzplfFFT_If> fft;
        createFFT (fft, size);
        const auto in = Signals::noise (size, 1);
        auto out = in;
        const auto cost = medianOf (200'000 / size + 1, [&] { fft->forward (out.data(), in.data()); });
        std::printf ("%-24d %12.2f\n", size, cost / 1000.0);
    }
}

/** @param process   takes a block and gives the frames that came of it */
void printSpeed (const char* what, double ratio, const std::function<int()>& process)
{
    int64_t given = 0, calls = 0;
    const auto cost = medianOf (10,
                                [&]
                                {
                                    given += process();
                                    ++calls;
                                });
    const auto seconds = static_cast<double> (given) / static_cast<double> (calls) / rate;
    std::printf ("%-24s %12.2f %12.0f\n", what, ratio, seconds * 1e9 / cost);
    std::fflush (stdout);
}

template <class Sample>
struct Buffers
{
    std::vector<Sample> in = std::vector<Sample> (block, Sample (1)), left = std::vector<Sample> (block * 16),
                        right = left;
    const Sample* ins[channels] = { in.data(), in.data() };
    Sample* outs[channels] = { left.data(), right.data() };
};
}

int main()
{
    Machine::print();
    printTransforms();

    std::printf ("\n%-24s %12s %12s\n", "stereo, 512 frames in", "ratio", "x real time");
    Buffers<float> floats;
    Buffers<int16_t> wholes;
    floats.in = Signals::noise (block, 2);
    floats.ins[0] = floats.ins[1] = floats.in.data();
    std::unique_ptr<CFastResample> fast;
    std::unique_ptr<CResampleFloat> sinc;
    std::unique_ptr<CResampleInt> whole;
    std::unique_ptr<CFFTSplit> split;
    CFastResample::create (fast, channels, 3, block);
    CResampleFloat::create (sinc, channels, block);
    CResampleInt::create (whole, channels, block);
    CFFTSplit::create (split, 4096, rate, 2000.0);
    for (const auto ratio : { 0.5, 0.97, 1.03, 2.0 })
        printSpeed ("CFastResample, order 3", ratio,
                    [&] { return fast->process (floats.ins, block, floats.outs, ratio); });
    for (const auto ratio : { 0.5, 0.97, 1.03, 2.0 })
        printSpeed ("CResampleFloat", ratio,
                    [&] { return sinc->process (floats.ins, floats.outs, block, ratio); });
    printSpeed ("CResampleInt", 0.97, [&] { return whole->process (wholes.ins, wholes.outs, block, 0.97); });
    printSpeed ("CFFTSplit, one channel", 1.0,
                [&]
                {
                    split->process (floats.ins[0], block, floats.outs[0], floats.outs[1]);
                    return block;
                });
}
