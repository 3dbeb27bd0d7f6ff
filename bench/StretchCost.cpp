#include "analysis/stretch/TimeStretcher.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#ifdef PX_BENCH_RUBBERBAND
    #include <rubberband/RubberBandStretcher.h>
#endif

#include <cstdio>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

// bench_stretch: what a call of the stretcher costs, beside a well-known stretching library where that is installed.

namespace
{
constexpr int blockSize = 128, rate = 44100;
constexpr double seconds = 30.0;

/** The music over and over. */
class Source
{
public:
    explicit Source (const juce::AudioBuffer<float>& m) : music (m) {}

    const float* const* next (int frames)
    {
        if (position + frames > music.getNumSamples())
            position = 0;
        pointers[0] = music.getReadPointer (0, position);
        pointers[1] = music.getReadPointer (1, position);
        position += frames;
        return pointers;
    }

private:
    const juce::AudioBuffer<float>& music;
    const float* pointers[2] {};
    int position = 0;
};

/** @param processor   nanoseconds that the calls took of the processor */
void print (const char* what, double stretch, double pitch, Timing::Durations& durations, int64_t processor)
{
    const auto calls = static_cast<double> (durations.count());
    const auto mean = static_cast<double> (processor) / calls;
    std::printf ("%-16s %5.2f %5.2f %7.0f x %8.2f us %8.2f us %8.2f us %9.2f us %9.2f us %6.1f\n", what,
                 stretch, pitch, blockSize * 1e9 / rate / mean, mean / 1000.0,
                 durations.quantile (0.5) / 1000.0, durations.quantile (0.99) / 1000.0,
                 durations.quantile (0.9999) / 1000.0, durations.quantile (1.0) / 1000.0,
                 durations.quantile (1.0) / mean);
    std::fflush (stdout);
}

/** Each run makes the same calls, so the least that a call took in any of them is what it costs by itself, without what
    else the machine did meanwhile. */
void measureOurs (const juce::AudioBuffer<float>& music, double stretch, double pitch)
{
    constexpr int runs = 5, calls = static_cast<int> (seconds * rate / blockSize);
    std::vector<int64_t> least (calls, std::numeric_limits<int64_t>::max());
    auto leastProcessor = std::numeric_limits<int64_t>::max();
    auto failed = 0;
    for (int run = 0; run < runs; ++run)
    {
        CElastiqueProIf* stretcher = nullptr;
        if (CElastiqueProIf::CreateInstance (stretcher, blockSize, 2, rate, 2) != 0)
            return;
        auto inForce = static_cast<float> (pitch);
        stretcher->setStretchAndPitch (static_cast<float> (stretch), &inForce, 0);

        Source source (music);
        float left[blockSize], right[blockSize];
        float* const out[] { left, right };
        const auto before = Timing::processorNanoseconds (Timing::Threads::own);
        for (int i = -200; i < calls; ++i)
        {
            const auto start = Timing::nanoseconds();
            const auto count = stretcher->getFramesNeeded();
            failed += stretcher->process (source.next (count), count, out) != 0 ? 1 : 0;
            const auto duration = Timing::nanoseconds() - start;
            if (i >= 0)
                least[static_cast<size_t> (i)] = std::min (least[static_cast<size_t> (i)], duration);
        }
        leastProcessor =
            std::min (leastProcessor, Timing::processorNanoseconds (Timing::Threads::own) - before);
        CElastiqueProIf::DestroyInstance (stretcher);
    }
    if (failed > 0)
        std::printf ("%d calls gave nothing: the row is void.\n", failed);
    Timing::Durations durations (least.size());
    for (const auto duration : least)
        durations.add (duration);
    print ("ours", stretch, pitch, durations, leastProcessor);
}

#ifdef PX_BENCH_RUBBERBAND
void measureLibrary (const juce::AudioBuffer<float>& music, double stretch, double pitch, bool isFiner)
{
    using RubberBand::RubberBandStretcher;
    RubberBandStretcher stretcher (
        rate, 2,
        RubberBandStretcher::OptionProcessRealTime
            | (isFiner ? RubberBandStretcher::OptionEngineFiner : RubberBandStretcher::OptionEngineFaster),
        stretch, pitch);
    stretcher.setMaxProcessSize (4096);

    Source source (music);
    float left[blockSize], right[blockSize];
    float* const out[] { left, right };
    const auto calls = static_cast<int> (seconds * rate / blockSize) / (isFiner ? 6 : 1);
    Timing::Durations durations (static_cast<size_t> (calls));
    const auto before = Timing::processorNanoseconds (Timing::Threads::own);
    for (int i = -200; i < calls; ++i)
    {
        const auto start = Timing::nanoseconds();
        while (stretcher.available() < blockSize)
        {
            const auto count = static_cast<int> (stretcher.getSamplesRequired());
            stretcher.process (source.next (std::max (1, count)), static_cast<size_t> (std::max (1, count)),
                               false);
        }
        stretcher.retrieve (out, blockSize);
        const auto end = Timing::nanoseconds();
        if (i >= 0)
            durations.add (end - start);
    }
    print (isFiner ? "library, finer" : "library, faster", stretch, pitch, durations,
           Timing::processorNanoseconds (Timing::Threads::own) - before);
}
#endif
}

int main (int argc, char** argv)
{
    [[maybe_unused]] const auto isShort = argc > 1 && std::string_view (argv[1]) == "--ours";
    Machine::print();
    std::printf ("Calls for %d output frames of stereo at %d Hz, the reading of music not counted.\n",
                 blockSize, rate);
    std::printf ("Real time and mean by the processor's time, the rest by the clock; ours the least of five "
                 "runs of each call.\n");
    std::printf ("%-16s %5s %5s %9s %11s %11s %11s %12s %12s %s\n", "", "length", "pitch", "real time",
                 "mean", "median", "99 %", "99.99 %", "maximum", "max. / mean");
    const auto music = MusicLike::make (20.0, rate);
    for (const auto& [stretch, pitch] : { std::pair { 0.94, 1.0 },
                                          { 1.0, 1.0 },
                                          { 1.06, 1.0 },
                                          { 1.5, 1.0 },
                                          { 1.0 / 1.06, 1.06 },
                                          { 1.06, 1.0595 } })
    {
        measureOurs (music, stretch, pitch);
#ifdef PX_BENCH_RUBBERBAND
        if (isShort)
            continue;
        measureLibrary (music, stretch, pitch, false);
        measureLibrary (music, stretch, pitch, true);
#endif
    }
    return 0;
}
