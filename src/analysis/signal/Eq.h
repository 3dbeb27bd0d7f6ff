#pragma once

#include "analysis/signal/ParametricEq.h"

#include <array>

/** Bands of a parametric equaliser one after the other. Each operation takes the number of its band, from 0; one that does
    not exist gives AnalysisError::badArgument, and the getters the values of a fresh band. One thread. */
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
    /** One channel. `out` may be `in`. */
    PX_AUDIO_THREAD virtual void process (const float* in, float* out, int frames) noexcept = 0;
    PX_AUDIO_THREAD virtual double getFrequency (int band) const noexcept = 0;
    PX_AUDIO_THREAD virtual double getGain (int band) const noexcept = 0;
    PX_AUDIO_THREAD virtual double getQuality (int band) const noexcept = 0;
    PX_AUDIO_THREAD virtual BandType getType (int band) const noexcept = 0;
    PX_AUDIO_THREAD virtual int setQuality (int band, double q) noexcept = 0;
    PX_AUDIO_THREAD virtual int setType (int band, BandType) noexcept = 0;
    /** Makes the settings hold from the next frame on. */
    PX_AUDIO_THREAD virtual void update() noexcept = 0;
};

/** The bands in one loop, whose filters then work side by side, and both channels in one vector register. Where one band's
    output is the next one's input they share a history. */
class CEQ final : public CEqIf
{
public:
    static constexpr int mostBands = 4;

    /** @param bands   1 to 4, each a peak without gain at first */
    explicit CEQ (int bands) noexcept : count (bands) {}

    /** Not on the audio thread. @returns AnalysisError::none, badArgument for the number of bands, or noMemory */
    static int create (std::unique_ptr<CEqIf>& out, int bands) noexcept;

    PX_AUDIO_THREAD int setSampleRate (double hz) noexcept override;
    PX_AUDIO_THREAD void reset() noexcept override { histories = {}; }
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

    /** Both channels in place. Results too small for a normal float become 0. While all bands are at 0 dB, and what rang
        before has died away, the signal passes untouched. */
    PX_AUDIO_THREAD void processPair (float* left, float* right, int frames) noexcept;

    /** Takes another one's place in the signal exactly, which it can with all bands at 0 dB. @returns false if it can't */
    PX_AUDIO_THREAD bool takeOverFlat (const CEQ& other) noexcept;

    /** True while silence at the input means silence at the output. */
    PX_AUDIO_THREAD bool isAtRest() const noexcept;

private:
    using Band = zParamEQ::CParametricEq;
    using History = zParamEQ::History;

    /** Null for a band that does not exist. */
    Band* find (int band) noexcept;
    const Band& look (int band) const noexcept;

    bool hasNoGain() const noexcept;
    bool isFlat() const noexcept;
    void runBands (float* left, float* right, int frames) noexcept;
    template <int numBands>
    void run (float* left, float* right, int frames) noexcept;
    void settle() noexcept;

    int count;
    std::array<Band, mostBands> bands;
    std::array<History, mostBands + 1> histories; ///< before the first band, and after each
};
