#include "demo/DemoTracks.h"
#include "instruments/slicegate/FactoryPresets.h"
#include "measure/BenchEngine.h"

#include <juce_events/juce_events.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <utility>

// bench_pads: plays every factory pattern of the Slicegate over drums, a bass, a song and a tone, and measures whether what is
// heard is what the pattern says. The deck without a pad is the measure; nothing of the pads' own reading is used but the
// curves.
// usage: bench_pads [--all]     --all prints a row a pattern, not one a group. Ends with 1 if a pattern fails.
//        bench_pads --cost     what pads add to a block

namespace
{
constexpr double rate = 44100.0, bpm = 120.0;
constexpr int beat = 22050, window = 4 * beat, block = 126, trackBeats = 24, startBeat = 10;
constexpr int firstPad = 377;
constexpr int settled = 160;   ///< frames after a jump in which it is still faded
constexpr int rampFrames = 64; ///< of a gate

using Samples = std::vector<float>;

struct Material
{
    const char* name;
    juce::AudioBuffer<float> audio;
};

juce::AudioBuffer<float> made (const std::function<double (double seconds, double beats)>& sound)
{
    juce::AudioBuffer<float> audio (2, trackBeats * beat);
    for (int i = 0; i < audio.getNumSamples(); ++i)
        for (int side = 0; side < 2; ++side)
            audio.setSample (side, i, static_cast<float> (sound (i / rate, static_cast<double> (i) / beat)));
    return audio;
}

juce::AudioBuffer<float> drums()
{
    juce::Random random (7);
    return made (
        [&random, last = 0.0] (double, double beats) mutable
        {
            const auto since = [] (double of, double from, double each)
            { return std::fmod (of - from + 64.0 * each, each) * beat / rate; };
            const auto kick = since (beats, 0.0, 1.0), snare = since (beats, 1.0, 2.0),
                       hat = since (beats, 0.5, 1.0);
            // Between two drawn values lies a line: music has little at the upper end.
            const auto next = random.nextDouble() * 2.0 - 1.0;
            const auto noise = (std::exchange (last, next) + next) * 0.7;
            return 0.6 * std::exp (-kick / 0.09)
                       * std::sin (40.0 * (1.0 - std::exp (-kick / 0.05)) + 300.0 * kick)
                   + 0.3 * std::exp (-snare / 0.07) * noise + 0.15 * std::exp (-hat / 0.02) * noise;
        });
}

juce::AudioBuffer<float> bass()
{
    return made (
        [phase = 0.0, side = 0] (double, double beats) mutable
        {
            constexpr std::array notes { 41.2, 55.0, 49.0, 61.7, 36.7, 46.2, 65.4, 51.9 };
            const auto note = notes[static_cast<size_t> (beats * 2.0) % notes.size()];
            if (side++ % 2 == 0)
                phase = std::fmod (phase + note / rate, 1.0);
            auto sum = 0.0;
            for (int k = 1; k <= 12; ++k)
                sum += std::sin (2.0 * std::numbers::pi * k * phase) / k;
            return 0.35 * sum;
        });
}

/** A part of a demo track, at its own tempo: its beats don't matter to what is measured. */
juce::AudioBuffer<float> song()
{
    const auto whole = renderDemoTrack (demoTracks()[1]);
    juce::AudioBuffer<float> part (2, trackBeats * beat);
    for (int side = 0; side < 2; ++side)
        part.copyFrom (side, 0, whole, side, whole.getNumSamples() / 2, part.getNumSamples());
    return part;
}

std::vector<Material> materials()
{
    std::vector<Material> all;
    all.push_back ({ "drums", drums() });
    all.push_back ({ "bass", bass() });
    all.push_back ({ "song", song() });
    all.push_back ({ "tone", made ([] (double t, double)
                                   { return 0.7 * std::sin (2.0 * std::numbers::pi * 2205.0 * t); }) });
    return all;
}

/** A deck that plays a material, with and without a pad. */
class Deck
{
public:
    explicit Deck (const juce::AudioBuffer<float>& audio)
    {
        auto& deck = engine.deck (0);
        engine.putTrack (0, audio, rate);
        deck.marks.bpm = deck.marks.bpmAverage = bpm;
        deck.marks.fixedGrid = 1;
        deck.tempo.keyLock = 0;
        playFrom (0.0);
        dry.assign (static_cast<size_t> (std::lround (deck.head.position)), 0.0f);
        const auto heard = render (audio.getNumSamples() / block);
        dry.insert (dry.end(), heard.begin(), heard.end());
    }

