#pragma once

#include "support/AudioThread.h"

#include <span>
#include <vector>

/** Half-complex spectra of one analysis frame (see CzplfFFT_If), and what is derived from them. */
struct StretchSpectra
{
    StretchSpectra (int channels, int frameLength)
        : bins (static_cast<size_t> (channels), std::vector<float> (static_cast<size_t> (frameLength))),
          power (static_cast<size_t> (frameLength / 2 + 1 + 8))
    {
    }

    std::vector<std::vector<float>> bins; ///< per work channel
    std::vector<float> power;             ///< of the channels that lead; a few zeros behind it
};

/** The angles by which the bins of a stretched sound are turned against its analysis.

    A vocoder that moves frames apart turns each partial by what it would have gone on in the difference. One turn is kept
    for each bin and common to all channels: so their levels and phases against each other stay as they were. Bins turn
    together with the peak that is nearest to them. A frame that is set as far apart as it was analysed turns nothing. */
class PhaseTurner
{
public:
    /** @param leaders   weight in power of each channel that peaks and their phases are taken from */
    PhaseTurner (int frameLength, std::span<const float> leaders);

    std::span<const float> leaders() const noexcept { return weights; }

    /** Turns nothing from now on. */
    PX_AUDIO_THREAD void reset() noexcept;

    /** Sums up the power of a channel that leads, the first one first. */
    PX_AUDIO_THREAD void addPower (StretchSpectra&, int channel) const noexcept;

    /** The sum of a frame's power over all bins, those of negative frequency too. */
    PX_AUDIO_THREAD double totalPower (const StretchSpectra&) const noexcept;

    /** Finds the peaks of a frame that are not just the window's leakage of stronger ones. */
    PX_AUDIO_THREAD void findPeaks (const StretchSpectra&) noexcept;

    /** Turns the regions of the peaks found on, for a frame that lies `hopIn` behind the one before it in the input and
        `hopOut` in the output. */
    PX_AUDIO_THREAD void propagate (const StretchSpectra& frame, const StretchSpectra& before, int hopIn,
                                    int hopOut) noexcept;

    /** Turns the regions of the peaks found by what their partials go on in so many samples, back for less than none.
        Their frequencies are those between two frames that lie `hopIn` apart. */
    PX_AUDIO_THREAD void turnOn (const StretchSpectra& frame, const StretchSpectra& before, int hopIn,
                                 double samples) noexcept;

    /** Takes all turns over from another of the same length. */
    PX_AUDIO_THREAD void takeTurns (const PhaseTurner& other) noexcept;

    /** Turns the bins back in which a sound sets on between the two frames; what goes on through it stays. */
    PX_AUDIO_THREAD void resetRisen (const StretchSpectra& before, const StretchSpectra& after) noexcept;

    /** Takes all turns a little nearer to none: the detuning is below what is heard, and a sound that is not
        stretched any more becomes its input again within seconds. */
    PX_AUDIO_THREAD void relax() noexcept;

    /** Writes a turned spectrum, without the bins above `lastBin`. */
    PX_AUDIO_THREAD void turn (float* out, const float* in, int lastBin) const noexcept;

private:
    const int length, half;
    const std::vector<float> weights;
    std::vector<float> cosine, sine; ///< the turn of each bin
    std::vector<int> peaks;
    std::vector<float> turnCosine, turnSine; ///< of each peak
    std::vector<float> real, imaginary;      ///< of each peak: its advance since the frame before
    std::vector<float> expected,
        surplus; ///< angles by which the bin's middle goes on: in the hop, in the difference
    int peakCount = 0;
    bool isNone = true; ///< no bin is turned
};
