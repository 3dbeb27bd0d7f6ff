#pragma once

#include <span>
#include <vector>

/** The weights of Periodicity::tempo. docs/accuracy.md tells what half and one and a half of each changes. */
struct TempoWeights
{
    double division = 0.9; ///< of the halves and quarters of a beat, or its thirds
    double beat = 1.3;
    double bar = 2.65;              ///< of four and eight beats, or three and six
    double contrast = 8.0;          ///< of halves that stand in threes, against a beat in two parts
    double compoundContrast = 16.0; ///< of thirds that don't stand in threes, against a beat in three parts
    double halves = 0.8; ///< of what repeats better at half the beat than at its thirds, against three parts

    /** The tempos that people tap to: a bell over the logarithm of the tempo (van Noorden and Moelants, Resonance in the
        perception of musical pulse, 1999), and where it stands for a beat in three parts, whose parts count with it. */
    double centreBpm = 120.0, compoundCentreBpm = 93.0, spreadOctaves = 1.0;
};

/** The autocorrelation of an onset function. */
class Periodicity
{
public:
    /** @param frameRate    values per second
        @param maxSeconds   longest lag that is asked for */
    Periodicity (std::span<const float> function, double frameRate, double maxSeconds);

    /** The correlation at a lag in seconds, 1 at lag 0; between values interpolated, beyond the longest lag 0. */
    double at (double seconds) const;

    struct Tempo
    {
        double bpm = 0.0;        ///< 0 if the function never moves
        double confidence = 0.0; ///< 0 to 1: the fit
        double margin = 0.0;     ///< how far the best other tempo lies behind, as a part of the fit; 0 to 1
        bool isCompound = false; ///< the beat falls into three, as in 6/8 and 12/8
    };

    /** The tempo that best explains the function: a beat that repeats better than its thirds and quarters more or less, whose
        halves or thirds repeat, and whose bars of four or three do, at a rate that people tap to. Octaves of it are no
        other tempo to the margin. */
    Tempo tempo (const TempoWeights& = {}) const;

    /** The fit of a tempo with the beat in two or in three parts; about -1 to 1. */
    double score (double bpm, bool isCompound, const TempoWeights& = {}) const;

private:
    /** By how much a pulse repeats better in groups of three than in groups of two; about -1 to 1, 0 for even clicks. */
    double groupsOfThree (double seconds) const;

    double rate = 0.0;
    std::vector<float> correlation;
};
