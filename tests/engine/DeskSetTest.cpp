// The long sets of docs/sets turn every knob of mixer and effect racks, and of the loops. They are played here from start
// to end, with the real-time sanitizer's run time around each block where the program is linked with it.

#include "adec/BuiltDecoder.h"
#include "engine/CommandTable.h"
#include "offline/SetPerformance.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

extern "C"
{
    __attribute__ ((weak)) void __rtsan_ensure_initialized();
}

namespace
{
constexpr double rate = 44100.0;

SetScript readSet (const char* name)
{
    const auto text = juce::File (PX_SETS).getChildFile (name).loadFileAsString().toStdString();
    const auto parsed = parseSetScript (text);
    if (const auto* error = std::get_if<SetScriptError> (&parsed))
        ADD_FAILURE() << error->line << ": " << error->sentence;
    return std::holds_alternative<SetScript> (parsed) ? std::get<SetScript> (parsed) : SetScript();
}

std::set<int> commandsOf (const SetScript& script)
{
    std::set<int> turned;
    for (const auto& event : script.events)
        if (const auto* command = std::get_if<SetScript::Command> (&event.action))
            turned.insert (command->number);
    return turned;
}

/** The set must write all commands that share a row with one of these numbers. */
void expectAllTurned (const std::set<int>& turned, std::initializer_list<std::pair<int, int>> spans,
                      int decks = deckCount)
{
    std::set<const CommandRow*> rows;
    for (const auto& [first, last] : spans)
        for (int number = first; number <= last; ++number)
            rows.insert (CommandTable::find (number).row);
    for (const int number : CommandTable::numbers())
    {
        const auto command = CommandTable::find (number);
        const auto mustTurn = rows.contains (command.row) && command.deck < decks;
        EXPECT_TRUE (!mustTurn || turned.contains (number)) << CommandTable::constant (number);
    }
}

/** Noise is heard for most of the time, finite, and within what the limiter leaves. */
void expectFiniteAndBounded (SetScript script)
{
    if (__rtsan_ensure_initialized != nullptr)
        __rtsan_ensure_initialized();
    const TemporaryFolder folder;
    const auto noise = EncodedFiles::writeWav (
        EncodedFiles::makeNoise (2, static_cast<int> (80.0 * rate), rate), rate, folder.file ("noise.wav"));

    // Noise stands in for the tracks: it hits every band at every moment.
    for (auto& event : script.events)
        if (auto* load = std::get_if<SetScript::Load> (&event.action))
            load->path = noise.getFileName().toStdString();

    OfflineHost::Options options;
    options.root = folder.file ("root");
    options.decoderLibrary = juce::File (builtDecoder());
    options.sampleRate = rate;
    options.blockFrames = 256;
    OfflineHost host (options);
    int64_t frames = 0, silent = 0;
    double loudest = 0.0;
    bool finite = true;
    host.sink = [&] (const float* const* channels, int count)
    {
        double blockLoudest = 0.0;
        for (int channel = 0; channel < CPlatterdex::outputChannels; ++channel)
            for (int i = 0; i < count; ++i)
            {
                const auto level = std::abs (static_cast<double> (channels[channel][i]));
                finite = finite && std::isfinite (level);
                if (channel < 2)
                    blockLoudest = std::max (blockLoudest, level);
            }
        loudest = std::max (loudest, blockLoudest);
        frames += count;
        silent += blockLoudest < 1.0e-3 ? count : 0;
        return finite;
    };
    std::vector<std::string> reported;
    ASSERT_TRUE (performSet (script, host, { folder, {}, [&reported] (const auto& line) {
                                                reported.push_back (line.toStdString());
                                            } }));

    EXPECT_TRUE (finite);
    EXPECT_TRUE (reported.empty()) << reported.front();
    EXPECT_LT (silent, frames / 10) << "the decks must be heard for the knobs to mean anything";
    EXPECT_GT (loudest, 0.5);
    EXPECT_LE (loudest, 1.0) << "the master's limiter looks ahead";
}
}

TEST (DeskSet, TurnsEveryKnobOfTheMixerAndTheRacks)
{
    const auto tempoAndKey = { 21, 25, 37, 41, 197 };
    auto turned = commandsOf (readSet ("desk.txt"));
    expectAllTurned (turned, { { 213, 353 } });
    for (const int number : tempoAndKey)
        expectAllTurned (turned, { { number, number } });
}

TEST (DeskSet, SoundsFiniteAndBoundedWithoutAllocating)
{
    expectFiniteAndBounded (readSet ("desk.txt"));
}

TEST (LoopSet, GoesThroughEveryLoopCommandWithoutAllocating)
{
    const auto script = readSet ("loops.txt");
    const auto turned = commandsOf (script);
    expectAllTurned (turned, { { 113, 152 }, { 165, 172 }, { 457, 460 } }, 2);
    expectFiniteAndBounded (script);
}

TEST (KnobSet, TurnsEverySmartKnobWithoutAllocating)
{
    const auto script = readSet ("knobs.txt");
    expectAllTurned (commandsOf (script), { { 173, 188 } });
    expectFiniteAndBounded (script);
}

TEST (PadSet, PressesEveryPadWithoutAllocating)
{
    const auto script = readSet ("pads.txt");
    expectAllTurned (commandsOf (script), { { 377, 408 } });
    expectFiniteAndBounded (script);
}
