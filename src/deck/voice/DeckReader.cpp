#include "deck/voice/DeckReader.h"

#include "support/CrossFade.h"
#include "support/OnePole.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr double nudgeStep = 2.5e-7;
constexpr double jogFloor = 0.01, bendFloor = 0.001, rateFloor = 0.001;
constexpr double dullingSpeed = 10.0;
constexpr double inaudibleJump = 2.0; // frames

/** A rate this near to its goal has arrived. */
constexpr double arrived = 1.0e-7;

/** The change of the rate that leads a deck at the file's own speed to whole frames: 0.35 cents, for 60 ms at most. */
constexpr double leadToFrame = 0.0002;
constexpr double wholeFrame = 1.0e-9;

/** Frames that are traced before they are interpolated. */
constexpr int traceFrames = 64;

/** The way of a few output frames through the track. */
struct Trace
{
    bool isSteady = false;                             ///< at one rate, with no old place
    bool isWhole = false;                              ///< from frame to frame: 1 each, or -1
    std::array<double, traceFrames> places, oldPlaces; ///< of the sound, and of the one that a jump fades out
    std::array<float, traceFrames> dulling, oldShare;
    int oldFrames = 0; ///< that have an old place
    double fastest = 0.0;
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

/** The head, and all that the loop over frames works on, in registers. */
class Reader : public ReadHead
{
public:
    Reader (const ReadHead& head, const ReadSource& source, const ReadDrive& d) noexcept
        : ReadHead (head),
          drive (d),
          region (d.region),
          target (d),
          end (source.frames),
          isNudging (!d.isPlaying && d.nudge != 0 && d.record == nullptr),
          isLed (d.isPlaying && !d.region.hasLoop() && d.record == nullptr),
          linearBefore (head.linear)
    {
        declickLeft = std::min (declickLeft, d.fadeFrames);
    }

    bool isStill() const noexcept
    {
        return drive.record == nullptr && !drive.isPlaying && !isNudging && rate == 0.0 && jog == 0.0
               && bend == 0.0 && declickLeft == 0;
    }

    /** Goes on by up to `frames`, but ends with one after which the reading goes on elsewhere. */
    Reading trace (Trace& trace, int frames) noexcept
    {
        Reading reading;
        trace.oldFrames = 0;
        trace.fastest = std::abs (rate);
        trace.isSteady = isSteadyFor (frames);
        if (trace.isSteady)
        {
            traceSteady (trace, frames);
            return { frames, false, false };
        }
        while (reading.frames < frames && !reading.jumped)
        {
            const auto i = static_cast<size_t> (reading.frames++);
            trace.places[i] = position;
            trace.dulling[i] = dulled();
            if (declickLeft > 0)
                traceOld (trace);
            moveRate();
            trace.fastest = std::max (trace.fastest, std::abs (rate));
            position = std::clamp (position + rate, 0.0, end);
            linear += rate;
            if (region.isLeftAt (position))
            {
                reading.led = true;
                reading.jumped = keepToRegion();
            }
        }
        return reading;
    }

    /** Gives the head back. */
    void leaveTo (ReadHead& head) noexcept
    {
        if (drive.isRolling)
            roll = std::clamp (roll + (linear - linearBefore), 0.0, end);
        head = *this;
    }

private:
    /** True if for so many frames the rate has arrived, nothing else is at work, and the region holds. */
    bool isSteadyFor (int frames) const noexcept
    {
        if (isNudging || jog != 0.0 || bend != 0.0 || declickLeft != 0 || std::abs (rate) < rateFloor
            || rate != target.at (0.0))
            return false;
        if (isLed && std::abs (rate) == 1.0 && position != std::round (position))
            return false;
        const auto first = position + rate, beyond = position + (frames + 1) * rate;
        return !region.isLeftAt (first) && !region.isLeftAt (beyond) && beyond >= 0.0 && beyond <= end;
    }

    void traceSteady (Trace& trace, int frames) noexcept
    {
        trace.isWhole = std::abs (rate) == 1.0 && position == std::round (position);
        std::fill_n (trace.dulling.begin(), frames, dulled());
        const auto from = position;
        auto* const places = trace.places.data();
        if (trace.isWhole)
        {
            for (int i = 0; i < frames; ++i)
                places[i] = from + i * rate;
            position = from + frames * rate;
        }
        else
        {
            for (int i = 0; i < frames; ++i, position += rate)
                places[i] = position;
        }
        linear += frames * rate;
    }

    void traceOld (Trace& trace) noexcept
    {
        const auto i = static_cast<size_t> (trace.oldFrames++);
        trace.oldPlaces[i] = declickPosition;
        trace.oldShare[i] =
            static_cast<float> (FadeCurve::at (static_cast<double> (declickLeft) / drive.fadeFrames));
        declickPosition = std::clamp (declickPosition + rate, 0.0, end);
        --declickLeft;
    }

    /** The factor of the dulling of slow speeds. */
    float dulled() noexcept
    {
        if (rate != dullingRate)
        {
            const auto g = rate * dullingSpeed;
            dulling = static_cast<float> (g / std::sqrt (1.0 + g * g));
            dullingRate = rate;
        }
        return dulling;
    }

