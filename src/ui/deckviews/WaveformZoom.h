#pragma once

#include <algorithm>
#include <array>

/** The magnification of the waveforms of all decks, one for a process: held by a juce::SharedResourcePointer. Message thread. */
struct WaveformZoom
{
    /** Logical pixels for an entry of the waveform data, 512 frames. */
    static constexpr std::array steps { 0.25, 0.5, 1.0, 2.0, 4.0 };
    static constexpr int usualStep = 2;

    double zoom() const noexcept { return steps[static_cast<size_t> (step)]; }

    /** @param by   steps, above 0 to see less of the track, larger */
    void turn (int by) noexcept { set (step + by); }
    void set (int to) noexcept { step = std::clamp (to, 0, static_cast<int> (steps.size()) - 1); }

    int scopeSamples = 32; ///< frames of the file in a logical pixel of the scopes: a power of two

    int step = usualStep;
    bool fills = true; ///< a full-scale wave fills the picture; else it has the data's own height
};
