#include "deck/voice/DeckReader.h"

#include "support/OnePole.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr double sampleScale = 3.0517578125e-05; // 1 / 32768
constexpr double nudgeStep = 2.5e-7;
constexpr double jogFloor = 0.01, bendFloor = 0.001, rateFloor = 0.001;
constexpr double dullingSpeed = 10.0;
constexpr double inaudibleJump = 2.0;         // frames
constexpr int32_t longestBar = 1'000'000'000; // frames; a deck may go round a loop without beats all night

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

struct NextBeat
{
    int32_t entry;
    double frame;
};

NextBeat placeOf (const BeatGrid& grid, int32_t entry) noexcept
{
    return { entry,
             entry < grid.beatCount() ? grid.beatAt (entry) : std::numeric_limits<double>::infinity() };
}

/** The head and the samples that the loop over frames works on, in registers. */
struct Reader : ReadHead
{
    const int16_t *leftSamples, *rightSamples;
    int32_t loadedFrames;
    double dullingRate = 0.0, dulling = 0.0; ///< the factor of a rate, kept while the rate holds

    Reader (const ReadHead& head, const ReadSource& source) noexcept
        : ReadHead (head),
          leftSamples (source.left),
          rightSamples (source.right),
          loadedFrames (source.frames)
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

    /** Leads a position that has left the region back to it. @returns true if it goes on elsewhere */
    bool keepTo (const LoopRegion& region) noexcept
    {
        const auto from = position;
        if (region.isTurnedAt (position))
            position = region.turned (position, rate);
        position = std::clamp (position, std::min (region.floor, static_cast<double> (loadedFrames)),
                               static_cast<double> (loadedFrames));
        const auto jumped = std::abs (position - from) > inaudibleJump + std::abs (rate);
        if (jumped)
            declickFrom (from);
        return jumped;
    }

    /** @param frame   of this reading */
    void passBeat (const BeatGrid& grid, int frame) noexcept
    {
        if ((nextBeat - grid.downbeatEntry()) % 2 == 0)
        {
            framesOfBar = framesSinceBar + frame;
            framesSinceBar = -frame;
        }
        comeTo (placeOf (grid, nextBeat + 1));
    }

    void comeTo (const NextBeat& next) noexcept
    {
        nextBeat = next.entry;
        nextBeatFrame = next.frame;
    }
};

/** The speed that the rate goes for. */
struct Target
{
    double playPart;   ///< of the playing track
    double playFactor; ///< of jog and play part together
    double direction;
    bool isPlaying;

    explicit Target (const ReadDrive& drive) noexcept
        : playPart (drive.speedRatio),
          playFactor (drive.playFactor),
          direction (drive.region.isReverse ? -1.0 : 1.0),
          isPlaying (drive.isPlaying)
    {
    }

    double at (double jog) const noexcept
    {
        auto speed = jog * direction;
        if (isPlaying)
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

void findNextBeat (ReadHead& head, const BeatGrid& grid) noexcept
{
    const auto next = placeOf (grid, grid.firstEntryBeyond (head.position));
    head.nextBeat = next.entry;
    head.nextBeatFrame = next.frame;
}

void readDeck (ReadHead& head, const ReadSource& source, const ReadDrive& drive, NoiseTable& noise,
               float* left, float* right, int frames) noexcept
{
    for (int done = 0; done < frames;)
        done += readToJump (head, source, drive, noise, left + done, right + done, frames - done).frames;
}

Reading readToJump (ReadHead& head, const ReadSource& source, const ReadDrive& drive, NoiseTable& noise,
                    float* left, float* right, int frames) noexcept
{
    Reader reader (head, source);
    const Target target (drive);
    const auto nudging = !drive.isPlaying && drive.nudge != 0;
    const auto nudgePush = drive.nudge * nudgeStep;

    const auto still = !drive.isPlaying && !nudging && reader.rate == 0.0 && reader.jog == 0.0
                       && reader.bend == 0.0 && reader.declickGain == 0.0;
    if (still)
    {
        std::fill_n (left, frames, 0.0f);
        std::fill_n (right, frames, 0.0f);
        return { frames, false, false };
    }

    const auto end = static_cast<double> (reader.loadedFrames);
    const auto linearBefore = reader.linear;
    const auto region = drive.region;
    Reading reading;
    auto& done = reading.frames;
    while (done < frames && !reading.jumped)
    {
        const auto frame = reader.nextFrame (noise.next());
        left[done] = static_cast<float> (frame.left);
        right[done++] = static_cast<float> (frame.right);

        const auto wanted = target.at (reader.jog);
        if (nudging)
        {
            reader.nudgeAccel += nudgePush;
            reader.rate += reader.nudgeAccel;
        }
        reader.jog = decayed (reader.jog, drive.decay100ms, jogFloor);
        reader.bend = decayed (reader.bend, drive.decay100ms, bendFloor);

        reader.rate = OnePole::approached (reader.rate, wanted, drive.smoothing5ms);
        // Only a deck that comes to rest is cut off: at high engine rates the first steps of a start are below the floor.
        if (std::abs (reader.rate) < rateFloor && std::abs (wanted) < rateFloor)
            reader.rate = 0.0;

        reader.position = std::clamp (reader.position + reader.rate, 0.0, end);
        reader.linear += reader.rate;
        if (region.isLeftAt (reader.position))
        {
            reading.led = true;
            reading.jumped = reader.keepTo (region);
            // A beat that it lands on counts as passed, so that a loop ticks once a round.
            reader.comeTo (placeOf (source.grid,
                                    source.grid.firstEntryBeyond (reader.position - std::abs (reader.rate))));
        }
        if (reader.position >= reader.nextBeatFrame)
            reader.passBeat (source.grid, done);
    }
    reader.framesSinceBar = std::min (reader.framesSinceBar, longestBar) + done;
    if (drive.isRolling)
        reader.roll = std::clamp (reader.roll + (reader.linear - linearBefore), 0.0, end);
    head = reader;
    return reading;
}
