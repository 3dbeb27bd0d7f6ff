#pragma once

#include <optional>
#include <string>
#include <string_view>

/** The messages between the program, which is the master, and the scanner process. All are UTF-8.

    The scanner is started as `platterdex-scanner scan yes|no MAILBOX`; "yes" keeps plug-ins from showing windows. It first
    sends its process's number. Each order is answered by "ping"s while it is carried out, then by "break", then by the
    result as a message of its own. */
namespace ScannerProtocol
{
inline constexpr std::string_view ping = "ping", finished = "break", close = "close";

/** "slaveprocessid 1234" */
std::string processIdMessage (int processId);

/** @returns nothing if the message is another one or names no process */
std::optional<int> processIdIn (std::string_view message);

/** A file to be looked at. */
struct ScanOrder
{
    std::string path;
    int width = 64; ///< 32 or 64 bits
};

/** `scan "/path/of/plugin.so" 64`; a path may hold quotes. */
std::string messageOf (const ScanOrder&);
std::optional<ScanOrder> scanOrderIn (std::string_view message);

/** A plug-in to be played for ten blocks, before it comes into the running program. */
struct TrialOrder
{
    double sampleRate = 44100.0;
    int blockSize = 256;
    std::string list;      ///< a plug-in list with the one that is meant
    std::string stateFile; ///< a file with the state that it will be given; empty for none
};

/** `trial 48000 256 "STATE FILE"` and, on the next line, the plug-in's list. */
std::string messageOf (const TrialOrder&);
std::optional<TrialOrder> trialOrderIn (std::string_view message);

/** The result of a trial that went well; else it is one sentence. */
inline constexpr std::string_view trialPassed = "passed";
}
