#pragma once

#include "analysis/signal/ParametricEq.h"

#include <vector>

/** Bands of a parametric equaliser one after the other, for one channel. Each operation takes the number of its band, from
    0; one that does not exist gives AnalysisError::badArgument, and the getters the values of a fresh band. */
class CEqIf
{
public:
    using BandType = zParamEQ::BandType;

    virtual ~CEqIf() = default;

    /** For all bands, in Hz. */
    PX_AUDIO_THREAD virtual int setSampleRate (double hz) noexcept = 0;
    PX_AUDIO_THREAD virtual void reset() noexcept = 0;
    PX_AUDIO_THREAD virtual int setFrequency (int band, double hz) noexcept = 0;
    PX_AUDIO_THREAD virtual int setGain (int band, double db) noexcept = 0;
    /** `out` may be `in`. */
    PX_AUDIO_THREAD virtual void process (const float* in, float* out, int frames) noexcept = 0;
    PX_AUDIO_THREAD virtual double getFrequency (int band) const noexcept = 0;
    PX_AUDIO_THREAD virtual double getGain (int band) const noexcept = 0;
    PX_AUDIO_THREAD virtual double getQuality (int band) const noexcept = 0;
    PX_AUDIO_THREAD virtual BandType getType (int band) const noexcept = 0;
    PX_AUDIO_THREAD virtual int setQuality (int band, double q) noexcept = 0;
    PX_AUDIO_THREAD virtual int setType (int band, BandType) noexcept = 0;
    /** Makes what was set hold from the next frame on. */
    PX_AUDIO_THREAD virtual void update() noexcept = 0;
};

class CEQ : public CEqIf
{
public:
    /** Not on the audio thread.
        @param bands   1 to 64, each a peak without gain at first
        @returns AnalysisError::none, badArgument or noMemory */
    static int create (std::unique_ptr<CEqIf>& out, int bands);

    PX_AUDIO_THREAD int setSampleRate (double hz) noexcept override;
    PX_AUDIO_THREAD void reset() noexcept override;
    PX_AUDIO_THREAD int setFrequency (int band, double hz) noexcept override;
    PX_AUDIO_THREAD int setGain (int band, double db) noexcept override;
    PX_AUDIO_THREAD void process (const float* in, float* out, int frames) noexcept override;
    PX_AUDIO_THREAD double getFrequency (int band) const noexcept override;
    PX_AUDIO_THREAD double getGain (int band) const noexcept override;
    PX_AUDIO_THREAD double getQuality (int band) const noexcept override;
    PX_AUDIO_THREAD BandType getType (int band) const noexcept override;
    PX_AUDIO_THREAD int setQuality (int band, double q) noexcept override;
    PX_AUDIO_THREAD int setType (int band, BandType) noexcept override;
    PX_AUDIO_THREAD void update() noexcept override;

private:
    using Band = zParamEQ::CParametricEq;

    explicit CEQ (int count) : bands (static_cast<size_t> (count)) {}

    /** Null for a band that does not exist. */
    PX_AUDIO_THREAD Band* find (int band) noexcept;
    PX_AUDIO_THREAD const Band& look (int band) const noexcept;

    std::vector<Band> bands;
    const Band fresh;
};
