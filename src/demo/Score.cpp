#include "demo/Score.h"

#include "demo/PortableMath.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

namespace
{
constexpr int stepsPerBar = 16;

double strength (char c) noexcept
{
    switch (c)
    {
    case 'X':
        return 1.0;
    case 'o':
        return 0.32;
    default:
        return 0.78;
    }
}

bool strikes (char c) noexcept
{
    return c == 'x' || c == 'X' || c == 'o';
}

/** The lowest note of a pitch class that is not below `low`. */
int placedFrom (int low, int pitchClass) noexcept
{
    return low + ((pitchClass - low) % 12 + 12) % 12;
}

/** The one note that a digit or a letter of a pattern means. */
std::optional<int> noteFor (char c, const Song& song, const Chord& chord, int low) noexcept
{
    if (c >= '1' && c <= '9')
    {
        const auto tone = c - '1';
        return placedFrom (low, chord.root) + chord.tones[static_cast<size_t> (tone % 4)] + 12 * (tone / 4);
    }
    for (const auto first : { 'a', 'A' })
        if (c >= first && c <= first + 6)
            return placedFrom (low, song.tonic) + song.scale[static_cast<size_t> (c - first)]
                   + (first == 'A' ? 12 : 0);
    return std::nullopt;
}

/** The bar of a repeating pattern. */
const char* patternBar (const char* pattern, int barInSection) noexcept
{
    const auto bars = static_cast<int> (std::strlen (pattern)) / stepsPerBar;
    return pattern + stepsPerBar * (barInSection % bars);
}
}

Score::Score (const Song& s) : song (s), random (s.seed)
{
    int bar = 0;
    for (const auto& section : song.sections)
    {
        playSection (section, bar);
        bar += section.bars;
    }
    std::ranges::stable_sort (all, {}, &Stroke::frame);
}

void Score::playSection (const SongSection& section, int firstBar)
{
    for (int bar = 0; bar < section.bars; ++bar)
        playBar (section, bar, firstBar + bar);
    playEffects (section, firstBar);
}

void Score::playBar (const SongSection& section, int barInSection, int bar)
{
    const auto plays = [&] (char layer)
    {
        return std::strchr (section.layers, layer) != nullptr
               && (layer != 'F' || barInSection == section.bars - 1);
    };
    for (const auto& line : song.drums)
        if (plays (line.layer))
            playDrums (line, barInSection, bar);
    for (const auto& line : song.tones)
        if (plays (line.layer))
            playTones (line, barInSection, bar);
}

void Score::playDrums (const DrumLine& line, int barInSection, int bar)
{
    const auto* steps = patternBar (line.pattern, barInSection);
    for (int step = 0; step < stepsPerBar; ++step)
        if (strikes (steps[step]))
        {
            // A hand never strikes twice alike; a kick drum that differs only sounds unsure.
            const auto accent = line.bus == Bus::kick ? 1.0 : 0.92 + 0.16 * random.nextDouble();
            add (stepFrame (bar, step), drumShot (line), line.bus,
                 accent * strength (steps[step]) * PortableMath::fromDecibels (line.gainDb), line.pan);
        }
}

void Score::playTones (const ToneLine& line, int barInSection, int bar)
{
    const auto& chord = song.chords[static_cast<size_t> (barInSection) % song.chords.size()];
    const auto* steps = patternBar (line.pattern, barInSection);
    for (int step = 0; step < stepsPerBar; ++step)
    {
        int held = 1;
        while (step + held < stepsPerBar && steps[step + held] == '-')
            ++held;
        // The length of the written steps, not of the swung ones, so that equal notes share one rendering.
        const auto gate = static_cast<int> (held * song.track.beatFrames() / 4.0);
        const auto gain = strength (steps[step]) * PortableMath::fromDecibels (line.gainDb);
        const auto play = [&] (int note, double level)
        { add (stepFrame (bar, step), toneShot (line.patch, note, gate), line.bus, level, line.pan); };

        if (strikes (steps[step]))
            for (const auto tone : chord.tones)
                play (placedFrom (line.lowNote, chord.root + tone), 0.5 * gain);
        else if (const auto note = noteFor (steps[step], song, chord, line.lowNote))
            play (*note, gain);
    }
}

void Score::playEffects (const SongSection& section, int firstBar)
{
    const auto barSeconds = 4.0 * 60.0 / song.track.bpm;
    if (section.riserBars > 0)
    {
        const auto& shot =
            shots.try_emplace ({ &section, 0, 0 }, renderRiser (section.riserBars * barSeconds, song.seed))
                .first->second;
        add (stepFrame (firstBar + section.bars - section.riserBars, 0), shot, Bus::effects, 0.42, 0.0);
    }
    if (section.crash)
    {
        const auto& shot = shots.try_emplace ({ nullptr, 0, 0 }, renderCrash (3.0, song.seed)).first->second;
        add (stepFrame (firstBar, 0), shot, Bus::effects, 0.33, 0.0);
    }
}

const Shot& Score::drumShot (const DrumLine& line)
{
    // A few different strokes of each drum keep fast hats from sounding like a machine gun.
    const auto variation = line.bus == Bus::kick ? 0 : random.nextInt() % 3;
    const auto key = std::tuple { static_cast<const void*> (&line.patch), variation, 0 };
    if (const auto found = shots.find (key); found != shots.end())
        return found->second;
    return shots.emplace (key, renderDrum (line.patch, song.seed + 7919 * (variation + 1))).first->second;
}

const Shot& Score::toneShot (const TonePatch& patch, int note, int gateFrames)
{
    const auto key = std::tuple { static_cast<const void*> (&patch), note, gateFrames };
    if (const auto found = shots.find (key); found != shots.end())
        return found->second;
    return shots.emplace (key, renderTone (patch, note, gateFrames, song.seed + 101 * note)).first->second;
}

void Score::add (int64_t frame, const Shot& shot, Bus bus, double gain, double pan)
{
    // Constant power, 1 in the middle.
    const auto left = std::sqrt (1.0 - pan), right = std::sqrt (1.0 + pan);
    all.push_back (
        { frame, &shot, bus, static_cast<float> (gain * left), static_cast<float> (gain * right) });
}

int64_t Score::stepFrame (int bar, int step) const noexcept
{
    const auto steps = bar * stepsPerBar + step + (step % 2 == 1 ? song.swing : 0.0);
    // No function of the library, whose last bit may differ between machines; steps are never negative.
    // NOLINTNEXTLINE(bugprone-incorrect-roundings)
    return song.track.firstBeatFrames + static_cast<int64_t> (steps * song.track.beatFrames() / 4.0 + 0.5);
}
