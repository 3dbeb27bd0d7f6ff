#include "instruments/sampler/sample/SampleView.h"

#include "support/FadeCurve.h"

#include <algorithm>
#include <cmath>

namespace
{
/** Frames around an edge whose steps are what the sound does by itself, and by how much a step at a seam, or at a begin,
    exceeds them until it is no longer its own. A begin is given more: a fade would take the edge off a hit. */
constexpr int neighbourhood = 64;
constexpr float seamFactor = 1.5f, beginFactor = 4.0f;
constexpr float inaudible = 1.0e-3f;
constexpr float attackFactor = 4.0f;

/** A hit that was cut on its attack is louder by so much in its first frames than a moment later. A sample too short for such
    a moment may be a piece of a low tone: there it is the second half that must be much softer. */
constexpr float decayFactor = 1.25f, shortDecayFactor = 2.0f;
constexpr int32_t hitFrames = 256, decayedFrom = 1536, decayedTo = 4608;

float cubic (float before, float here, float next, float after, float t) noexcept
{
    return ((((here - next) * 1.5f + (after - before) * 0.5f) * t
             + (before - here * 2.5f + next * 2.0f - after * 0.5f))
                * t
            + (next - before) * 0.5f)
               * t
           + here;
}

double smooth (double part) noexcept
{
    return FadeCurve::at (std::clamp (part, 0.0, 1.0));
}

/** A frame of the sample around a place near an edge: past the region's end it goes on at its begin. */
float around (const SampleView& view, const float* side, int32_t index) noexcept
{
    if (view.loops && index >= view.end)
        index = view.begin + (index - view.end) % std::max (1, view.regionFrames());
    return index >= 0 && index < view.frames ? side[index] : 0.0f;
}

float interpolated (const SampleView& view, const float* side, int32_t index, float t) noexcept
{
    const auto here = around (view, side, index);
    if (t == 0.0f)
        return here;
    const auto before = index > 0 ? around (view, side, index - 1) : here;
    return cubic (before, here, around (view, side, index + 1), around (view, side, index + 2), t);
}

double weightAt (const SampleView& view, const SamplePlace& place, double fadeFrames) noexcept
{
    if (!view.loops)
        return smooth ((view.frames - place.frame) / fadeFrames);
    // Of a loop too short for two fades each takes a half.
    const auto fade = std::min (fadeFrames, 0.5 * view.regionFrames());
    auto weight = view.fadesOutAtSeam ? smooth ((view.end - place.frame) / fade) : 1.0;
    if (place.hasTurned && view.fadesInAtSeam)
        weight *= smooth ((place.frame - view.begin) / fade);
    return weight;
}

void advance (const SampleView& view, SamplePlace& place, double step) noexcept
{
    place.frame += step;
    if (view.loops && place.frame >= view.end)
    {
        const auto length = std::max (1, view.regionFrames());
        place.frame = view.begin + std::fmod (place.frame - view.begin, length);
        place.hasTurned = true;
    }
}

/** Frames from a place on that lie clear of all edges. */
int clearFrames (const SampleView& view, const SamplePlace& place, double step, double fadeFrames) noexcept
{
    const auto first = place.hasTurned && view.fadesInAtSeam ? view.begin + fadeFrames : 1.0;
    const auto last =
        view.loops ? view.end - (view.fadesOutAtSeam ? fadeFrames : 0.0) : view.frames - fadeFrames;
    if (place.frame < std::max (first, 1.0))
        return 0;
    const auto count = (last - 3.0 - place.frame) / step;
    return count >= 1.0 ? static_cast<int> (std::min (count, 1.0e6)) : 0;
}

void readClear (const SampleView& view, double frame, double step, float* left, float* right,
                int frames) noexcept
{
    const auto index = static_cast<int32_t> (frame);
    if (step == 1.0 && frame == index)
    {
        std::copy_n (view.left + index, frames, left);
        std::copy_n (view.right + index, frames, right);
        return;
    }
    for (int i = 0; i < frames; ++i)
    {
        const auto where = frame + i * step;
        const auto at = static_cast<int32_t> (where);
        const auto t = static_cast<float> (where - at);
        const auto *l = view.left + at, *r = view.right + at;
        left[i] = cubic (l[-1], l[0], l[1], l[2], t);
        right[i] = cubic (r[-1], r[0], r[1], r[2], t);
    }
}

float largestStep (const float* side, int32_t first, int32_t last) noexcept
{
    auto largest = 0.0f;
    for (auto i = first; i + 1 < last; ++i)
        largest = std::max (largest, std::abs (side[i + 1] - side[i]));
    return largest;
}

/** The change of slope at a frame, given the two before it. */
float bendAt (float earlier, float before, float here) noexcept
{
    return std::abs (here - 2.0f * before + earlier);
}

float largestBend (const float* side, int32_t first, int32_t last) noexcept
{
    auto largest = 0.0f;
    for (auto i = first + 2; i < last; ++i)
        largest = std::max (largest, bendAt (side[i - 2], side[i - 1], side[i]));
    return largest;
}

float largest (const float* side, int32_t first, int32_t last) noexcept
{
    auto most = 0.0f;
    for (auto i = first; i < last; ++i)
        most = std::max (most, std::abs (side[i]));
    return most;
}

/** True for a sample that begins at full level and falls from there: its first step is the attack itself. */
bool beginsAsHit (const SampleView& view) noexcept
{
    const auto isShort = view.frames < decayedTo;
    const auto from = isShort ? view.frames / 2 : decayedFrom;
    auto first = 0.0f, later = 0.0f;
    for (const auto* side : { view.left, view.right })
    {
        first = std::max (first, largest (side, 0, std::min (hitFrames, from)));
        later = std::max (later, largest (side, from, std::min (decayedTo, view.frames)));
    }
    return first > (isShort ? shortDecayFactor : decayFactor) * later;
}

bool isOwn (float step, float ownSteps, float factor) noexcept
{
    return std::abs (step) <= std::max (factor * ownSteps, inaudible);
}
}

