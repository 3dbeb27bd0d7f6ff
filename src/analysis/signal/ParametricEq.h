#pragma once

#include "analysis/signal/Biquad.h"

#include <memory>

namespace zParamEQ
{
/** The last two values on one side of a filter, left and right in one vector register. */
struct History
{
    using Pair = double __attribute__ ((vector_size (2 * sizeof (double))));

    Pair last {}, beforeLast {};
};

/** One band of a parametric equaliser for one channel: a biquad of the audio equalizer cookbook in direct form I.

    Setters keep their value aside until update(), so that several changes cost one computation; they return 0, or
    AnalysisError::badArgument with nothing changed. One thread. */
class CParametricEqIf
{
public:
    virtual ~CParametricEqIf() = default;

    /** In Hz, above 0; a frequency at or above half of it is held just below. */
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

    /** Computes the coefficients if a setting has changed; they hold from the next frame on. */
    PX_AUDIO_THREAD virtual void update() noexcept = 0;
};

class CParametricEq final : public CParametricEqIf
{
public:
    CParametricEq() noexcept { update(); }

    /** Not on the audio thread. @returns AnalysisError::none or noMemory */
    static int create (std::unique_ptr<CParametricEqIf>& out) noexcept;

    PX_AUDIO_THREAD int setSampleRate (double hz) noexcept override;
    PX_AUDIO_THREAD void reset() noexcept override { input = output = {}; }
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

    /** As of the last update(), for whoever runs several bands in one loop. */
    PX_AUDIO_THREAD const Biquad& coefficients() const noexcept { return biquad; }

    /** One frame. The newest output comes last: only its product and difference lie between two frames. */
    PX_AUDIO_THREAD static History::Pair filter (const Biquad& b, History::Pair in, History& ofInput,
                                                 const History& ofOutput) noexcept
    {
        const auto out = b.b0 * in + b.b1 * ofInput.last + b.b2 * ofInput.beforeLast
                         - b.a2 * ofOutput.beforeLast - b.a1 * ofOutput.last;
        ofInput = { in, ofInput.last };
        return out;
    }

private:
    int take (double& setting, double value, double least, double most) noexcept;

    double sampleRate = 44100.0, frequency = 1000.0, gainDb = 0.0, quality = 0.70710678118654752;
    BandType type = BandType::peak;
    bool isChanged = true;
    Biquad biquad;
    History input, output; ///< one channel, on the left
};
}
