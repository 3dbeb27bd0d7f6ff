#include "cli/Verbs.h"

#include "cli/Interruption.h"
#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "cli/perform/RunRoot.h"
#include "cli/perform/SetFile.h"
#include "cli/perform/WavInput.h"
#include "cli/perform/WavOutput.h"
#include "support/language/Translate.h"

#include <juce_events/juce_events.h>

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--out", "FILE", N_ ("the master as a stereo WAV file of 32-bit floats") },
    VerbOption { "--all-out", "FILE", N_ ("all 14 channels: master, monitor, decks A to D, sampler") },
    VerbOption { "--in", "FILE", N_ ("a WAV file of up to 10 channels for the inputs") },
    VerbOption { "--rate", "HZ", N_ ("8000 to 192000 (44100)") },
    VerbOption { "--block", "FRAMES", N_ ("frames in a block, 1 to 65536 (512)") },
    VerbOption { "--root", "DIR",
                 N_ ("where the engine keeps settings and recordings (a folder removed at the end)") },
    VerbOption { "--seed", "NUMBER", N_ ("another course of everything random") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

constexpr const char* usage =
    "perform SET.txt --out FILE [--all-out FILE] [--in FILE] [--rate HZ] [--block FRAMES]\n"
    "                          [--root DIR] [--seed NUMBER]";

constexpr const char* description =
    "Plays a set faster than real time. Its lines, in the order of their "
    "times:\n"
    "\n"
    "  SECONDS load DECK PATH [nowait]          DECK is A to D; PATH is seen "
    "from the set's folder\n"
    "  SECONDS sample PAD PATH                  PAD is 1 to 16, of the "
    "sampler\n"
    "  SECONDS set COMMAND VALUE [ARG1 ARG2]    COMMAND is a number or "
    "constant of platterdex commands\n"
    "  SECONDS reverse DECK on|off              plays backwards\n"
    "  SECONDS grid DECK right|half|beat|3/2|2/3|4/3|3/4  reads the grid anew\n"
    "  SECONDS host play|stop|bpm X|seek S      runs inside a host with this "
    "transport\n"
    "  SECONDS midi PORT STATUS DATA VALUE      plays a controller; bytes "
    "decimal or as 0x90\n"
    "  SECONDS script PATH                      runs a script, which hears "
    "what controllers play\n"
    "  SECONDS slicegate DECK PAD ID|FILE       fills pad 1 to 8; platterdex "
    "presets lists the ids\n"
    "  SECONDS smartknob DECK KNOB ID|FILE      fills SmartKnob 1 or 2\n"
    "  SECONDS timecode DECK RECORD MODE [INPUT] follows a control record in "
    "the input A to D;\n"
    "                                           MODE is absolute, relative "
    "or internal\n"
    "  SECONDS print COMMAND                    writes the time and what a "
    "read gives\n"
    "  SECONDS print midi                       writes what was sent to "
    "controllers\n"
    "  SECONDS end                              without it the run ends at "
    "the last line\n"
    "  # a comment";

/** @returns false, after a report, if a file to be written is one that the run reads */
bool spares (const juce::File& out, const juce::File& setFile, const SetScript& script,
             const VerbOptions& given)
{
    auto isRead = out == setFile || (given.has ("--in") && out == given.fileOf ("--in"));
    for (const auto& event : script.events)
        if (const auto* load = std::get_if<SetScript::Load> (&event.action))
            isRead = isRead || out == setFile.getSiblingFile (juce::String::fromUTF8 (load->path.c_str()));
    if (isRead)
        failWith (tr ("%1 is what the run reads; it would be replaced.", out.getFullPathName()));
    return !isRead;
}

int perform (VerbOptions& given)
{
    const auto rate = given.wholeNumber ("--rate", 44100, 8000, 192000);
    const auto block = given.wholeNumber ("--block", 512, 1, 65536);
    const auto seed =
        given.wholeNumber ("--seed", RandGeneratorLCG::defaultSeed, std::numeric_limits<juce::int64>::min(),
                           std::numeric_limits<juce::int64>::max());
    if (!rate || !block || !seed)
        return failWith (given.error());
    if (given.positional.size() != 1)
        return failWith (given.positional.isEmpty()
                             ? tr ("perform needs a set; see platterdex perform --help.")
                             : tr ("perform takes one set only."));
    if (!given.has ("--out"))
        return failWith (tr ("perform needs --out FILE for the master."));
    if (given.has ("--all-out") && given.fileOf ("--out") == given.fileOf ("--all-out"))
        return failWith (tr ("--out and --all-out name the same file."));

    const auto setFile = juce::File::getCurrentWorkingDirectory().getChildFile (given.positional[0]);
    const auto script = readSetFile (setFile);
    if (!script)
        return ExitCode::badInput;

    for (const auto* option : { "--out", "--all-out" })
        if (given.has (option) && !spares (given.fileOf (option), setFile, *script, given))
            return ExitCode::badInput;

    const auto sampleRate = static_cast<double> (*rate);
    std::optional<WavInput> input;
    if (given.has ("--in"))
        if (input.emplace (given.fileOf ("--in"), sampleRate, CPlatterdex::inputChannels);
            input->error().isNotEmpty())
            return failWith (input->error());

    WavOutput master (given.fileOf ("--out"), sampleRate, 2);
    if (master.error().isNotEmpty())
        return failWith (master.error());
    std::optional<WavOutput> all;
    if (given.has ("--all-out"))
        if (all.emplace (given.fileOf ("--all-out"), sampleRate, CPlatterdex::outputChannels);
            all->error().isNotEmpty())
            return failWith (all->error());

    const RunRoot root (given);
    if (root.fault.isNotEmpty())
        return failWith (root.fault);

    const Interruption interruption;
    juce::StringArray notLoaded;
    auto seconds = 0.0;
    {
        const juce::ScopedJuceInitialiser_GUI juceScope;
        auto hosting = hostingOf (*script, root);
        hosting.sampleRate = sampleRate;
        hosting.blockFrames = static_cast<int> (*block);
        hosting.seed = *seed;
        OfflineHost host (hosting);

        if (input)
            host.input = [&input] (auto& inputs, int64_t first) { input->read (inputs, first); };
        host.sink = [&] (const float* const* channels, int frames)
        {
            return !interruption.isInterrupted() && master.write (channels, frames)
                   && (!all || all->write (channels, frames));
        };
        notLoaded = performSetFile (*script, host, setFile, printLine);
        seconds = static_cast<double> (host.position()) / sampleRate;
    }
    if (interruption.isInterrupted())
        return failWith (tr ("The run was interrupted; nothing was written."));
    root.warnOfLostRecordings();

    if (!master.finish())
        return failWith (master.error());
    if (all && !all->finish())
        return failWith (all->error());
    printLine (tr ("Wrote %1, %2 s.", given.fileOf ("--out").getFullPathName(), juce::String (seconds, 1)));
    return endOfSet (notLoaded);
}
}

int runPerform (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (helpText (usage, description, options));
        return ExitCode::success;
    }
    return given.error().isNotEmpty() ? failWith (given.error()) : perform (given);
}
