#include "analysis/stretch/StretchTimeline.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
/** Ratios between which onsets are kept whole. Beyond, too little is left between them to make it up. */
constexpr double leastElastic = 0.45, greatestElastic = 2.2;

/** Above this pitch a block takes so many frames that the doubt of their hops would pile up input. */
constexpr double greatestElasticPitch = 4.0;

/** Shares of the ratio's hop between which one hop may lie, and of the frame that it never exceeds. */
constexpr double shortestHop = 0.3, longestHop = 2.0, longestShare = 0.6;

/** The same of the hop to an onset's first frame: what is thin before an onset is not heard. */
constexpr double longestShareToOnset = 0.72;

bool isElastic (const StretchFactors& factors) noexcept
{
    return factors.ratio >= leastElastic && factors.ratio <= greatestElastic
           && factors.pitch <= greatestElasticPitch;
}

int even (double value) noexcept
{
    return 2 * static_cast<int> (std::lround (value / 2.0));
}

struct HopLimits
{
    double least, greatest;

    explicit HopLimits (const StretchFactors& factors, int frameLength) noexcept
    {
        const auto wanted = factors.hopIn * factors.ratio;
        if (isElastic (factors))
        {
            least = shortestHop * wanted;
            greatest = std::max (wanted + 4.0, std::min (longestHop * wanted, longestShare * frameLength));
        }
        else
        {
            const auto play = std::max (4.0, 0.05 * wanted);
            least = std::max (2.0, wanted - play);
            greatest = wanted + play;
        }
    }
};
}

void StretchTimeline::reset() noexcept
{
    newest = -1;
    lastOnset = 0;
    target = begin = 0.0;
    isInside = false;
    awaited.reset();
    history[0] = {};
}

int64_t StretchTimeline::nextIn (const StretchFactors& factors) const noexcept
{
    return newest < 0 ? factors.hopIn - frameLength : frame (newest).in + factors.hopIn;
}

bool StretchTimeline::holds (int64_t in, int64_t sample) const noexcept
{
    // At its very edges the windows leave nothing of a frame. An onset is found when the blocks over which it must hold
    // are in, so the frame that it is found in holds it anywhere in the block before them.
    const auto edge = frameLength / 16, block = frameLength / 64;
    return sample >= in + edge && sample < in + frameLength - edge + block;
}

void StretchTimeline::add (const StretchFactors& factors, std::optional<int64_t> onset) noexcept
{
    const auto in = nextIn (factors);
    Frame next { in, in, 0.0, factors.pitch, factors.ratio };
    if (!onset && awaited)
    {
        onset = awaited;
        next.isDeferred = true;
    }
    awaited.reset();
    if (newest < 0)
    {
        // The signal begins at 0 in both times, whatever the ratio.
        target = factors.ratio * (static_cast<double> (in + middle) - begin);
        next.out = firstOut (factors, in, onset);
    }
    else
    {
        target += factors.ratio * factors.hopIn;
        if (onset && isOutOfReach (factors, in, *onset))
            awaited = std::exchange (onset, std::nullopt);
        next.out = frame (newest).out + hopFor (factors, in, onset);
    }
    next.onset = onset.has_value();
    if (onset)
        lastOnset = *onset;
    next.target = target;
    ++newest;
    history[static_cast<size_t> (newest & (size - 1))] = next;
}

double StretchTimeline::shiftFor (const StretchFactors& factors, int64_t in, int64_t onset) const noexcept
{
    return isElastic (factors) ? (factors.ratio - 1.0) * static_cast<double> (onset - in - middle) : 0.0;
}

int64_t StretchTimeline::firstOut (const StretchFactors& factors, int64_t in,
                                   std::optional<int64_t> onset) const noexcept
{
    // As far before the signal's first sample as in the input, where both belong to one onset.
    if (!isInside || (isElastic (factors) && holds (in, lastOnset)))
        return in;
    const auto shift = onset ? shiftFor (factors, in, *onset) : 0.0;
    return even (factors.ratio * static_cast<double> (in + middle) + shift) - middle;
}

int64_t StretchTimeline::leastFirstOut (const StretchFactors& factors, int64_t in) const noexcept
{
    return std::min (firstOut (factors, in, in), firstOut (factors, in, in + frameLength));
}

