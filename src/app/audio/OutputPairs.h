#pragma once

#include "support/GainRamp.h"
#include "support/Relaxed.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>
#include <atomic>

/** The sources of a device's stereo pairs of outputs, and a tone by which a pair is found. */
class OutputPairs
{
public:
    static constexpr int count =
        7; ///< as many as the engine has, in the order master, monitor, decks A to D, sampler
    static constexpr int silent = -1; ///< a source that is none

    /** In order: each pair carries the engine's pair of its number. */
    OutputPairs();

    /** Chooses what a pair carries; it fades over within 10 ms. Any thread.
        @param pair     0 to count - 1
        @param source   0 to count - 1, or silent */
    void setSource (int pair, int source) noexcept { pairs[static_cast<size_t> (pair)].wished = source; }

    int source (int pair) const noexcept { return pairs[static_cast<size_t> (pair)].wished; }

    /** True if the pair carries this source, and has carried nothing else for 10 ms. Audio thread. */
    bool carriesOnly (int pair, int source) const noexcept;

    /** Plays a tone of 440 Hz at -20 dB on top of what a pair carries: .6 s on the left, then on the right. A tone that
        plays ends. Any thread. @param pair   0 to count - 1 */
    void playTone (int pair) noexcept { toneWished = pair; }

    /** Ends fades and tones. While no block is played. @param rate   in Hz, above 0 */
    void prepare (double rate);

    /** Takes up a tone that is wished for; before each part of a block. Audio thread. */
    void begin() noexcept;

    /** Writes what a pair carries. Audio thread.
        @param engine        all channels of the engine
        @param left, right   of the device, with room for the engine's frames; either may be null
        @param isMono        the mean of both sides goes to each */
    void write (int pair, const juce::AudioBuffer<float>& engine, float* left, float* right,
                bool isMono) noexcept;

    /** Adds the pair's tone, if it has one. Audio thread. */
    void addTone (int pair, float* left, float* right, int frames) noexcept;

private:
    struct Pair
    {
        Relaxed<int> wished { silent };
        int carried = silent;
        GainRamp gain { 1.0 };
    };

    std::array<Pair, count> pairs;
    std::atomic<int> toneWished { silent };
    int tonePair = silent;
    int64_t toneFrame = 0;
    double rate = 48000.0;
};
