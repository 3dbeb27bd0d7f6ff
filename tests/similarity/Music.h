#pragma once

#include "similarity/extract/SoundExtractor.h"
#include "similarity/sound/Description.h"

#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <vector>

/** Made-up music, and what is heard of it. */
namespace Music
{
struct Style
{
    double bpm = 120.0, brightness = 0.5; ///< 0 to 1
    int tonic = 0;                        ///< semitones above C
    bool isMinor = false;
    double speed = 1.0, tuningCents = 0.0;
    unsigned seed = 1;
};

/** Chords of a key with overtones, over noise on the beats. Mono, full scale is 1. */
inline std::vector<float> make (const Style& style, double seconds, double rate)
{
    static constexpr int majorRoots[] { 0, 5, 7, 0 }, minorRoots[] { 0, 5, 0, 7 };
    std::vector<float> made (static_cast<size_t> (seconds * rate));
    const auto beat = 60.0 / style.bpm;
    const auto tune = std::exp2 (style.tuningCents / 1200.0) * style.speed;
    const auto barFrames = static_cast<size_t> (4.0 * beat / style.speed * rate);
    for (size_t begin = 0, bar = 0; begin < made.size(); begin += barFrames, ++bar)
    {
        const auto root = style.isMinor ? minorRoots[bar % 4] : majorRoots[bar % 4];
        const auto third = style.isMinor && root != 7 ? 3 : 4;
        for (const auto note : { root - 12, root, root + third, root + 7 })
            for (int overtone = 1; overtone <= 4; ++overtone)
            {
                const auto hertz = 261.6256 * std::exp2 ((note + style.tonic) / 12.0) * tune * overtone;
                const auto turn = 2.0 * std::numbers::pi * hertz / rate;
                const auto step = std::polar (1.0, turn);
                auto wave = std::polar (0.06 * std::pow (0.25 + 0.6 * style.brightness, overtone),
                                        turn * static_cast<double> (begin));
                for (auto i = begin; i < std::min (begin + barFrames, made.size()); ++i, wave *= step)
                    made[i] += static_cast<float> (wave.imag());
            }
    }
    std::minstd_rand random (style.seed);
    const auto beatFrames = beat / style.speed * rate;
    const auto fade = std::exp (-(40.0 - 30.0 * style.brightness) * style.speed / rate);
    auto level = 0.0, next = 0.0;
    for (size_t i = 0; i < made.size(); ++i, level *= fade)
    {
        if (static_cast<double> (i) >= next)
        {
            level = 0.4;
            next += beatFrames;
        }
        made[i] += static_cast<float> (level * (static_cast<double> (random()) / 2147483646.0 - 0.5));
    }
    return made;
}

inline std::optional<RawSound> hear (const std::vector<float>& mono, double rate, size_t block = 10007)
{
    SoundExtractor extractor (rate);
    for (size_t i = 0; i < mono.size(); i += block)
        extractor.add (mono.data() + i, mono.data() + i,
                       static_cast<int> (std::min (block, mono.size() - i)));
    return extractor.finish();
}

/** A made-up description; those of near seeds are no more alike than others. */
inline SimilarityDescription describe (unsigned seed)
{
    std::minstd_rand random (seed * 7919 + 1);
    SimilarityDescription made;
    for (auto& value : made.whole)
        value = static_cast<uint8_t> (90 + random() % 76);
    made.partCount = static_cast<uint8_t> (1 + seed % SimilarityDescription::mostParts);
    for (auto& part : made.parts)
        for (auto& value : part)
            value = static_cast<uint8_t> (90 + random() % 76);
    made.tempoBpm = 100.0f + static_cast<float> (seed % 60);
    made.seconds = 60.0f + static_cast<float> (seed);
    made.key = static_cast<int8_t> (seed % 24);
    return made;
}
}
