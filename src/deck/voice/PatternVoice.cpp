#include "deck/voice/PatternVoice.h"

#include "support/FadeCurve.h"
#include "support/OnePole.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double jumpSeconds = 0.002;
constexpr double heardStep =
    3.0; ///< frames by which a step may differ from the one before without being heard
constexpr double dullingSpeed = 10.0, unheardLevel = 0.003;
constexpr double glideFade = 0.984, glideFloor = 0.01; // of a frame
}

double PatternVoice::dullingOf (double speed) noexcept
{
    if (speed != dullingStep)
    {
        const auto g = speed * dullingSpeed;
        dulling = std::abs (g) / std::sqrt (1.0 + g * g);
        dullingStep = speed;
    }
    return dulling;
}

void PatternVoice::begin (const ReadHead& head) noexcept
{
    sounding = true;
    place = head.position - head.rate;
    motion = lastStep = head.rate;
    glide = 0.0;
    fadingCount = 0;
    level = std::copysign (dullingOf (head.rate), head.rate);
    if (head.declickLeft > 0)
        fading[static_cast<size_t> (fadingCount++)] = { head.declickPosition, level, head.declickLeft, 0 };
}

/** Takes up the step to a frame's place. @returns the speed that is heard */
double PatternVoice::speedOf (double step, int frame, double ownRate, double fileRate,
                              int fadeFrames) noexcept
{
    const auto before = lastStep;
    lastStep = step;
    if (std::abs (step - motion) <= heardStep)
        return motion = step;
    if (std::abs (step) > jumpSeconds * fileRate)
    {
        // With all places taken, the sound of a moment ago has hardly come in yet.
        if (fadingCount < mostFading)
            fading[static_cast<size_t> (fadingCount++)] = { place + glide + ownRate, level, fadeFrames,
                                                            frame };
        glide = 0.0;
        level = std::copysign (dullingOf (ownRate), ownRate);
        return motion = ownRate;
    }
    if (std::abs (step - before) <= heardStep)
        return motion = step; // a fast movement, not a step
    glide -= step - motion;
    return motion;
}

void PatternVoice::trace (Way& way, const Setting& setting, const double* own, const double* offsets,
                          double ownRate, double fileRate, double end, int frames) noexcept
{
    const auto floor = std::min (setting.floor, end);
    for (int i = 0; i < frames; ++i)
    {
        const auto next = std::clamp (own[i] + (offsets != nullptr ? offsets[i] : 0.0), floor, end);
        const auto speed = speedOf (next - place, i, ownRate, fileRate, setting.fadeFrames);
        place = next;
        level = OnePole::approached (level, std::copysign (dullingOf (speed), ownRate), setting.smoothing5ms);
        way.places[static_cast<size_t> (i)] = std::clamp (next + glide, floor, end);
        way.levels[static_cast<size_t> (i)] = static_cast<float> (level);
        way.fastest = std::max (way.fastest, std::abs (speed));
        glide *= glideFade;
    }
    if (std::abs (glide) < glideFloor)
        glide = 0.0;
}

void PatternVoice::mixFading (const TrackSamples& samples, const Setting& setting, double ownRate, double end,
                              float* left, float* right, int frames) noexcept
{
    // From the newest jump back: what follows a jump fades in over what was before it.
    Frames heard;
    std::array<Frames, mostFading> weights;
    for (int i = 0; i < frames; ++i)
    {
        auto* above = &heard[static_cast<size_t> (i)];
        auto share = 1.0f;
        for (int k = fadingCount - 1; k >= 0; --k)
        {
            const auto& old = fading[static_cast<size_t> (k)];
            if (i < old.begin)
                continue;
            const auto fadeLeft = static_cast<double> (std::max (0, old.left - (i - old.begin)));
            const auto rest = share * static_cast<float> (FadeCurve::at (fadeLeft / setting.fadeFrames));
            *above = share - rest;
            share = rest;
            above = &weights[static_cast<size_t> (k)][static_cast<size_t> (i)];
        }
        *above = share;
    }
    for (int i = 0; i < frames; ++i)
    {
        left[i] *= heard[static_cast<size_t> (i)];
        right[i] *= heard[static_cast<size_t> (i)];
    }

    std::array<double, longestPiece> places;
    Frames oldLeft, oldRight;
    for (int k = 0; k < fadingCount; ++k)
    {
        auto& old = fading[static_cast<size_t> (k)];
        const auto count = frames - old.begin;
        for (int i = 0; i < count; ++i)
            places[static_cast<size_t> (i)] = std::clamp (old.place + ownRate * i, 0.0, end);
        samples.read (places.data(), ownRate, oldLeft.data(), oldRight.data(), count);
        for (int i = 0; i < count; ++i)
        {
            const auto weight = weights[static_cast<size_t> (k)][static_cast<size_t> (old.begin + i)]
                                * static_cast<float> (old.level);
            left[old.begin + i] += oldLeft[static_cast<size_t> (i)] * weight;
            right[old.begin + i] += oldRight[static_cast<size_t> (i)] * weight;
        }
        old.place += ownRate * count;
        old.left -= count;
        old.begin = 0;
    }
    // A fade that has ended has also ended all before it.
    for (int k = fadingCount - 1; k >= 0; --k)
        if (fading[static_cast<size_t> (k)].left <= 0)
        {
            std::copy (fading.begin() + k + 1, fading.begin() + fadingCount, fading.begin());
            fadingCount -= k + 1;
            break;
        }
}

void PatternVoice::read (const ReadSource& source, const Setting& setting, const double* own,
                         const double* offsets, double ownRate, NoiseTable& noise, float* left, float* right,
                         int frames) noexcept
{
    const auto end = static_cast<double> (source.frames);
    const auto samples = source.samples();
    for (int k = 0; k < fadingCount; ++k)
        fading[static_cast<size_t> (k)].left =
            std::min (fading[static_cast<size_t> (k)].left, setting.fadeFrames);

    Way way;
    trace (way, setting, own, offsets, ownRate, source.grid.sampleRate, end, frames);
    samples.read (way.places.data(), way.fastest, left, right, frames);
    for (int i = 0; i < frames; ++i)
    {
        left[i] *= way.levels[static_cast<size_t> (i)];
        right[i] *= way.levels[static_cast<size_t> (i)];
    }
    if (fadingCount > 0)
        mixFading (samples, setting, ownRate, end, left, right, frames);
    for (int i = 0; i < frames; ++i)
    {
        const auto quiet = static_cast<float> (noise.next());
        left[i] += quiet;
        right[i] += quiet;
    }
    const auto isAtOwnLevel = std::abs (level - std::copysign (dullingOf (ownRate), ownRate)) < unheardLevel;
    if (offsets == nullptr && fadingCount == 0 && glide == 0.0 && isAtOwnLevel)
        sounding = false;
}

void PatternVoice::readOn (const ReadSource& source, const Setting& setting, double ownRate,
                           NoiseTable& noise, float* left, float* right, int frames) noexcept
{
    std::array<double, longestPiece> places;
    for (int i = 0; i < frames; ++i)
        places[static_cast<size_t> (i)] = place + ownRate * (i + 1);
    read (source, setting, places.data(), nullptr, ownRate, noise, left, right, frames);
}
