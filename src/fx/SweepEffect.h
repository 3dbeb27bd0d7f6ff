#pragma once

#include "fx/Lfo.h"
#include "fx/SweepBiquad.h"
#include "fx/effect/FxEffect.h"
#include "support/Relaxed.h"

#include <array>
#include <vector>

/** Six effects around one slow oscillator: filters, distortion, bit crusher, auto pan and gate.

    Each output is `mix * processed + (1 - mix) * dry`, where the mix is the wet amount times the fade of the bypass switch;
    both glide by half a percent of the way with each sample. */
class SweepEffect : public FxEffect
{
public:
    enum class Mode : int32_t
    {
        distortion = 0,
        bitCrusher = 1,
        lowPass = 4,
        highPass = 5,
        autoPan = 8,
        trans = 9
    };

    explicit SweepEffect (Mode);

    void setSampleRate (double rate) noexcept override;
    void setFxParameter (FxParameter, double value) noexcept override;
    std::string parameterText (FxParameter) const override;
    PX_AUDIO_THREAD void process (float* left, float* right, int frames, double bpm) noexcept override;
    void reset() noexcept override;

    const Mode mode;
    float sampleRate = 44100.0f;
    float centre, amount;  ///< 0 to 1; what they move is the mode's
    float lfoBeats = 8.0f; ///< a turn of the oscillator
    float lfoDepth;        ///< its height, around the centre
    Lfo::Shape lfoShape = Lfo::Shape::sine;

private:
    template <typename Kernel>
    void run (float* left, float* right, int frames, Kernel&&) noexcept;
    double sweep (double phase) const noexcept { return lfoDepth * Lfo::value (lfoShape, phase); }
    double limitedSweep (double phase) const noexcept;

    void filter (float* left, float* right, int frames) noexcept;
    void distort (float* left, float* right, int frames) noexcept;
    void crush (float* left, float* right, int frames) noexcept;
    void pan (float* left, float* right, int frames) noexcept;
    void gate (float* left, float* right, int frames) noexcept;

    bool bypass = true;
    bool isSilent = true; ///< nothing sounds in it since the last reset
    Relaxed<double> wetTarget { 0.5 };
    double wet = 0.5, fade = 0.0;
    Relaxed<double> stepValue; ///< the knob behind lfoBeats
    double lfoPhase = 0.0, phaseStep = 0.0;

    std::array<SweepBiquad, 2> sections;
    double gateLevel = 0.0;
    double hold = 0.0; ///< samples until the crusher looks again
    Stereo held {};

    /** The auto pan's line: 2 ms at any rate. */
    static constexpr int lineSize = 1024, lineMask = lineSize - 1;
    std::vector<Stereo> line;
    int lineIndex = 0;
};
