#pragma once

#include <span>
#include <vector>

/** Spectral flux of one frequency band: the mean rise in level of its bins from one frame to the next. */
class COnset
{
public:
    /** @param lowHz, highHz   edges; bins from the lower one up to, not including, the higher one
        @param binHz           distance of the spectrum's bins */
    COnset (double lowHz, double highHz, double binHz, int bins);

    /** @param levels, before   levels of a frame and of the one before it, in decibels, one per bin
        @returns the mean of what rose, in decibels; 0 for a band without bins */
    float flux (std::span<const float> levels, std::span<const float> before) const;

    int firstBin() const { return first; }
    int endBin() const { return end; }

private:
    int first = 0, end = 0;
};