    void moveRate() noexcept
    {
        const auto wanted = target.at (jog);
        if (isNudging)
        {
            nudgeAccel += drive.nudge * nudgeStep;
            rate += nudgeAccel;
        }
        jog = decayed (jog, drive.decay100ms, jogFloor);
        bend = decayed (bend, drive.decay100ms, bendFloor);
        if (drive.record != nullptr)
        {
            rate = drive.record->take() * drive.speedRatio;
            return;
        }

        rate = OnePole::approached (rate, wanted, drive.smoothing5ms);
        const auto missing = std::abs (rate - wanted);
        if (missing < arrived)
            rate = wanted;
        if (isLed && std::abs (wanted) == 1.0 && missing <= leadToFrame)
            rate = leadingToFrame (wanted);
        // Only a deck that comes to rest is cut off: at high engine rates the first steps of a start are below the floor.
        if (std::abs (rate) < rateFloor && std::abs (wanted) < rateFloor)
            rate = 0.0;
    }

    double leadingToFrame (double wanted) noexcept
    {
        const auto stray = std::round (position) - position;
        if (std::abs (stray) < wholeFrame)
        {
            position = std::round (position);
            return wanted;
        }
        return wanted + std::clamp (stray, -leadToFrame, leadToFrame);
    }

    /** Leads a position that has left the region back to it. @returns true if it goes on elsewhere */
    bool keepToRegion() noexcept
    {
        const auto from = position;
        if (region.isTurnedAt (position))
            position = region.turned (position, rate);
        position = std::clamp (position, std::min (region.floor, end), end);
        const auto jumped = std::abs (position - from) > inaudibleJump + std::abs (rate);
        if (jumped)
        {
            declickFrom (from);
            declickLeft = drive.fadeFrames;
        }
        return jumped;
    }

    const ReadDrive& drive;
    const LoopRegion region;
    const Target target;
    const double end;
    const bool isNudging, isLed;
    const double linearBefore;
    double dullingRate = 0.0;
    float dulling = 0.0f; ///< the factor of a rate, kept while the rate holds
};

/** Makes the sound of a trace. */
void render (const Trace& trace, const TrackSamples& samples, NoiseTable& noise, float* left, float* right,
             int frames) noexcept
{
    const auto last = static_cast<size_t> (frames - 1);
    if (trace.isSteady && samples.covers (trace.places[0]) && samples.covers (trace.places[last]))
    {
        if (trace.isWhole)
            samples.readWhole (trace.places[0], trace.places[0] <= trace.places[last], left, right, frames);
        else
            samples.read (trace.places.data(), trace.fastest, left, right, frames);
        for (int i = 0; i < frames; ++i)
        {
            const auto tiny = static_cast<float> (noise.next());
            left[i] = (left[i] + tiny) * trace.dulling[0];
            right[i] = (right[i] + tiny) * trace.dulling[0];
        }
        return;
    }
    samples.read (trace.places.data(), trace.fastest, left, right, frames);
    if (trace.oldFrames > 0)
    {
        std::array<float, traceFrames> oldLeft, oldRight;
        samples.read (trace.oldPlaces.data(), trace.fastest, oldLeft.data(), oldRight.data(),
                      trace.oldFrames);
        for (int i = 0; i < trace.oldFrames; ++i)
        {
            const auto at = static_cast<size_t> (i);
            left[i] = CrossFade::mixed (left[i], oldLeft[at], trace.oldShare[at]);
            right[i] = CrossFade::mixed (right[i], oldRight[at], trace.oldShare[at]);
        }
    }
    for (int i = 0; i < frames; ++i)
    {
        const auto at = static_cast<size_t> (i);
        const auto tiny = samples.covers (trace.places[at]) ? static_cast<float> (noise.next()) : 0.0f;
        const auto factor = trace.dulling[at];
        left[i] = (left[i] + tiny) * factor;
        right[i] = (right[i] + tiny) * factor;
    }
}
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
    Reader reader (head, source, drive);
    if (reader.isStill())
    {
        std::fill_n (left, frames, 0.0f);
        std::fill_n (right, frames, 0.0f);
        return { frames, false, false };
    }

    const auto samples = source.samples();
    Reading reading;
    Trace trace;
    while (reading.frames < frames && !reading.jumped)
    {
        const auto done = reading.frames;
        const auto part = reader.trace (trace, std::min (frames - done, traceFrames));
        render (trace, samples, noise, left + done, right + done, part.frames);
        reading = { done + part.frames, reading.led || part.led, part.jumped };
    }
    reader.leaveTo (head);
    return reading;
}

void traceDeck (ReadHead& head, const ReadSource& source, const ReadDrive& drive, double* places,
                int frames) noexcept
{
    Reader reader (head, source, drive);
    Trace trace;
    for (int done = 0; done < frames;)
    {
        const auto part = reader.trace (trace, std::min (frames - done, traceFrames));
        std::copy_n (trace.places.begin(), part.frames, places + done);
        done += part.frames;
    }
    // Without sound there is none to fade out.
    reader.declickPosition = head.declickPosition;
    reader.declickLeft = head.declickLeft;
    reader.leaveTo (head);
}
