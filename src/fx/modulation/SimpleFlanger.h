#pragma once

#include "fx/modulation/ModulationEffect.h"

#include <algorithm>

namespace fx_dsp
{
/** A short delay that swings between two times, fed back: one channel of the Flanger.
    @tparam Sample   float
    @tparam Frames   frames computed at a time, at most the piece of its base */
template <class Sample, int Frames>
class simple_flanger : public modulation_effect
{
public:
    static constexpr double defaultDepth = 0.7;
    static constexpr int lineFrames = 2048, blendFrames = 1024;

    simple_flanger() { setSampleRate (sampleRate()); }

    /** In Hz, 8000 to 384000. The line is emptied. */
    PX_AUDIO_THREAD void setSampleRate (double hertz) noexcept
    {
        takeSampleRate (hertz);
        setDelayRange (shortestSeconds, longestSeconds);
        reset();
    }

    /** The two ends of the swing in seconds, limited to what the line holds. */
    PX_AUDIO_THREAD void setDelayRange (double shortest, double longest) noexcept
    {
        shortestSeconds = shortest;
        longestSeconds = longest;
        const auto from = toFixed (shortest), to = toFixed (longest);
        middle = 0.5f * static_cast<float> (from + to);
        swing = 0.5f * static_cast<float> (to - from);
    }

    /** Empties the line and ends the blend of the delay; the oscillator stays. */
    PX_AUDIO_THREAD void reset() noexcept
    {
        line.fill (Sample { 0 });
        blendOffset = blendLeft = 0;
        expected = swingDelay (phase);
    }

    /** Moves the oscillator on while nothing is processed: an empty line has no delay to blend from. */
    PX_AUDIO_THREAD void skip (int samples) noexcept
    {
        chorus_base::skip (samples);
        expected = swingDelay (phase);
    }

    /** In place. */
    PX_AUDIO_THREAD void process (Sample* samples, int count) noexcept
    {
        blendInJump();
        for (int done = 0; done < count; done += Frames)
            processPiece (samples + done, std::min (Frames, count - done));
        expected = swingDelay (phase);
    }

    PX_AUDIO_THREAD static void processPair (simple_flanger& left, simple_flanger& right, Sample* leftSamples,
                                             Sample* rightSamples, int count) noexcept
    {
        left.process (leftSamples, count);
        right.process (rightSamples, count);
    }

private:
    static_assert (Frames <= pieceFrames);

    // Delays are fixed-point numbers of samples with 16 fractional bits. Interpolation reads one sample further back.
    static constexpr int32_t fixedOne = 1 << 16, shortestFixed = fixedOne,
                             longestFixed = (lineFrames - 2) * fixedOne;
    static constexpr uint32_t lineMask = lineFrames - 1;

    int32_t toFixed (double seconds) const noexcept
    {
        return static_cast<int32_t> (std::clamp (seconds * sampleRate() * fixedOne,
                                                 static_cast<double> (shortestFixed),
                                                 static_cast<double> (longestFixed)));
    }

    int32_t swingDelay (uint32_t at) const noexcept
    {
        return static_cast<int32_t> (middle + swing * table.at (at));
    }

    int32_t blendAt (int left) const noexcept
    {
        return static_cast<int32_t> (static_cast<int64_t> (blendOffset) * left / blendFrames);
    }

    // A delay that is not where the last block left it (another range, another stereo phase) starts from there and
    // closes the gap over the blend's length, so that the read position never steps.
    void blendInJump() noexcept
    {
        const auto now = swingDelay (phase);
        if (now == expected)
            return;
        blendOffset = expected + blendAt (blendLeft) - now;
        blendLeft = blendFrames;
    }

    void processPiece (Sample* samples, int count) noexcept
    {
        Piece in, gains, out;
        takeIn (samples, count, in);
        takeFeedback (count, gains);
        for (size_t i = 0; i < static_cast<size_t> (count); ++i, phase += step)
        {
            auto delay = swingDelay (phase);
            if (blendLeft > 0)
                delay = std::clamp (delay + blendAt (blendLeft--), shortestFixed, longestFixed);
            const auto read = position - static_cast<uint32_t> (delay >> 16);
            const auto near = line[read & lineMask], far = line[(read - 1) & lineMask];
            const auto delayed =
                near + (far - near) * (static_cast<float> (delay & 0xffff) * (1.0f / fixedOne));
            line[position++ & lineMask] = in[i] + delayed * gains[i];
            out[i] = delayed;
        }
        mix (samples, out, count);
    }

    double shortestSeconds = 0.001, longestSeconds = 0.004;
    float middle = 0.0f, swing = 0.0f;
    int32_t expected = 0, blendOffset = 0;
    int blendLeft = 0;
    uint32_t position = 0;
    std::array<Sample, lineFrames> line {};
};
}
