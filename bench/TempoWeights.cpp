#include "measure/DecodedFile.h"

#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/onset/Periodicity.h"

#include <cmath>
#include <cstdio>
#include <iostream>
#include <string>

// bench_tempo_weights < LIST: the sensitivity of the tracker's choice of a tempo to each of its weights. A line of LIST is
// "LOW HIGH FILE", the true tempos between which a song moves; bench/beats/table.py --list writes it. Prints the share of songs
// whose tempo is right, folded, with each weight at a half and at one and a half times its value.

namespace
{
struct Song
{
    double low = 0.0, high = 0.0;
    Periodicity onsets;
};

struct Weight
{
    const char* name;
    double TempoWeights::*value;
};

constexpr Weight weights[] { { "division", &TempoWeights::division },
                             { "beat", &TempoWeights::beat },
                             { "bar", &TempoWeights::bar },
                             { "contrast", &TempoWeights::contrast },
                             { "compoundContrast", &TempoWeights::compoundContrast },
                             { "halves", &TempoWeights::halves },
                             { "centreBpm", &TempoWeights::centreBpm },
                             { "compoundCentreBpm", &TempoWeights::compoundCentreBpm },
                             { "spreadOctaves", &TempoWeights::spreadOctaves } };

double folded (double bpm)
{
    while (bpm > 165.0)
        bpm /= 2.0;
    while (bpm > 0.0 && bpm < 65.0)
        bpm *= 2.0;
    return bpm;
}

bool isRight (const Song& song, double bpm)
{
    const auto low = folded (song.low), high = folded (song.high), found = folded (bpm);
    constexpr auto tolerance = 0.04;
    return std::abs (found / low - 1.0) <= tolerance || std::abs (found / high - 1.0) <= tolerance
           || (low <= found && found <= high);
}

double shareRight (const std::vector<Song>& songs, const TempoWeights& with)
{
    auto right = 0;
    for (const auto& song : songs)
        right += isRight (song, song.onsets.tempo (with).bpm) ? 1 : 0;
    return 100.0 * right / static_cast<double> (songs.size());
}

Periodicity onsetsOf (const DecodedFile& file)
{
    COnsetTrackingIntern stage;
    stage.init (file.sampleRate, 1);
    std::vector<float> mono (static_cast<size_t> (file.frames()), 0.0f);
    for (const auto& channel : file.channels)
        for (size_t i = 0; i < mono.size(); ++i)
            mono[i] += channel[i];
    stage.process (mono);
    stage.flush();
    const auto function = OnsetFunction::make (stage, 0, stage.numFrames());
    return { function.sum, function.frameRate, 16.0 };
}
}

int main()
{
    std::vector<Song> songs;
    double low = 0.0, high = 0.0;
    std::string path;
    while (std::cin >> low >> high && std::getline (std::cin >> std::ws, path))
        if (const auto file = DecodedFile::read (juce::File::getCurrentWorkingDirectory().getChildFile (
                juce::CharPointer_UTF8 (path.c_str())));
            file.frames() > 0)
            songs.push_back ({ low, high, onsetsOf (file) });
    if (songs.empty())
    {
        std::fprintf (stderr,
                      "usage: bench_tempo_weights < LIST, of lines \"LOW HIGH FILE\" with tempos in BPM\n");
        return 1;
    }
    std::printf ("%zu songs, %.0f %% right\n%-18s %6s %6s\n", songs.size(), shareRight (songs, {}), "",
                 "x 0.5", "x 1.5");
    for (const auto& weight : weights)
    {
        std::printf ("%-18s", weight.name);
        for (const auto factor : { 0.5, 1.5 })
        {
            TempoWeights changed;
            changed.*weight.value *= factor;
            std::printf (" %5.0f%%", shareRight (songs, changed));
        }
        std::printf ("\n");
    }
}
