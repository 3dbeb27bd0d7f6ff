#include "cli/Verbs.h"

#include "cli/Interruption.h"
#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "support/language/Translate.h"
#include "timecode/ControlDisc.h"
#include "timecode/ControlDiscFile.h"

#include <array>
#include <cmath>

namespace
{
constexpr std::array options {
    VerbOption { "--out", "FILE.wav", N_ ("the file to write") },
    VerbOption { "--minutes", "N", N_ ("minutes of it, 1 to 27 (all)") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

constexpr double frameSeconds = controlDisc::cyclesPerFrame / controlDisc::carrierHz;
}

int runControlCd (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    if (given.error().isEmpty() && given.has ("--help"))
    {
        printLine (helpText (
            "control-cd --out FILE.wav",
            N_ ("Writes the control disc, to burn on a CD or to play from any player into a deck's input."),
            options));
        return ExitCode::success;
    }
    const auto minutes = given.wholeNumber ("--minutes", 27, 1, 27);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (!given.has ("--out") || !given.positional.isEmpty())
        return failWith (tr ("control-cd needs --out FILE.wav."));
    const auto file = given.fileOf ("--out");
    if (!requireEnding (file, "wav"))
        return ExitCode::badInput;

    const auto frames =
        std::min (controlDisc::frameCount,
                  static_cast<int> (std::lround (static_cast<double> (*minutes) * 60 / frameSeconds)));
    const Interruption interruption;
    auto written = 0;
    const auto fault = writeControlDisc (file, frames,
                                         [&] (int done)
                                         {
                                             written = done;
                                             return !interruption.isInterrupted();
                                         });
    if (fault.isNotEmpty())
        return failWith (fault);
    printLine (tr ("Wrote %1 s of the control disc to %2.", juce::String (written * frameSeconds, 1),
                   file.getFullPathName()));
    return ExitCode::success;
}
