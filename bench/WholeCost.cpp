#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Performer.h"
#include "measure/Timing.h"

#include "plugins/slot/VstSlots.h"
#include "timecode/ControlDisc.h"
#include "timecode/deckmode/TimecodeBrand.h"

#include <juce_events/juce_events.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>

// bench_whole PLUGIN PLUGIN: a block with everything on, part by part: each row adds to what the rows above it play.

namespace
{
constexpr double rate = 44100.0, tempo = 1.04;
constexpr int frames = 128, warmUp = 1500, blocks = 40'000, samples = 8, padPreset = 107, recordDecks = 2;
constexpr size_t quietBlocks =
    96; // in a row: every phase of a stretcher's frames, but hardly an interruption

enum Command
{
    playPause = 1,
    seek = 209,
    eqHigh = 221,
    eqMid = 233,
    eqLow = 245
};

/** Parts of the whole; each includes those before it. */
enum class Part
{
    decks,
    racks,
    pads,
    knobs,
    sampler,
    plugins,
    records
};

class Night
{
public:
    Night (Part p, const juce::StringArray& plugins) : part (p), engine (false, rate, frames)
    {
        static const auto music = MusicLike::make (120.0, rate);
        engine->settings.bypassStretcher = 0;
        for (int deck = 0; deck < deckCount; ++deck)
        {
            engine.putTrack (deck, music, rate);
            engine.deck (deck).marks.bpm = 120.0;
            engine.deck (deck).marks.fixedGrid = 1;
            engine->transport.setPitch (deck, 0.5 + (tempo - 1.0) / engine->decks.pitchRange);
            engine->setParameter (playPause + deck, 1.0f);
            if (part >= Part::racks)
            {
                Performer::turnEffectsOn (engine, deck);
                for (const auto band : { eqHigh, eqMid, eqLow })
                    engine->setParameter (band + deck, 0.3f);
            }
            if (part >= Part::pads)
                Performer::runPad (engine, deck, padPreset);
        }
        if (part >= Part::knobs)
            Performer::holdKnobs (engine, true);
        if (part >= Part::sampler)
            startSampler();
        if (part >= Part::plugins)
            loadPlugins (plugins);
        if (part >= Part::records)
            putRecordsOn();
    }

    /** @returns nanoseconds of the block */
    int64_t play (int block)
    {
        if (part >= Part::knobs)
            Performer::turnKnobs (engine, block);
        if (record)
            feed (block);
        else
            for (int deck = 0; deck < deckCount; ++deck)
                if (engine.deck (deck).head.position > 0.9 * engine.deck (deck).track.loadedFrames)
                    engine->setParameter (seek + deck, 0.1f);
        return engine.processBlock();
    }

    int soundingDecks() const
    {
        int sounding = 0;
        for (int deck = 0; deck < deckCount; ++deck)
            sounding += engine.output().getRMSLevel (4 + 2 * deck, 0, frames) > 1e-4f ? 1 : 0;
        return sounding;
    }

    /** Frames of the file at which the first deck reads. */
    double place() { return engine.deck (0).head.position; }

    bool samplerSounds() const { return engine.output().getRMSLevel (12, 0, frames) > 1e-4f; }

private:
    void startSampler()
    {
        Performer::fillSampler (engine->sampler, rate, samples);
        engine->sampler.setSync (true);
        for (int pad = 0; pad < samples; ++pad)
        {
            engine->sampler.padPress (pad, Sampler::strongest);
            engine.processBlock(); // one after the other, as hands do
        }
    }

    void loadPlugins (const juce::StringArray& plugins)
    {
        VstSlots::Options options;
        options.keepsSlots = options.hasMessageLoop = false;
        options.scanner.program = juce::File (PX_SCANNER);
        options.scanner.disablePopups = true;
        slots.emplace (*engine, options);
        for (int deck = 0; deck < plugins.size(); ++deck)
            if (const auto fault = slots->loadNow (deck, plugins[deck]); fault.isNotEmpty())
                std::printf ("%s\n", fault.toRawUTF8());
    }

    void putRecordsOn()
    {
        const auto& disc = controlMedia()[0];
        record = std::make_unique<SteadyRecord> (disc, rate, (warmUp + blocks) * frames, tempo);
        for (int deck = 0; deck < recordDecks; ++deck)
        {
            auto& timecode = engine->timecodes[static_cast<size_t> (deck)];
            timecode.setBrand (timecodeBrandOf (disc));
            timecode.setMode (TimecodeDeck::Mode::relative);
        }
        engine.processBlock();
        engine->deliverMessages();
    }

    void feed (int block)
    {
        const auto first = (block + warmUp) * frames;
        for (int deck = 0; deck < recordDecks; ++deck)
        {
            engine.inputs().copyFrom (2 * deck, 0, record->left.data() + first, frames);
            engine.inputs().copyFrom (2 * deck + 1, 0, record->right.data() + first, frames);
        }
        for (int deck = 0; deck < deckCount; ++deck)
            if (engine.deck (deck).head.position > 0.9 * engine.deck (deck).track.loadedFrames)
                engine->setParameter (seek + deck, 0.1f);
    }

    const Part part;
    BenchEngine engine;
    std::unique_ptr<SteadyRecord> record;
    std::optional<VstSlots> slots;
};

void measure (const char* what, Part part, const juce::StringArray& plugins)
{
    Night night (part, plugins);
    Timing::Durations durations (blocks);
    int heard = 0;
    auto place = night.place(), passed = 0.0;
    for (int block = -warmUp; block < blocks; ++block)
    {
        const auto took = night.play (block);
        if (block >= 0)
            durations.add (took);
        heard += night.soundingDecks();
        const auto moved = night.place() - place;
        passed += std::abs (moved) < 10.0 * frames ? moved : 0.0; // but for jumps
        place = night.place();
    }
    const auto share = 100.0 / (frames / rate * 1e9);
    std::printf ("%-44s %8.3f %% %8.3f %% %8.3f %% %8.3f %%  decks heard %.2f%s  speed %.3f\n", what,
                 durations.mean() * share, durations.leastMean (quietBlocks) * share,
                 durations.quantile (0.9999) * share, durations.quantile (1.0) * share,
                 heard / static_cast<double> (warmUp + blocks), night.samplerSounds() ? ", sampler" : "",
                 passed / (static_cast<double> (warmUp + blocks) * frames));
    std::fflush (stdout);
}
}

int main (int count, char** arguments)
{
    juce::StringArray plugins;
    for (int i = 1; i < count; ++i)
        plugins.add (juce::File::getCurrentWorkingDirectory()
                         .getChildFile (juce::String::fromUTF8 (arguments[i]))
                         .getFullPathName());
    if (plugins.isEmpty() || plugins.size() > deckCount)
        return std::puts ("usage: bench_whole PLUGIN..., one to four"), 2;
    const juce::ScopedJuceInitialiser_GUI toolkit;
    Machine::print();
    std::printf (
        "Blocks of %d frames at %.0f Hz, shares of a block on one core; each row adds to those above.\n",
        frames, rate);
    std::printf ("%-44s %10s %10s %10s %10s\n", "", "mean", "quietest", "99.99 %", "maximum");
    measure ("four decks, key lock, +4 %", Part::decks, plugins);
    measure ("equalisers, filter and three effects a deck", Part::racks, plugins);
    measure ("a pad a deck", Part::pads, plugins);
    measure ("two knobs a deck, all turning", Part::knobs, plugins);
    measure ("eight synced samples", Part::sampler, plugins);
    measure ("plug-ins", Part::plugins, plugins);
    measure ("control discs on two of the decks", Part::records, plugins);
}
