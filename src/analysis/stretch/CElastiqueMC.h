#pragma once

#include "analysis/signal/FastResample.h"
#include "analysis/signal/RealFft.h"
#include "analysis/stretch/LevelKeeper.h"
#include "analysis/stretch/OnsetDetector.h"
#include "analysis/stretch/PhaseTurner.h"
#include "analysis/stretch/SampleRing.h"
#include "analysis/stretch/StretchFactors.h"
#include "analysis/stretch/StretchTimeline.h"

#include <array>
#include <memory>
#include <vector>

/** The stretching engine over the whole spectrum: a phase vocoder whose frames are set apart by the ratio, but as far as
    they were analysed where a sound sets on, and a resampler behind it. docs/stretch.md tells the method.

    Operations as those of CElastiqueProIf. */
class CElastiqueMC
{
public:
    /** @returns 0 or the error of a transform or resampler that can't be made */
    static int create (std::unique_ptr<CElastiqueMC>& out, int blockSize, int channels, float sampleRate);

    PX_AUDIO_THREAD int process (const float* const* in, int frames, float* const* out) noexcept;
    PX_AUDIO_THREAD int getFramesNeeded() const noexcept;
    PX_AUDIO_THREAD int setOutputBlockSize (int frames) noexcept;
    PX_AUDIO_THREAD int getFramesNeededFor (float stretch, float pitch) const noexcept;
    PX_AUDIO_THREAD int setStretchPitch (float* stretch, float pitch, int keepPhase) noexcept;
    PX_AUDIO_THREAD int setStretchAndPitch (float stretch, float* pitch, int keepPhase) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;
    PX_AUDIO_THREAD int getLeadFrames() const noexcept { return frameLength + frameLength / 4; }
    PX_AUDIO_THREAD void startInside (const float* const* lead) noexcept;
    PX_AUDIO_THREAD void keepTurns (int framesBack) noexcept;
    PX_AUDIO_THREAD double getStretchOfOutput() const noexcept;
    PX_AUDIO_THREAD int flush (float* const* out) noexcept;
    PX_AUDIO_THREAD int getPreFramesNeeded() const noexcept;
    PX_AUDIO_THREAD int setStereoMode (int mode) noexcept;
    PX_AUDIO_THREAD double getLatency() const noexcept { return 0.0; }
    PX_AUDIO_THREAD double getInputPositionOfOutput() const noexcept;
    PX_AUDIO_THREAD double getIdealInputPositionOfOutput() const noexcept;

private:
    CElastiqueMC (int blockSize, int channels, float sampleRate);

    /** An output block is made in pieces of so many frames at most, so that all buffers hold at any pitch. */
    static constexpr int piece = 128;
    static constexpr int resampleOrder = 3;
    static constexpr int history = 32; ///< frames kept of what has been fetched: the resampler's width

    /** The frame that is analysed, the one that is turned, and two before it. */
    static constexpr int keptSpectra = 4;

    struct Input
    {
        const float* const* samples; ///< null for silence
        int frames, taken;
    };

    PX_AUDIO_THREAD double pitchInForce (const StretchFactors&) const noexcept;
    PX_AUDIO_THREAD double readingPitch (const StretchFactors&) const noexcept;
    PX_AUDIO_THREAD double glideFrom (const StretchFactors&) const noexcept;
    PX_AUDIO_THREAD int64_t vocoderEndFor (int frames, double pitch) const noexcept;
    PX_AUDIO_THREAD int framesNeeded (const StretchFactors&) const noexcept;

    PX_AUDIO_THREAD void keepPast() noexcept;
    PX_AUDIO_THREAD void beginInside (const StretchTimeline::Moment&) noexcept;
    PX_AUDIO_THREAD void take (Input&, int frames) noexcept;
    PX_AUDIO_THREAD void beginFrame (Input&) noexcept;
    PX_AUDIO_THREAD void detectUpTo (int64_t end) noexcept;
    PX_AUDIO_THREAD int64_t steepestAfter (int64_t position) noexcept;
    PX_AUDIO_THREAD int stagesFor (double share) const noexcept;
    PX_AUDIO_THREAD void runStages (int upTo) noexcept;
    PX_AUDIO_THREAD void analyse (int channel) noexcept;
    PX_AUDIO_THREAD void addPower (int channel, bool isLast) noexcept;
    PX_AUDIO_THREAD bool isTurning (int64_t frame) const noexcept;
    PX_AUDIO_THREAD void findPeaks() noexcept;
    PX_AUDIO_THREAD void turnPhases() noexcept;
    PX_AUDIO_THREAD void synthesise (int channel) noexcept;
    PX_AUDIO_THREAD void overlapAdd (int channel) noexcept;
    PX_AUDIO_THREAD void fetch (int frames) noexcept;
    PX_AUDIO_THREAD void keepLevel (int frames) noexcept;
    PX_AUDIO_THREAD void produce (float* const* out, int offset, int frames, double pitch) noexcept;

    StretchSpectra& spectra (int64_t frame) noexcept
    {
        return spectraRing[static_cast<size_t> (frame & (keptSpectra - 1))];
    }
    int64_t vocoderEnd() const noexcept;
    int stages() const noexcept { return 5 * workChannels; }

    const int channels;
    const int workChannels; ///< a sum leads above two channels
    const float sampleRate;
    const int frameLength;
    int outputBlock;
    int stereoMode = 0, nextStereoMode = 0;
    StretchFactors factors;

    std::unique_ptr<CzplfFFT_If> transform;
    std::unique_ptr<CFastResample> resampler;
    std::vector<float> analysisWindow, synthesisWindow, product; ///< the product is of both
    std::vector<float> time, frequency;                          ///< of the stage that runs
    std::vector<float> past;                                     ///< on its way to before the next signal
    std::vector<std::vector<float>> synthesised;                 ///< per work channel
    std::array<StretchSpectra, keptSpectra> spectraRing;
    std::array<PhaseTurner, 2> turners, keptTurners; ///< by stereo mode
    bool hasKeptTurns = false;
    int64_t keptPlace = 0; ///< the input frame at which the next signal goes on
    StretchTimeline::Moment keptMoment;

    // Input, and the vocoder's output before the resampler with the sum of its windows as the last channel.
    SampleRing input, vocoded;
    int64_t inputEnd = 0, signalEnd = 0; ///< the second without the silence of flush()
    OnsetDetector detector;
    int64_t detectedBegin = 0, detectedEnd = 0;
    StretchTimeline timeline;
    int stage = 0; ///< of the newest frame's work; stages() when done

    // Behind the vocoder: what has been fetched, and what the resampler gave beyond a block.
    std::vector<std::vector<float>> fetched, resampled;
    LevelKeeper levelKeeper;
    double windowEnergy = 0.0; ///< of the analysis window
    int64_t fetchedEnd = 0;
    int lastFetch = 0;
    double readPosition = 0.0; ///< of the frame after the ready ones, in the vocoder's output
    double readyStep = 1.0;
    int ready = 0;
    bool resampling = false;
};
