// The long sets of docs/sets turn every knob of mixer and effect racks, and of the loops. They are played here from start
// to end, with the real-time sanitizer's run time around each block where the program is linked with it.

#include "adec/BuiltDecoder.h"
#include "engine/commands/EffectCommands.h"
#include "engine/commands/LoopGridCommands.h"
#include "engine/commands/MixerCommands.h"
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

void expectAllTurned (const std::set<int>& turned, const CommandFamily& family, int decks)
{
    for (int deck = 0; deck < decks; ++deck)
        for (int which = 0; which < family.whichCount; ++which)
        {
            const auto number = family.first + which * family.whichStride + deck * family.deckStride;
            EXPECT_TRUE (turned.contains (number)) << CommandTable::constant (number);
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
    int64_t frames = 0, above = 0, silent = 0;
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
                {
                    blockLoudest = std::max (blockLoudest, level);
                    above += level > 1.0 ? 1 : 0;
                }
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
    // The limiter does not look ahead: what passes above full scale is the first samples of a rise.
    EXPECT_LT (loudest, 2.0);
    EXPECT_LT (above, frames / 100);
}
}

TEST (DeskSet, TurnsEveryKnobOfTheMixerAndTheRacks)
{
    const auto turned = commandsOf (readSet ("desk.txt"));
    const auto expectTurned = [&turned] (const CommandFamily& family)
    { expectAllTurned (turned, family, family.deckCount); };
    for (const auto& family : CommandTable::mixerFamilies)
        expectTurned (family);
    for (const auto& family : CommandTable::effectFamilies)
        expectTurned (family);
    for (const auto* constant : { "KEY_LOCK_A", "KEY_TUNING_A", "KEY_RESET_A", "PITCH_A", "PITCH_RESET_A" })
        expectTurned (*CommandTable::find (CommandTable::numberOf (constant)).family);
}

TEST (DeskSet, SoundsFiniteAndBoundedWithoutAllocating)
{
    expectFiniteAndBounded (readSet ("desk.txt"));
}

TEST (LoopSet, GoesThroughEveryLoopCommandWithoutAllocating)
{
    const auto script = readSet ("loops.txt");
    const auto turned = commandsOf (script);
    for (const auto& family : CommandTable::loopGridFamilies)
        expectAllTurned (turned, family, 2);
    expectFiniteAndBounded (script);
}