    struct Run
    {
        int from = 0; ///< frame of the file with the pad's first
        Samples heard;
    };

    Run press (int id)
    {
        auto& pads = engine->slicegates[0];
        pads.loadFactoryPreset (id, 0);
        for (auto* bank : { &pads.timeCurves(), &pads.volumeCurves() })
            bank->setEnabled (0, true);
        playFrom (static_cast<double> (startBeat) * beat);
        render (40);
        Run run;
        run.from = static_cast<int> (std::lround (engine.deck (0).head.position));
        engine->setParameter (firstPad, 1.0f);
        run.heard = render ((window + beat) / block);
        return run;
    }

    Samples dry; ///< by frame of the file

private:
    void playFrom (double frame)
    {
        engine->transport.seekFrames (0, frame);
        if (engine.deck (0).play.on == 0)
            engine->transport.playPause (0);
        render (40);
    }

    Samples render (int blocks)
    {
        Samples heard;
        for (int i = 0; i < blocks; ++i)
        {
            engine.processBlock();
            const auto* out = engine.output().getReadPointer (4);
            heard.insert (heard.end(), out, out + block);
        }
        return heard;
    }

    BenchEngine engine { true, rate, block };
};

/** The pattern as its curves say it, frame by frame. */
struct Expectation
{
    explicit Expectation (int id)
    {
        const auto preset = FactoryPresets::preset (id);
        for (int i = 0; i < window; ++i)
        {
            const auto time = i * 4.0 / window;
            offset.push_back (-2.0 * (1.0 - preset.time.envelope.evaluate (time)) * window);
            level.push_back (preset.volume.envelope.evaluate (time));
        }
        sinceMove.assign (window, 0);
        untilMove.assign (window, 0);
        for (size_t i = 1; i < window; ++i)
            sinceMove[i] =
                std::abs (offset[i] - offset[i - 1]) < 1e-6 && std::abs (level[i] - level[i - 1]) < 1e-4
                    ? sinceMove[i - 1] + 1
                    : 0;
        for (size_t i = window - 1; i-- > 0;)
            untilMove[i] = sinceMove[i + 1] > 0 ? untilMove[i + 1] + 1 : 0;
    }

    /** At the track's speed and one level, away from jumps and the ramps of gates. */
    bool isSettled (size_t i) const { return sinceMove[i] >= settled && untilMove[i] >= rampFrames; }

    double speed (int i) const
    {
        const auto at = static_cast<size_t> (std::max (1, i));
        return 1.0 + offset[at] - offset[at - 1];
    }

    std::vector<double> offset, level;     ///< frames of the file from the deck's own place; 0 to 1
    std::vector<int> sinceMove, untilMove; ///< frames for which offset and level have held, and will
};

double decibels (double ratio)
{
    return ratio > 1e-9 ? 20.0 * std::log10 (ratio) : -180.0;
}

struct Findings
{
    double correlation = 1.0; ///< the least of a stretch with its source
    double repetition = 1.0;  ///< with itself, at the distance of the name
    double duty = 0.0;        ///< the most by which the open part differs, of the whole
    double edge = 0.0;        ///< ms, the most by which a gate's edge strays
    double back = -180.0;     ///< dB, what differs from the deck after the end
    int silent = 0;           ///< stretches without the sound that they should have
    double peak = -180.0;     ///< dB over the deck's

