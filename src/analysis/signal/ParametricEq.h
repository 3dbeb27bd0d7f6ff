#pragma once

#include "support/AudioThread.h"

#include <memory>

namespace zParamEQ
{
enum class BandType
{
    peak,
    lowShelf,
    highShelf,
    lowPass,
    highPass
};

/** One band of a parametric equaliser for one channel.

    A biquad by the audio equalizer cookbook (w = 2 pi f / rate, alpha = sin w / (2 Q), A = 10^(gain / 40)) in direct form
    I with its history in doubles. Setters keep their value aside until update(), so that several changes cost one
    computation; they return 0, or AnalysisError::badArgument with nothing changed. */
class CParametricEqIf
{
public:
    virtual ~CParametricEqIf() = default;

    /** In Hz, above 0; what lies at or above half of it is held just below. */
    PX_AUDIO_THREAD virtual int setSampleRate (double hz) noexcept = 0;
    /** Forgets the signal, not the settings. */
    PX_AUDIO_THREAD virtual void reset() noexcept = 0;
    /** In Hz, above 0. 1000 at first. */
    PX_AUDIO_THREAD virtual int setFrequency (double hz) noexcept = 0;
    /** In dB, -120 to 60. 0 at first; of no meaning to a low-pass or high-pass. */
    PX_AUDIO_THREAD virtual int setGain (double db) noexcept = 0;
    /** `out` may be `in`. */
    PX_AUDIO_THREAD virtual void process (const float* in, float* out, int frames) noexcept = 0;

    PX_AUDIO_THREAD virtual double getFrequency() const noexcept = 0;
    PX_AUDIO_THREAD virtual double getGain() const noexcept = 0;
    PX_AUDIO_THREAD virtual double getQuality() const noexcept = 0;
    PX_AUDIO_THREAD virtual BandType getType() const noexcept = 0;
    /** The cookbook's Q, above 0. The root of a half at first. */
    PX_AUDIO_THREAD virtual int setQuality (double q) noexcept = 0;
    PX_AUDIO_THREAD virtual int setType (BandType) noexcept = 0;

    /** Makes what was set hold from the next frame on. */
    PX_AUDIO_THREAD virtual void update() noexcept = 0;
};

class CParametricEq : public CParametricEqIf
{
public:
    CParametricEq() noexcept { update(); }

    /** Not on the audio thread. @returns AnalysisError::none or noMemory */
    static int create (std::unique_ptr<CParametricEqIf>& out) noexcept;

    PX_AUDIO_THREAD int setSampleRate (double hz) noexcept override;
    PX_AUDIO_THREAD void reset() noexcept override;
    PX_AUDIO_THREAD int setFrequency (double hz) noexcept override;
    PX_AUDIO_THREAD int setGain (double db) noexcept override;
    PX_AUDIO_THREAD void process (const float* in, float* out, int frames) noexcept override;
    PX_AUDIO_THREAD double getFrequency() const noexcept override { return frequency; }
    PX_AUDIO_THREAD double getGain() const noexcept override { return gainDb; }
    PX_AUDIO_THREAD double getQuality() const noexcept override { return quality; }
    PX_AUDIO_THREAD BandType getType() const noexcept override { return type; }
    PX_AUDIO_THREAD int setQuality (double q) noexcept override;
    PX_AUDIO_THREAD int setType (BandType) noexcept override;
    PX_AUDIO_THREAD void update() noexcept override;

private:
    double sampleRate = 44100.0, frequency = 1000.0, gainDb = 0.0, quality = 0.70710678118654752;
    BandType type = BandType::peak;
    double b0 = 1.0, b1 = 0.0, b2 = 0.0, a1 = 0.0, a2 = 0.0; ///< by a0
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
};
}
