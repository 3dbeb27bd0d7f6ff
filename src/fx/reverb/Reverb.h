#pragma once

#include "fx/reverb/AllPass.h"
#include "fx/reverb/CombBank.h"

#include "support/CrossFade.h"

#include <array>
#include <vector>

/** A small stereo reverb: eight parallel combs and four all-passes in a row per channel, tuned by one table.

    Memory for the highest rate is taken at construction. Everything after that may run on the audio thread. */
class Reverb
{
public:
    static constexpr double lowestRate = 8000.0, highestRate = 192000.0;

    /** All 0 to 1. */
    struct Settings
    {
        float roomSize = 0.5f, damp = 0.4f, wet = 0.5f, dry = 0.5f, width = 0.8f;
        float mode = 0.0f; ///< from 0.5 on the reverb is frozen: what rings rings on, and nothing comes in
    };

    Reverb();
    Reverb (const Reverb&) = delete; // the lines lie in its memory, which a move takes along
    Reverb (Reverb&&) = default;

    /** In Hz, limited to the range above. Where it changes a line's length all tails end. */
    PX_AUDIO_THREAD void setSampleRate (double hertz) noexcept;

    PX_AUDIO_THREAD const Settings& settings() const noexcept { return current; }
    PX_AUDIO_THREAD void setSettings (const Settings&) noexcept; ///< from the next block on

    PX_AUDIO_THREAD void setBypass (bool isOn) noexcept { bypass.setTarget (isOn ? 1.0 : 0.0); }

    /** In place. Bypassed, it returns at once; what still rang is then silenced a piece at a time. */
    PX_AUDIO_THREAD void process (float* left, float* right, int count) noexcept;

    /** Silences all lines, and ends the ramps of bypass and wet. */
    PX_AUDIO_THREAD void reset() noexcept;

    /** Of the combs, after the last update: below 1 unless frozen. */
    PX_AUDIO_THREAD float feedback() const noexcept { return combFeedback; }

private:
    static constexpr size_t allPassesPerChannel = 4;

    void update() noexcept;
    void layLines() noexcept;
    void silenceSome() noexcept;
    void processPiece (float* left, float* right, int count) noexcept;

    Settings current;
    bool dirty = true;
    float own = 0.0f, other = 0.0f, dry2 = 0.0f, gain = 0.0f, combFeedback = 0.0f;
    GainRamp bypass { 1.0 }, wet { 0.5 };

    double rate = 0.0;
    std::vector<float> memory; // all lines in a row, at the present rate's lengths
    size_t used = 0, toSilence = 0;
    CombBank combs;
    std::array<std::array<AllPass, allPassesPerChannel>, 2> allPasses; // by channel
};
