#include "deck/voice/DeckReader.h"

#include "deck/voice/TrackSamples.h"
#include "support/OnePole.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr double nudgeStep = 2.5e-7;
constexpr double jogFloor = 0.01, bendFloor = 0.001, rateFloor = 0.001;
constexpr double dullingSpeed = 10.0;
constexpr double inaudibleJump = 2.0;         // frames
constexpr int32_t longestBar = 1'000'000'000; // frames; a deck may go round a loop without beats all night

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
    TrackSamples samples;
    double dullingRate = 0.0, dulling = 0.0; ///< the factor of a rate, kept while the rate holds

    Reader (const ReadHead& head, const ReadSource& source) noexcept
        : ReadHead (head),
          samples { source.left, source.right, source.frames }
    {
    }

    TrackFrame nextFrame (double noise) noexcept
    {
        TrackFrame frame;
        samples.addAt (position, 1.0 - declickGain, noise, frame);
        if (declickGain > declickFloor)
        {
            samples.addAt (declickPosition, declickGain, 0.0, frame);
            declickPosition = std::clamp (declickPosition + rate, 0.0, static_cast<double> (samples.frames));
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
        position = std::clamp (position, std::min (region.floor, static_cast<double> (samples.frames)),
                               static_cast<double> (samples.frames));
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

/** Neither moves by itself nor by a hand, and has no old audio to fade. */
bool standsStill (const ReadHead& head, const ReadDrive& drive) noexcept
{
    return !drive.isPlaying && drive.nudge == 0 && head.rate == 0.0 && head.jog == 0.0 && head.bend == 0.0
           && head.declickGain == 0.0;
}

/** Moves the head on by up to `frames` frames, each of which is first given to a function; ends after one with which the
    reading goes on elsewhere. */
template <typename TakeFrame>
Reading move (ReadHead& head, const ReadSource& source, const ReadDrive& drive, int frames,
              TakeFrame&& takeFrame) noexcept
{
    Reader reader (head, source);
    const Target target (drive);
    const auto nudging = !drive.isPlaying && drive.nudge != 0;
    const auto nudgePush = drive.nudge * nudgeStep;

    const auto end = static_cast<double> (source.frames);
    const auto linearBefore = reader.linear;
    const auto region = drive.region;
    Reading reading;
    auto& done = reading.frames;
    while (done < frames && !reading.jumped)
    {
        takeFrame (reader, done++);

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
    if (standsStill (head, drive))
    {
        std::fill_n (left, frames, 0.0f);
        std::fill_n (right, frames, 0.0f);
        return { frames, false, false };
    }
    return move (head, source, drive, frames,
                 [&] (Reader& reader, int frame)
                 {
                     const auto sound = reader.nextFrame (noise.next());
                     left[frame] = static_cast<float> (sound.left);
                     right[frame] = static_cast<float> (sound.right);
                 });
}

void traceDeck (ReadHead& head, const ReadSource& source, const ReadDrive& drive, double* places,
                int frames) noexcept
{
    if (standsStill (head, drive))
    {
        std::fill_n (places, frames, head.position);
        return;
    }
    for (int done = 0; done < frames;)
        done += move (head, source, drive, frames - done,
                      [&] (const Reader& reader, int frame) { places[done + frame] = reader.position; })
                    .frames;
}
