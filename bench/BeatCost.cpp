#include "measure/DecodedFile.h"
#include "measure/Machine.h"
#include "measure/Timing.h"

#include "analysis/beats/Takt.h"

#include <cstdio>

// bench_beat_cost FILE...: how much faster than real time the beat tracker is on decoded audio, by processor time on one
// core, and what memory it holds at the end.

namespace
{
struct Cost
{
    double feedSeconds = 0.0, endSeconds = 0.0, megabytes = 0.0;
};

Cost track (const DecodedFile& file)
{
    Cost cost;
    const auto residentBefore = Machine::residentMegabytes();
    const auto begin = Timing::processorNanoseconds (Timing::Threads::own);
    CaufTAKT_If* tracker = nullptr;
    if (CaufTAKT_If::CreateInstance (&tracker, file.sampleRate, static_cast<int> (file.channels.size()), 1)
        != 0)
        return cost;
    constexpr int block = 16384; // as a deck's loader feeds it
    std::vector<const float*> channels (file.channels.size());
    for (int at = 0; at < file.frames(); at += block)
    {
        for (size_t c = 0; c < channels.size(); ++c)
            channels[c] = file.channels[c].data() + at;
        tracker->process (channels.data(), std::min (block, file.frames() - at));
    }
    const auto fed = Timing::processorNanoseconds (Timing::Threads::own);
    tracker->flush (true);
    tracker->trackBeats (0.0f, 0, 0, 0);
    const auto done = Timing::processorNanoseconds (Timing::Threads::own);
    cost = { 1e-9 * static_cast<double> (fed - begin), 1e-9 * static_cast<double> (done - fed),
             Machine::residentMegabytes() - residentBefore };
    CaufTAKT_If::DestroyInstance (&tracker);
    return cost;
}
}

int main (int argc, char** argv)
{
    Machine::print();
    auto seconds = 0.0, used = 0.0;
    std::printf ("%8s %12s %12s %12s %8s  file\n", "seconds", "x real time", "of it feed", "at the end",
                 "MB");
    for (int i = 1; i < argc; ++i)
    {
        const auto path =
            juce::File::getCurrentWorkingDirectory().getChildFile (juce::CharPointer_UTF8 (argv[i]));
        const auto file = DecodedFile::read (path);
        if (file.frames() == 0)
            continue;
        const auto cost = track (file);
        const auto both = cost.feedSeconds + cost.endSeconds;
        seconds += file.seconds();
        used += both;
        std::printf ("%8.0f %12.0f %11.0f%% %11.0f%% %8.1f  %s\n", file.seconds(), file.seconds() / both,
                     100 * cost.feedSeconds / both, 100 * cost.endSeconds / both, cost.megabytes,
                     path.getFileName().toRawUTF8());
    }
    if (used > 0.0)
        std::printf ("all: %.0f x real time\n", seconds / used);
}
