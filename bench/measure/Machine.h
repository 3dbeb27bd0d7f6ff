#pragma once

/** The conditions that a figure depends on besides the code. */
namespace Machine
{
/** Prints the processor's name, the cores, the load average, and how long an idle loop on this machine is kept from
    running while nothing of ours does: the part of every maximum that is not ours. */
void print();

/** The process's resident set in MB of 1,000,000 bytes, out of /proc/self/statm. */
double residentMegabytes();

/** The process's share of memory in MB of 1,000,000 bytes: what others share with it counts in parts, what is only reserved
    not at all. Out of /proc/self/smaps_rollup. */
double proportionalMegabytes();
}
