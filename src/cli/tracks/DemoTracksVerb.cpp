#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "demo/DemoFiles.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--help", nullptr, N_ ("this text") },
};

juce::String describe (const DemoTrack& track)
{
    const auto seconds = static_cast<double> (track.barFrames (track.bars)) / DemoTrack::sampleRate;
    return juce::String (track.fileName).paddedRight (' ', 44) + juce::String (track.bpm, 2) + " BPM  "
           + juce::String (track.key).paddedRight (' ', 4) + "first beat "
           + juce::String (static_cast<double> (track.firstBeatFrames) / DemoTrack::sampleRate, 6) + " s, "
           + juce::String (track.bars) + " bars, " + juce::String (seconds, 1) + " s";
}
}

int runDemoTracks (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText (
            "demo-tracks DIR",
            N_ ("Writes the demo tracks that are missing into a folder and lists all of them."), options));
        return ExitCode::success;
    }
    if (given.positional.size() != 1)
        return failWith (tr ("demo-tracks needs one folder."));

    const auto folder = juce::File::getCurrentWorkingDirectory().getChildFile (given.positional[0]);
    if (const auto result = writeDemoTracks (folder); result.error.isNotEmpty())
        return failWith (result.error);
    for (const auto& track : demoTracks())
        printLine (describe (track));
    return ExitCode::success;
}
