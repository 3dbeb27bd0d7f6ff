#include "timecode/TimecodeDecoder.h"

#include "ControlSignal.h"
#include "timecode/ControlDisc.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <vector>

// bench_timecode_readback [MEDIUM]: every medium played from end to end at nominal speed, forwards and backwards, and the numbers of
// its frames or cycles that were read right on the way. The disc is the very signal that is written to its file.

namespace
{
constexpr double rate = controlDisc::sampleRate;
constexpr double tolerance = 0.001; // seconds

/** Numbers of a medium's frames (of a record: cycles), and those that were read. */
class Readback
{
public:
    explicit Readback (const ControlMedium& m)
        : medium (m),
          cyclesPerNumber (m.isOwnDisc() ? controlDisc::cyclesPerFrame : 1),
          read (static_cast<std::size_t> (m.length / cyclesPerNumber))
    {
        decoder.prepare (m, codeOf (m), rate);
    }

    void feed (float left, float right, double truth)
    {
        decoder.process (left, right);
        const auto place = decoder.position();
        if (!place.has_value())
            return;
        if (std::abs (*place - truth) > tolerance)
        {
            ++wrongFrames;
            return;
        }
        const auto number = static_cast<std::size_t> (*place * medium.carrierHz / cyclesPerNumber);
        if (number < read.size())
            read[number] = true;
    }

    void print (const char* direction) const
    {
        const auto right = std::count (read.begin(), read.end(), true);
        std::printf ("| %s | %s | %zu | %td | %zu | %.1f |\n", std::string (medium.id).c_str(), direction,
                     read.size(), right, read.size() - static_cast<std::size_t> (right),
                     1000 * static_cast<double> (wrongFrames) / rate);
        std::fflush (stdout);
    }

private:
    const ControlMedium& medium;
    const int cyclesPerNumber;
    std::vector<bool> read;
    std::size_t wrongFrames = 0;
    TimecodeDecoder decoder;
};

void playDisc (const ControlMedium& medium, bool forwards)
{
    Readback readback (medium);
    std::vector<float> left (controlDisc::samplesPerFrame), right (controlDisc::samplesPerFrame);
    for (unsigned i = 0; i < controlDisc::frameCount; ++i)
    {
        const auto number = forwards ? i : controlDisc::frameCount - 1 - i;
        controlDisc::generateFrame (number, left.data(), right.data());
        const auto first = static_cast<double> (number) * controlDisc::samplesPerFrame;
        for (std::size_t n = 0; n < left.size(); ++n)
        {
            const auto at = forwards ? n : left.size() - 1 - n;
            readback.feed (left[at], right[at], (first + static_cast<double> (at)) / rate);
        }
    }
    readback.print (forwards ? "forwards" : "backwards");
}

void playRecord (const ControlMedium& medium, bool forwards)
{
    constexpr double pieceSeconds = 20;
    Readback readback (medium);
    const auto seconds = static_cast<double> (medium.length) / medium.carrierHz;
    auto place = forwards ? 0.0 : seconds;
    for (auto left = seconds; left > 0; left -= pieceSeconds)
    {
        const auto signal = play (
            medium, place, std::min (left, pieceSeconds),
            [=] (double) { return std::optional (forwards ? 1.0 : -1.0); }, rate);
        for (std::size_t i = 0; i < signal.size(); ++i)
            readback.feed (signal.left[i], signal.right[i], signal.place[i]);
        place = signal.place.back();
    }
    readback.print (forwards ? "forwards" : "backwards");
}
}

int main (int count, char** arguments)
{
    std::printf ("| medium | played | frames or cycles | read right | not read | ms of wrong places |\n"
                 "|---|---|---|---|---|---|\n");
    for (const auto& medium : controlMedia())
        if (count < 2 || medium.id == std::string_view (arguments[1]))
            for (const auto forwards : { true, false })
                (medium.isOwnDisc() ? playDisc : playRecord) (medium, forwards);
}
