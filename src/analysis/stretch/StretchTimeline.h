#pragma once

#include "analysis/stretch/StretchFactors.h"
#include "support/AudioThread.h"

#include <array>
#include <cstdint>
#include <optional>

/** The place of each analysis frame in the vocoder's output, which tells which input is heard at a place.

    Frames are set apart by the ratio on average, exactly: what rounding and onsets take from a hop is made up by the next
    ones. Frames that hold the same onset lie as far apart as in the input, so that its samples meet again as they were,
    and the first of them lies so that the onset itself comes where the ratio puts it. */
class StretchTimeline
{
public:
    struct Frame
    {
        int64_t in = 0, out = 0; ///< first sample, in the input and in the vocoder's output
        double target = 0.0;     ///< where its middle would lie in the output by the ratio alone
        double pitch = 1.0, ratio = 1.0;
        bool onset = false;      ///< a sound sets on in it that the frame before does not hold
        bool isDeferred = false; ///< the frame before holds it at its end, but could not place it
        double power = 0.0;      ///< mean of its samples under the window, as far as known
    };

    explicit StretchTimeline (int length) noexcept : frameLength (length), middle (length / 2) {}

    PX_AUDIO_THREAD void reset() noexcept;

    /** A timeline at the moment from which another goes on, in input samples after the one that is heard. */
    struct Moment
    {
        double ideal = 0.0;                ///< the sample that would be heard by the ratio alone
        std::optional<int64_t> onset = {}; ///< the newest
    };

    /** The signal goes on from sound before its first sample: no beginning is to come out whole. After reset(). */
    PX_AUDIO_THREAD void startInside (const Moment& from) noexcept
    {
        isInside = true;
        begin = from.ideal;
        lastOnset = from.onset.value_or (-2 * frameLength);
    }

    /** The moment of a place of the vocoder's output, counted from an input sample. */
    PX_AUDIO_THREAD Moment momentAt (double vocoderPosition, int64_t heard) const noexcept
    {
        return { idealInputAt (vocoderPosition) - static_cast<double> (heard), lastOnset - heard };
    }

    /** The least first output sample that add() can give to the first frame. @param in   its first input sample */
    PX_AUDIO_THREAD int64_t leastFirstOut (const StretchFactors&, int64_t in) const noexcept;

    PX_AUDIO_THREAD bool isEmpty() const noexcept { return newest < 0; }

    /** The number of the newest frame, from 0; -1 without one. */
    PX_AUDIO_THREAD int64_t newestFrame() const noexcept { return newest; }

    PX_AUDIO_THREAD const Frame& frame (int64_t index) const noexcept { return history[index & (size - 1)]; }

    PX_AUDIO_THREAD void setPower (int64_t index, double power) noexcept
    {
        history[index & (size - 1)].power = power;
    }

    /** The power that the sound at a place of the vocoder's output was made of, between the frames around it. */
    PX_AUDIO_THREAD double powerAt (double vocoderPosition) const noexcept;

    /** First input sample of the next frame. */
    PX_AUDIO_THREAD int64_t nextIn (const StretchFactors&) const noexcept;

    /** Places the next frame.
        @param onset   input sample at which a sound sets on that no frame before has held */
    PX_AUDIO_THREAD void add (const StretchFactors&, std::optional<int64_t> onset) noexcept;

    /** The least hop in the output that add() can give to a frame at `in` with these factors. */
    PX_AUDIO_THREAD int leastHop (const StretchFactors&, int64_t in) const noexcept;

    /** The input sample, with a fraction, that is heard at a place of the vocoder's output. */
    PX_AUDIO_THREAD double inputAt (double vocoderPosition) const noexcept;

    /** As inputAt(), but as if all frames lay where the ratio puts them. */
    PX_AUDIO_THREAD double idealInputAt (double vocoderPosition) const noexcept;

    /** The frame whose factors made the sound at a place of the vocoder's output. */
    PX_AUDIO_THREAD const Frame& makerOf (double vocoderPosition) const noexcept;

private:
    static constexpr int size = 1024;

    PX_AUDIO_THREAD bool holds (int64_t in, int64_t sample) const noexcept;
    PX_AUDIO_THREAD bool isBeginning (int64_t in) const noexcept;
    PX_AUDIO_THREAD double placedMiddle (const Frame& f) const noexcept
    {
        return static_cast<double> (f.out + middle);
    }

    template <typename MiddleOf>
    PX_AUDIO_THREAD int64_t frameBehind (double vocoderPosition, MiddleOf&&) const noexcept;
    template <typename MiddleOf>
    PX_AUDIO_THREAD double inputAt (double vocoderPosition, MiddleOf&&) const noexcept;
    PX_AUDIO_THREAD int64_t firstOut (const StretchFactors&, int64_t in,
                                      std::optional<int64_t> onset) const noexcept;
    PX_AUDIO_THREAD int hopFor (const StretchFactors&, int64_t in,
                                std::optional<int64_t> onset) const noexcept;
    PX_AUDIO_THREAD double shiftFor (const StretchFactors&, int64_t in, int64_t onset) const noexcept;
    PX_AUDIO_THREAD bool isOutOfReach (const StretchFactors&, int64_t in, int64_t onset) const noexcept;

    const int frameLength, middle;
    std::array<Frame, size> history {};
    int64_t newest = -1;
    int64_t lastOnset = 0;
    std::optional<int64_t> awaited; ///< an onset that the next frame is to place
    double target = 0.0;            ///< where the newest frame's middle should lie
    bool isInside = false;          ///< sound goes before the signal
    double begin = 0.0;             ///< the input sample that lies at the output's first by the ratio alone
};
