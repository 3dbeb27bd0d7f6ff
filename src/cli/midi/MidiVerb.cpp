#include "cli/Verbs.h"

#include "cli/Interruption.h"
#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "midi/ports/MidiPortSet.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr int longestRun = 1'000'000;

constexpr std::array options {
    VerbOption { "--list", nullptr, N_ ("prints the ports that are there") },
    VerbOption { "--monitor", nullptr,
                 N_ ("prints every message of all inputs, also of those that come later") },
    VerbOption { "--seconds", "SECONDS", N_ ("ends the monitor by itself") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

/** A number of milliseconds as "12.345". */
juce::String secondsText (juce::int64 ms)
{
    return juce::String (ms / 1000) + "." + juce::String (ms % 1000).paddedLeft ('0', 3);
}

juce::String wordsOf (std::span<const uint8_t> message)
{
    if (message.size() != 3)
        return message[0] == 0xf0 ? "SysEx" : juce::String();
    const juce::MidiMessage midi (message[0], message[1], message[2]);
    const auto channel = tr ("channel %1", midi.getChannel());
    const juce::String data (message[1]), value (message[2]);
    if (midi.isNoteOnOrOff())
        return midi.isNoteOn() ? tr ("%1 note %2 on %3", channel, data, value)
                               : tr ("%1 note %2 off", channel, data);
    if (midi.isController())
        return tr ("%1 controller %2 = %3", channel, data, value);
    if (midi.isPitchWheel())
        return tr ("%1 pitch bend %2", channel, midi.getPitchWheelValue());
    return {};
}

/** Prints messages as they come. */
class Monitor : public MidiReceiver
{
public:
    void midiArrived (const juce::String& port, std::span<const uint8_t> message) override
    {
        if (message.empty())
            return;
        printLine (
            secondsText (static_cast<juce::int64> (juce::Time::getMillisecondCounter() - begin)) + "  " + port
            + "  "
            + juce::String::toHexString (message.data(), static_cast<int> (message.size())).toUpperCase()
            + "  " + wordsOf (message));
    }

private:
    const uint32_t begin = juce::Time::getMillisecondCounter();
};

void list (const MidiPortService& ports)
{
    for (const auto direction : { MidiDirection::input, MidiDirection::output })
        for (const auto& port : ports.ports (direction))
            printLine (juce::String (direction == MidiDirection::input ? "input   " : "output  ") + port.name
                       + (port.place > 0 ? " (" + juce::String (port.place + 1) + ")" : juce::String()));
    if (ports.ports (MidiDirection::input).empty() && ports.ports (MidiDirection::output).empty())
        printLine (tr ("(No MIDI I/O available)"));
}

void monitor (MidiPortService& ports, juce::int64 seconds)
{
    const Interruption interruption;
    Monitor printer;
    MidiPortSet set (ports, printer);
    const auto end = juce::Time::getMillisecondCounter() + static_cast<uint32_t> (seconds) * 1000u;
    for (auto seen = ports.generation() - 1u; !interruption.isInterrupted();)
    {
        if (seen != ports.generation())
        {
            seen = ports.generation();
            for (const auto& row : set.rows (MidiDirection::input))
                if (!row.isWanted)
                {
                    set.setInputEnabled (row.name, true, row.index);
                    printLine (tr ("Listening to %1", row.title()));
                }
        }
        juce::Thread::sleep (20);
        if (seconds > 0 && static_cast<int32_t> (end - juce::Time::getMillisecondCounter()) <= 0)
            break;
    }
}
}

int runMidi (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    const auto seconds = given.wholeNumber ("--seconds", 0, 1, longestRun);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText (
            "midi --list | --monitor [--seconds SECONDS]",
            N_ ("Shows the MIDI ports of the ALSA sequencer and of JACK, and what comes in through them."),
            options));
        return ExitCode::success;
    }
    if (given.has ("--list") == given.has ("--monitor") || !given.positional.isEmpty())
        return failWith (tr ("midi takes --list or --monitor; see platterdex midi --help."));

    MidiPortService ports (MidiPortService::systemBackends());
    ports.lookNow();
    if (given.has ("--list"))
        list (ports);
    else
        monitor (ports, *seconds);
    return ExitCode::success;
}
