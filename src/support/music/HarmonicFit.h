#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>

/** Tempo and key relations of two tracks, as a DJ counts them. */
namespace Fit
{
struct TempoRelation
{
    double change = 0.0; ///< of the other track's tempo to meet this one's: 0.03 is 3 % faster
    int octave = 0;      ///< -1: the other one runs at half the tempo, 1: at double
    bool isKnown = false;
};

/** The smallest change of tempo, with half and double allowed. @param bpm, other   0 is unknown */
inline TempoRelation tempoRelation (double bpm, double other)
{
    if (bpm <= 0.0 || other <= 0.0)
        return {};
    TempoRelation best { .change = 9.0, .isKnown = true };
    for (const auto octave : { 0, -1, 1 })
        if (const auto change = bpm / (other / std::exp2 (octave)) - 1.0;
            std::abs (change) < std::abs (best.change) - 1e-9)
            best = { change, octave, true };
    return best;
}

/** 0 for the same tempo to 1 for one that is 12 % off or unknown. */
inline double tempoDistance (double bpm, double other)
{
    const auto relation = tempoRelation (bpm, other);
    return relation.isKnown ? std::min (1.0, std::abs (relation.change) / 0.12) : 1.0;
}

/** Keys are 0 to 11 for C to B major, 12 to 23 for C to B minor. */
constexpr bool isKey (int key)
{
    return key >= 0 && key < 24;
}

/** The place on the circle of fifths, 0 to 11, of a key or its relative: C major and A minor are 0. */
constexpr int placeOnCircle (int key)
{
    const auto major = key < 12 ? key : (key - 12 + 3) % 12;
    return major * 7 % 12;
}

/** Steps on the circle from one key to another, -5 to 6; relatives are 0 apart. */
constexpr int fifthsBetween (int key, int other)
{
    const auto steps = (placeOnCircle (other) - placeOnCircle (key) + 12) % 12;
    return steps > 6 ? steps - 12 : steps;
}

/** 0 for the same key, 0.1 for the relative, a step of fifths more each sixth; 0.5 if one is unknown. */
constexpr double keyDistance (int key, int other)
{
    if (!isKey (key) || !isKey (other))
        return 0.5;
    const auto steps = fifthsBetween (key, other);
    const auto isSameMode = (key < 12) == (other < 12);
    return std::min (1.0, (steps < 0 ? -steps : steps) / 6.0 + (isSameMode ? 0.0 : 0.1));
}
}