bool StretchTimeline::isOutOfReach (const StretchFactors& factors, int64_t in, int64_t onset) const noexcept
{
    // In a sound that is sped up, a frame whose last part holds an onset would have to lie before the one before it. The
    // next frame, which holds it nearer to its middle, can place it.
    if (!isElastic (factors) || isBeginning (in) || !holds (in + factors.hopIn, onset))
        return false;
    const auto hop =
        target - static_cast<double> (frame (newest).out + middle) + shiftFor (factors, in, onset);
    return hop < HopLimits (factors, frameLength).least - static_cast<double> (frameLength) / 128;
}

bool StretchTimeline::isBeginning (int64_t in) const noexcept
{
    return !isInside && in < 0 && holds (in, 0);
}

int StretchTimeline::hopFor (const StretchFactors& factors, int64_t in,
                             std::optional<int64_t> onset) const noexcept
{
    // However the factors change while it is taken in, the signal's beginning comes out whole and at once.
    if (isBeginning (in))
        return factors.hopIn;

    const auto& before = frame (newest);
    const auto wanted = target - static_cast<double> (before.out + middle);
    const auto stray = wanted - factors.hopIn; // of the frame's middle, after a hop as in the input
    const auto whole = isElastic (factors) && holds (before.in, lastOnset) && holds (in, lastOnset);
    const HopLimits limits (factors, frameLength);

    if (onset && isElastic (factors))
    {
        const auto shift = shiftFor (factors, in, *onset);
        const auto tolerance = frameLength / 32;
        if (whole && std::abs (stray + shift) <= tolerance)
            return factors.hopIn;
        return even (std::clamp (wanted + shift, limits.least,
                                 std::max (limits.greatest, longestShareToOnset * frameLength)));
    }
    const auto farthest =
        std::abs (factors.ratio - 1.0) * 0.75 * frameLength + static_cast<double> (frameLength) / 32;
    return whole && std::abs (stray) <= farthest ? factors.hopIn
                                                 : even (std::clamp (wanted, limits.least, limits.greatest));
}

int StretchTimeline::leastHop (const StretchFactors& factors, int64_t in) const noexcept
{
    if (isBeginning (in))
        return factors.hopIn;
    const auto least = even (HopLimits (factors, frameLength).least);
    return isElastic (factors) ? std::min (least, factors.hopIn) : least;
}

template <typename MiddleOf>
int64_t StretchTimeline::frameBehind (double vocoderPosition, MiddleOf&& middleOf) const noexcept
{
    const auto oldest = std::max<int64_t> (0, newest - size + 1);
    auto index = newest;
    while (index > oldest && middleOf (frame (index)) > vocoderPosition)
        --index;
    return index;
}

template <typename MiddleOf>
double StretchTimeline::inputAt (double vocoderPosition, MiddleOf&& middleOf) const noexcept
{
    if (newest < 0)
        return vocoderPosition;
    const auto index = frameBehind (vocoderPosition, middleOf);
    const auto& from = frame (index);
    const auto offset = vocoderPosition - middleOf (from);
    auto slope = 1.0;
    if (index < newest && offset > 0.0)
    {
        const auto& to = frame (index + 1);
        slope = static_cast<double> (to.in - from.in) / (middleOf (to) - middleOf (from));
    }
    return static_cast<double> (from.in + middle) + slope * offset;
}

double StretchTimeline::inputAt (double vocoderPosition) const noexcept
{
    return inputAt (vocoderPosition, [this] (const Frame& f) { return placedMiddle (f); });
}

double StretchTimeline::idealInputAt (double vocoderPosition) const noexcept
{
    return inputAt (vocoderPosition, [] (const Frame& f) { return f.target; });
}

double StretchTimeline::powerAt (double vocoderPosition) const noexcept
{
    if (newest < 0)
        return 0.0;
    const auto index = frameBehind (vocoderPosition, [this] (const Frame& f) { return placedMiddle (f); });
    const auto &from = frame (index), &to = frame (std::min (newest, index + 1));
    const auto way = placedMiddle (to) - placedMiddle (from);
    const auto part = way > 0.0 ? std::clamp ((vocoderPosition - placedMiddle (from)) / way, 0.0, 1.0) : 0.0;
    return from.power + (to.power - from.power) * part;
}

const StretchTimeline::Frame& StretchTimeline::makerOf (double vocoderPosition) const noexcept
{
    const auto behind = frameBehind (vocoderPosition, [this] (const Frame& f) { return placedMiddle (f); });
    return frame (std::min (newest, behind + 1));
}
