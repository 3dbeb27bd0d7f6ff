#include "deck/DeckReader.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double sampleScale = 3.0517578125e-05; // 1 / 32768
constexpr double declickFloor = 0.001, declickFade = 0.984;
constexpr double nudgeStep = 2.5e-7;
constexpr double jogFloor = 0.01, bendFloor = 0.001, rateFloor = 0.001;
constexpr double dullingSpeed = 10.0;

struct Frame
{
    double left = 0.0, right = 0.0;

    void add (const Frame& other, double weight, double noise = 0.0) noexcept
    {
        left += other.left * weight + noise;
        right += other.right * weight + noise;
    }
};

/** The cubic through four samples around b, of which c is the next: Catmull-Rom's. */
double cubic (const int16_t* b, double t) noexcept
{
    const double before = b[-1], here = b[0], next = b[1], after = b[2];
    return ((((here - next) * 1.5 + (after - before) * 0.5) * t
             + (before - here * 2.5 + next * 2.0 - after * 0.5))
                * t
            + (next - before) * 0.5)
               * t
           + here;
}

/** The part of a deck that the loop over samples works on. */
struct Reader : ReaderState
{
    const int16_t *leftSamples, *rightSamples;
    int32_t loadedFrames;
    double dullingRate = 0.0, dulling = 0.0; ///< the factor of a rate, kept while the rate holds

    explicit Reader (const DeckPlayer& deck) noexcept
        : ReaderState (deck),
          leftSamples (deck.audioMemory.left()),
          rightSamples (deck.audioMemory.right()),
          loadedFrames (deck.loadedFrames)
    {
    }

    /** Adds the interpolated samples at a position, times `weight`; nothing where the cubic has no four samples. */
    void addSampleAt (double where, double weight, double noise, Frame& frame) const noexcept
    {
        const auto index = static_cast<int32_t> (where);
        if (index < 1 || index >= loadedFrames - 2)
            return;
        const auto t = where - index;
        frame.add ({ cubic (leftSamples + index, t), cubic (rightSamples + index, t) }, weight * sampleScale,
                   noise);
    }

    Frame nextFrame (double noise) noexcept
    {
        Frame frame;
        addSampleAt (position, 1.0 - declickGain, noise, frame);
        if (declickGain > declickFloor)
        {
            addSampleAt (declickPosition, declickGain, 0.0, frame);
            declickPosition = std::clamp (declickPosition + rate, 0.0, static_cast<double> (loadedFrames));
            declickGain *= declickFade;
        }
        else
        {
            declickGain = 0.0;
        }

        if (rate != dullingRate)
        {
            const auto g = rate * dullingSpeed;
            dulling = g / std::sqrt (1.0 + g * g);
            dullingRate = rate;
        }
        frame.left *= dulling;
        frame.right *= dulling;
        return frame;
    }
};

/** What a block holds fixed of the transport: commands fall between blocks. */
struct Drive
{
    double playPart; ///< speed of the playing track; 0 when stopped or in scratch
    double playFactor, direction, nudgePush;
    double startPoint;
    bool playing, nudging;

    Drive (const DeckPlayer& deck, const ReaderBlock& block) noexcept
    {
        playing = deck.playState != 0 && deck.scratchOn == 0;
        playPart = block.speedRatio;
        playFactor = block.playFactor;
        direction = deck.reverse != 0 ? -1.0 : 1.0;
        nudging = !playing && deck.nudge != 0;
        nudgePush = deck.nudge * nudgeStep;
        startPoint = deck.startPointOn != 0 ? deck.startPoint.get() : 0.0;
    }

    double target (double jog) const noexcept
    {
        auto speed = jog * direction;
        if (playing)
            speed = (speed + playPart) * playFactor;
        return speed * direction;
    }
};

double decayed (double value, double coefficient, double floor) noexcept
{
    value *= coefficient;
    return std::abs (value) < floor ? 0.0 : value;
}
}

ReaderState::ReaderState (const DeckPlayer& deck) noexcept
    : position (deck.position),
      rate (deck.rate),
      jog (deck.jogValue),
      bend (deck.bend),
      nudgeAccel (deck.nudgeAccel),
      linear (deck.linearPosition),
      declickPosition (deck.declickPosition),
      declickGain (deck.declickGain)
{
}

void ReaderState::storeTo (DeckPlayer& deck) const noexcept
{
    deck.position = position;
    deck.rate = rate;
    deck.jogValue = jog;
    deck.bend = bend;
    deck.nudgeAccel = nudgeAccel;
    deck.linearPosition = linear;
    deck.declickPosition = declickPosition;
    deck.declickGain = declickGain;
}

void readDeck (DeckPlayer& deck, const ReaderBlock& block, NoiseTable& noise, float* left, float* right,
               int frames) noexcept
{
    Reader reader (deck);
    const Drive drive (deck, block);

    const auto still = !drive.playing && !drive.nudging && reader.rate == 0.0 && reader.jog == 0.0
                       && reader.bend == 0.0 && reader.declickGain == 0.0;
    if (still)
    {
        std::fill_n (left, frames, 0.0f);
        std::fill_n (right, frames, 0.0f);
        return;
    }

    const auto end = static_cast<double> (reader.loadedFrames);
    for (int i = 0; i < frames; ++i)
    {
        const auto frame = reader.nextFrame (noise.next());
        left[i] = static_cast<float> (frame.left * block.leftGain);
        right[i] = static_cast<float> (frame.right * block.rightGain);

        const auto target = drive.target (reader.jog);
        if (drive.nudging)
        {
            reader.nudgeAccel += drive.nudgePush;
            reader.rate += reader.nudgeAccel;
        }
        reader.jog = decayed (reader.jog, block.decay100ms, jogFloor);
        reader.bend = decayed (reader.bend, block.decay100ms, bendFloor);

        reader.rate = target + (reader.rate - target) * block.smoothing5ms;
        // Only a deck that comes to rest is cut off: at high engine rates the first steps of a start are below the floor.
        if (std::abs (reader.rate) < rateFloor && std::abs (target) < rateFloor)
            reader.rate = 0.0;

        reader.position = std::clamp (reader.position + reader.rate, 0.0, end);
        reader.linear += reader.rate;
        reader.position = std::max (reader.position, drive.startPoint);
    }
    reader.storeTo (deck);
}
