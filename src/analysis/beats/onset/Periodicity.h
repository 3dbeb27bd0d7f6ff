#pragma once

#include <span>
#include <vector>

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
        double confidence = 0.0; ///< 0 to 1
    };

    /** The tempo that best explains the function: what repeats at beats, at their halves and quarters, and at bars,
        at a rate that people tap to. */
    Tempo tempo() const;

    /** The fit of a tempo; about -1 to 1. */
    double score (double bpm) const;

private:
    double rate = 0.0;
    std::vector<float> correlation;
};