SampleView SampleView::of (const float* left, const float* right, const SampleFacts& facts) noexcept
{
    SampleView view;
    view.left = left;
    view.right = right;
    view.frames = facts.lengthFrames;
    const auto limit = static_cast<uint32_t> (std::max (facts.lengthFrames, 0));
    view.end = static_cast<int32_t> (std::min (facts.beatEnd, limit));
    view.begin = static_cast<int32_t> (std::min (facts.beatStart, limit));
    if (view.end <= view.begin)
    {
        view.begin = 0;
        view.end = view.frames;
    }
    return view;
}

void SampleReading::read (const SampleView& view, SamplePlace& place, double step, double fadeFrames,
                          float* left, float* right, int frames) noexcept
{
    for (int done = 0; done < frames;)
    {
        if (const auto clear = std::min (clearFrames (view, place, step, fadeFrames), frames - done);
            clear > 0)
        {
            readClear (view, place.frame, step, left + done, right + done, clear);
            place.frame += clear * step;
            done += clear;
            continue;
        }
        if (!view.loops && place.frame >= view.frames)
        {
            std::fill (left + done, left + frames, 0.0f);
            std::fill (right + done, right + frames, 0.0f);
            place.frame += (frames - done) * step;
            return;
        }
        const auto index = static_cast<int32_t> (place.frame);
        const auto t = static_cast<float> (place.frame - index);
        const auto weight = static_cast<float> (weightAt (view, place, fadeFrames));
        left[done] = weight * interpolated (view, view.left, index, t);
        right[done++] = weight * interpolated (view, view.right, index, t);
        advance (view, place, step);
    }
}

bool SampleReading::beginsWithStep (const SampleView& view, double frame) noexcept
{
    const auto first = static_cast<int32_t> (frame);
    if (first < 0 || first >= view.frames)
        return false;
    if (first == 0 && beginsAsHit (view))
        return false;
    const auto last = std::min (first + neighbourhood, view.frames);
    for (const auto* side : { view.left, view.right })
        if (!isOwn (side[first], largestStep (side, first, last), beginFactor))
            return true;
    return false;
}

bool SampleReading::beginsWithAttack (const SampleView& view, double frame) noexcept
{
    const auto first = std::clamp (static_cast<int32_t> (frame), 0, view.frames);
    auto before = inaudible, after = 0.0f;
    for (const auto* side : { view.left, view.right })
    {
        before = std::max (before, largest (side, std::max (0, first - 4 * neighbourhood), first));
        after = std::max (after, largest (side, first, std::min (view.frames, first + 2 * neighbourhood)));
    }
    return after > attackFactor * before;
}

void SampleReading::inspectSeam (SampleView& view) noexcept
{
    view.fadesOutAtSeam = view.fadesInAtSeam = false;
    if (view.regionFrames() < 4)
        return;
    const auto before = std::max (view.begin, view.end - neighbourhood);
    const auto after = std::min (view.end, view.begin + neighbourhood);
    for (const auto* side : { view.left, view.right })
    {
        const auto own =
            std::max (largestBend (side, before, view.end), largestBend (side, view.begin, after));
        const auto seam = std::max (bendAt (side[view.end - 2], side[view.end - 1], side[view.begin]),
                                    bendAt (side[view.end - 1], side[view.begin], side[view.begin + 1]));
        if (!isOwn (seam, own, seamFactor))
            view.fadesOutAtSeam = true;
    }
    view.fadesInAtSeam = view.fadesOutAtSeam && beginsWithStep (view, view.begin);
}