    void take (const Findings& other)
    {
        correlation = std::min (correlation, other.correlation);
        repetition = std::min (repetition, other.repetition);
        duty = std::max (duty, other.duty);
        edge = std::max (edge, other.edge);
        back = std::max (back, other.back);
        silent += other.silent;
        peak = std::max (peak, other.peak);
    }

    bool passes() const
    {
        return correlation > 0.99 && repetition > 0.97 && duty < 0.01 && edge < 1.0 && back < -60.0
               && silent == 0 && peak < 1.0;
    }
};

class Correlation
{
public:
    void add (double a, double b)
    {
        aa += a * a;
        bb += b * b;
        ab += a * b;
        ++count;
    }
    void add (const Correlation& other)
    {
        aa += other.aa;
        bb += other.bb;
        ab += other.ab;
        count += other.count;
    }
    bool isLoud() const { return aa + bb > 2e-6 * count && count > 256; }
    double value() const { return ab / std::sqrt (aa * bb + 1e-30); }

private:
    double aa = 0.0, bb = 0.0, ab = 0.0;
    int count = 0;
};

/** The distance that a name states, in beats; 0 for none. */
double statedRepeat (const std::string& name)
{
    const auto number = [] (std::string text)
    {
        const auto slash = text.find ('/');
        return slash == std::string::npos ? std::atof (text.c_str())
                                          : std::atof (text.c_str()) / std::atof (text.c_str() + slash + 1);
    };
    if (name.ends_with (" Beat Rpt"))
        return number (name);
    if (name.starts_with ("Inf rep "))
        return number (name.substr (8));
    return 0.0;
}

Findings measure (Deck& deck, int id, const std::string& name, bool isTone)
{
    const Expectation expected (id);
    const auto run = deck.press (id);
    Findings found;

    const auto placeOf = [&] (int i)
    {
        return std::clamp (run.from + i + expected.offset[static_cast<size_t> (i)], 1.0,
                           static_cast<double> (deck.dry.size() - 2));
    };
    const auto source = [&] (int i) { return deck.dry[static_cast<size_t> (std::lround (placeOf (i)))]; };

    // Each stretch that plays at the track's speed is the track at the stated distance, on a frame or between two.
    std::array<Correlation, 3> stretch;
    const auto endStretch = [&]
    {
        if (stretch[0].isLoud())
            found.correlation = std::min (
                found.correlation, std::max ({ stretch[0].value(), stretch[1].value(), stretch[2].value() }));
        stretch = {};
    };
    for (int i = 0; i < window; ++i)
    {
        const auto at = static_cast<size_t> (i);
        if (!expected.isSettled (at) || expected.level[at] < 0.05)
        {
            endStretch();
            continue;
        }
        const auto frame = static_cast<size_t> (placeOf (i));
        const auto heard = run.heard[at], level = static_cast<float> (expected.level[at]);
        const auto before = deck.dry[frame] * level, after = deck.dry[frame + 1] * level;
        stretch[0].add (heard, before);
        stretch[1].add (heard, after);
        stretch[2].add (heard, (before + after) / 2.0f);
    }
    endStretch();

    // A name that states a repeat: each round is the first one. A distance between two frames rounds either way.
    if (const auto distance = statedRepeat (name) * beat; distance > 0.0 && !isTone)
    {
        // Of a short round most is a fade: it is compared with the one before, from the third on.
        const auto isLong = distance > 4 * settled;
        Correlation rounds;
        for (int round = isLong ? 1 : 3; (round + 1) * distance <= window; ++round)
        {
            const auto begin = static_cast<int> (std::lround (round * distance));
            const auto last = static_cast<int> (std::lround ((round - 1) * distance));
            std::array<Correlation, 3> shifted;
            for (int i = isLong ? settled : 0; i < static_cast<int> (distance) - 1; ++i)
                for (int k = 0; k < 3; ++k)
                    shifted[static_cast<size_t> (k)].add (
                        run.heard[static_cast<size_t> (begin + i)],
                        isLong ? deck.dry[static_cast<size_t> (run.from + i + k - 1)]
                               : run.heard[static_cast<size_t> (last + i + k - 1)]);
            rounds.add (*std::max_element (shifted.begin(), shifted.end(),
                                           [] (const auto& a, const auto& b)
                                           { return a.value() < b.value(); }));
        }
        found.repetition = rounds.value();
    }

    // Gates, on a tone of 20 frames a cycle: the level of each half cycle.
    if (isTone)
    {
        int open = 0, statedOpen = 0;
        const auto level = [&] (int i)
        {
            double a = 0.0, b = 0.0;
            for (int k = std::max (0, i - 10); k < std::min (window, i + 10); ++k)
            {
                a += run.heard[static_cast<size_t> (k)] * run.heard[static_cast<size_t> (k)];
                b += 0.245;
            }
            return std::sqrt (a / b);
        };
        const auto isGate =
            std::all_of (expected.offset.begin(), expected.offset.end(), [] (double o) { return o == 0.0; });
        for (int i = 0; i < window && isGate; i += 5)
        {
            open += level (i) > 0.5;
            statedOpen += expected.level[static_cast<size_t> (i)] > 0.5;
        }
        found.duty = std::abs (open - statedOpen) * 5.0 / window;
        for (int i = 300; i < window - 300 && isGate; ++i)
        {
            const auto before = expected.level[static_cast<size_t> (i) - 1],
                       after = expected.level[static_cast<size_t> (i)];
            if (std::abs (after - before) < 0.5)
                continue;
            const auto middle = (before + after) / 2.0;
            auto crossing = 300;
            for (int k = -60; k < 300; ++k)
                if ((level (i + k) > middle) == (after > middle))
                {
                    crossing = k;
                    break;
                }
            found.edge = std::max (found.edge, std::abs (crossing) * 1000.0 / rate);
        }
    }

    // The deck goes on as if nothing had been.
    auto difference = 0.0, peak = 0.0, dryPeak = 0.0;
    for (int i = window + 4 * settled; i < static_cast<int> (run.heard.size()); ++i)
        difference = std::max (difference, std::abs (static_cast<double> (run.heard[static_cast<size_t> (i)])
                                                     - deck.dry[static_cast<size_t> (run.from + i)]));
    for (int i = run.from - 2 * window; i < run.from + window; ++i)
        dryPeak = std::max (dryPeak,
                            std::abs (static_cast<double> (deck.dry[static_cast<size_t> (std::max (0, i))])));
    for (const auto sample : run.heard)
        peak = std::max (peak, std::abs (static_cast<double> (sample)));
    found.back = decibels (difference / dryPeak);
    found.peak = decibels (peak / dryPeak);

    constexpr int part = beat / 8;
    for (int begin = 0; begin + part <= window; begin += part)
    {
        double stated = 0.0, heard = 0.0;
        for (int i = begin; i < begin + part; ++i)
        {
            const auto moves = std::abs (expected.speed (i)) > 0.3 && std::abs (expected.speed (i)) < 4.0;
            stated += moves ? std::pow (source (i) * expected.level[static_cast<size_t> (i)], 2.0) : 0.0;
            heard += std::pow (run.heard[static_cast<size_t> (i)], 2.0);
        }
        found.silent += stated / part > 1e-4 && heard < stated / 8.0;
    }
    return found;
}

void print (const std::string& name, int count, const Findings& f)
{
    std::printf ("| %s | %d | %.4f | %.4f | %.2f | %.2f | %.0f | %d | %.2f |%s\n", name.c_str(), count,
                 f.correlation, f.repetition, f.duty * 100.0, f.edge, f.back, f.silent, f.peak,
                 f.passes() ? "" : " FAILS");
}

/** Nanoseconds of a block of 128 frames with four decks, the lower tenth of many short runs. */
double costOfBlock (int preset, bool keyLock, double tempo)
{
    BenchEngine engine (true, rate, 128);
    const auto audio = drums();
    for (int d = 0; d < deckCount; ++d)
    {
        auto& deck = engine.deck (d);
        engine.putTrack (d, audio, rate);
        deck.marks.bpm = deck.marks.bpmAverage = bpm;
        deck.marks.fixedGrid = 1;
        deck.tempo.keyLock = keyLock ? 1 : 0;
        engine->transport.setPitch (d, 0.5 + (tempo - 1.0) / engine->decks.pitchRange);
        engine->transport.playPause (d);
        auto& pads = engine->slicegates[static_cast<size_t> (d)];
        pads.loadFactoryPreset (std::max (preset, FactoryPresets::emptyPreset), 0);
        pads.setPlayMode (0, PlayMode::loop);
    }
    std::vector<double> costs;
    for (int run = 0; run < 7; ++run)
    {
        for (int d = 0; d < deckCount; ++d)
        {
            engine->transport.seekFrames (d, 9.0 * beat + 1000.0 * d);
            auto& pads = engine->slicegates[static_cast<size_t> (d)];
            if (preset != 0 && pads.padState (0) == PadState::idle)
                pads.trigger (0);
        }
        for (int i = 0; i < 100; ++i)
            engine.processBlock();
        for (int chunk = 0; chunk < 100; ++chunk)
        {
            constexpr int blocks = 15;
            int64_t sum = 0;
            for (int i = 0; i < blocks; ++i)
                sum += engine.processBlock();
            costs.push_back (static_cast<double> (sum) / blocks);
        }
    }
    // A machine that others work on as well is only ever slower.
    std::sort (costs.begin(), costs.end());
    return costs[costs.size() / 10];
}

void printCost()
{
    constexpr auto blockNanoseconds = 128.0 / rate * 1e9;
    const auto straight = costOfBlock (0, false, 1.0), locked = costOfBlock (0, true, 1.03);
    std::printf ("Four decks, a block of 128 frames: %.0f ns, %.0f ns with key lock. A pad on each adds:\n",
                 straight, locked);
    std::printf ("| pad | ns | of a core | ns with key lock | of a core |\n|---|---|---|---|---|\n");
    for (const int id : { 105, 128, 120, 703, 708, 726 })
    {
        const auto more = costOfBlock (id, false, 1.0) - straight,
                   moreLocked = costOfBlock (id, true, 1.03) - locked;
        std::printf ("| %d %s | %.0f | %.2f %% | %.0f | %.2f %% |\n", id,
                     std::string (FactoryPresets::nameOf (id)).c_str(), more, more / blockNanoseconds * 100.0,
                     moreLocked, moreLocked / blockNanoseconds * 100.0);
    }
}
}

