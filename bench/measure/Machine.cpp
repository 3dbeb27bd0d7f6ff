#include "measure/Machine.h"

#include "measure/Timing.h"

#include <juce_core/juce_core.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace
{
std::string processorName()
{
    std::ifstream info ("/proc/cpuinfo");
    for (std::string line; std::getline (info, line);)
        if (line.starts_with ("model name"))
            return line.substr (line.find (':') + 2);
    return "unknown";
}

/** Looks at the clock without a rest and keeps what lies between two looks. */
Timing::Durations watchIdleLoop (double seconds)
{
    constexpr int64_t worthKeeping = 1000;
    Timing::Durations gaps;
    auto last = Timing::nanoseconds();
    const auto end = last + static_cast<int64_t> (seconds * 1e9);
    while (last < end)
    {
        const auto now = Timing::nanoseconds();
        if (now - last > worthKeeping)
            gaps.add (now - last);
        last = now;
    }
    return gaps;
}
}

void Machine::print()
{
    double load[3] {};
    juce::ignoreUnused (getloadavg (load, 3));
    constexpr double seconds = 2.0;
    constexpr int64_t interruption = 20'000;
    auto gaps = watchIdleLoop (seconds);
    std::printf ("%s, %d cores, load average %.2f\n", processorName().c_str(),
                 juce::SystemStats::getNumCpus(), load[0]);
    std::printf (
        "An idle loop was kept from running %.0f times a second for over 20 us, at most %.0f us.\n\n",
        static_cast<double> (gaps.countAbove (interruption)) / seconds, gaps.quantile (1.0) / 1000.0);
}

double Machine::residentMegabytes()
{
    std::ifstream statm ("/proc/self/statm");
    int64_t total = 0, resident = 0;
    statm >> total >> resident;
    return static_cast<double> (resident) * static_cast<double> (sysconf (_SC_PAGESIZE)) / 1e6;
}

double Machine::proportionalMegabytes()
{
    std::ifstream rollup ("/proc/self/smaps_rollup");
    for (std::string line; std::getline (rollup, line);)
        if (line.starts_with ("Pss:"))
            return std::stod (line.substr (4)) * 1024.0 / 1e6; // told in KiB
    return 0.0;
}