int main (int argc, char** argv)
{
    if (argc > 1 && juce::String (argv[1]) == "--cost")
        return printCost(), 0;
    const auto printsAll = argc > 1 && juce::String (argv[1]) == "--all";
    std::map<int, Findings> found;
    for (const auto& material : materials())
    {
        Deck deck (material.audio);
        for (const auto& group : FactoryPresets::groups())
            for (const auto& preset : group.presets)
            {
                const auto of = measure (deck, preset.id, std::string (preset.name),
                                         material.name == std::string ("tone"));
                if (!of.passes())
                    print (std::to_string (preset.id) + " " + std::string (preset.name) + " (" + material.name
                               + ")",
                           1, of);
                found[preset.id].take (of);
            }
    }

    std::printf ("| patterns | count | correlation with the source | repeats at the stated distance | duty "
                 "off, %% | edges off, ms | "
                 "deck after the end, dB | silent | peak over the deck, dB "
                 "|\n|---|---|---|---|---|---|---|---|---|\n");
    auto fails = 0;
    for (const auto& group : FactoryPresets::groups())
    {
        Findings all;
        for (const auto& preset : group.presets)
        {
            all.take (found[preset.id]);
            fails += !found[preset.id].passes();
            if (printsAll)
                print (std::to_string (preset.id) + " " + std::string (preset.name), 1, found[preset.id]);
        }
        if (!printsAll)
            print (std::string (group.name), static_cast<int> (group.presets.size()), all);
    }
    return fails > 0 ? 1 : 0;
}
