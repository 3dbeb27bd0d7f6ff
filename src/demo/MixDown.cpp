#include "demo/MixDown.h"

#include "demo/Space.h"

#include <algorithm>
#include <array>

namespace
{
constexpr int blockFrames = 64;
constexpr double rate = DemoTrack::sampleRate;

using Block = std::array<float, blockFrames>;

struct StereoBlock
{
    Block left {}, right {};

    void clear() noexcept
    {
        left.fill (0.0f);
        right.fill (0.0f);
    }

    void add (const StereoBlock& other, float gain) noexcept
    {
        if (gain == 0.0f)
            return;
        for (size_t i = 0; i < blockFrames; ++i)
        {
            left[i] += gain * other.left[i];
            right[i] += gain * other.right[i];
        }
    }
};

struct BusSettings
{
    double gainDb;
    float duck;    ///< share of the song's ducking
    float room;    ///< send
    float echo;    ///< send
    double lowCut; ///< Hz; 0 is none
    bool swept;    ///< goes through the section's filter
};

// clang-format off
constexpr std::array<BusSettings, numBuses> settings{ {
    { 0.0, 0.0f,  0.0f,  0.0f,  0.0,   false }, // kick
    { 7.0, 0.15f, 0.03f, 0.0f,  300.0, false }, // hats
    { 5.5, 0.0f,  0.14f, 0.0f,  90.0,  false }, // hits
    {-1.0, 1.0f,  0.0f,  0.0f,  0.0,   false }, // bass
    { 7.5, 0.85f, 0.20f, 0.06f, 200.0, true  }, // chords
    { 8.5, 0.5f,  0.16f, 0.38f, 220.0, true  }, // lead
    { 5.0, 0.4f,  0.22f, 0.0f,  0.0,   false }, // effects
} };
// clang-format on

/** One bus: what it plays now, and its filters. */
class Channel
{
public:
    explicit Channel (const BusSettings& s) noexcept
        : bus (s),
          gain (static_cast<float> (PortableMath::fromDecibels (s.gainDb)))
    {
        for (auto* filter : { &cutLeft, &cutRight })
            filter->tune (bus.lowCut / rate, 0.7);
    }

    void start (const Score::Stroke& stroke) { playing.push_back (&stroke); }

    /** True when nothing plays and the filters have rung out. */
    bool isSilent() const noexcept { return playing.empty() && ringing <= 0; }

    /** The next block, valid until the next call.
        @param taken   what the ducker takes away
        @param sweepHz   the section's cut-off */
    const StereoBlock& play (int64_t blockStart, const Block& taken, double sweepHz) noexcept
    {
        ringing = playing.empty() ? ringing - blockFrames : static_cast<int> (rate / 4.0);
        block.clear();
        std::erase_if (playing,
                       [&] (const Score::Stroke* stroke) { return addStroke (*stroke, blockStart); });
        if (bus.lowCut > 0.0)
            filter (cutLeft, cutRight, &Filter::highPass);
        if (bus.swept)
        {
            sweepLeft.tune (sweepHz / rate, 0.9);
            sweepRight.tune (sweepHz / rate, 0.9);
            filter (sweepLeft, sweepRight, &Filter::lowPass);
        }
        for (size_t i = 0; i < blockFrames; ++i)
        {
            const auto level = gain * (1.0f - bus.duck * taken[i]);
            block.left[i] *= level;
            block.right[i] *= level;
        }
        return block;
    }

    const BusSettings& bus;

private:
    /** @returns true when the stroke has ended */
    bool addStroke (const Score::Stroke& stroke, int64_t blockStart) noexcept
    {
        const auto& shot = *stroke.shot;
        const auto length = static_cast<int64_t> (shot.frames());
        const auto offset = blockStart - stroke.frame;
        const auto from = static_cast<size_t> (std::max<int64_t> (0, -offset));
        const auto to = static_cast<size_t> (std::min<int64_t> (blockFrames, length - offset));
        const auto* left = shot.left.data() + std::max<int64_t> (0, offset);
        const auto* right =
            (shot.right.empty() ? shot.left.data() : shot.right.data()) + std::max<int64_t> (0, offset);
        for (auto i = from; i < to; ++i)
        {
            block.left[i] += stroke.left * left[i - from];
            block.right[i] += stroke.right * right[i - from];
        }
        return offset + blockFrames >= length;
    }

    /** Both channels in one loop: each filter waits for its own last sample, so two side by side take as long as
        one. They work on copies, which the compiler can hold in registers. */
    template <typename Response>
    void filter (Filter& left, Filter& right, Response response) noexcept
    {
        auto l = left, r = right;
        for (size_t i = 0; i < blockFrames; ++i)
        {
            block.left[i] = static_cast<float> ((l.*response) (block.left[i]));
            block.right[i] = static_cast<float> ((r.*response) (block.right[i]));
        }
        left = l;
        right = r;
    }

    float gain;
    std::vector<const Score::Stroke*> playing;
    StereoBlock block;
    int ringing = 0; ///< frames for which the filters are still heard
    Filter cutLeft, cutRight, sweepLeft, sweepRight;
};

/** The gain that the kick leaves to the others: down within 2 ms, back along a square curve. */
class Ducker
{
public:
    explicit Ducker (const Song& song) noexcept
        : depth (song.duckDepth),
          fall (1.0 / (song.duckBeats * song.track.beatFrames()))
    {
    }

    void trigger() noexcept { left = 1.0; }

    /** Reduction in the next frame, 0 to 1. */
    double next() noexcept
    {
        smoothed += 0.02 * (depth * left * left - smoothed);
        left = std::max (0.0, left - fall);
        return smoothed;
    }

private:
    double depth, fall, left = 0.0, smoothed = 0.0;
};

/** The cut-off of the section filter at a frame, moving evenly in pitch. */
class Sweep
{
public:
    explicit Sweep (const Song& s) noexcept : song (s) {}

    double at (int64_t frame) noexcept
    {
        while (index + 1 < song.sections.size()
               && frame >= song.track.barFrames (firstBar + song.sections[index].bars))
            firstBar += song.sections[index++].bars;
        const auto& section = song.sections[index];
        const auto from = static_cast<double> (song.track.barFrames (firstBar));
        const auto to = static_cast<double> (song.track.barFrames (firstBar + section.bars));
        const auto along = std::clamp ((static_cast<double> (frame) - from) / (to - from), 0.0, 1.0);
        return section.sweepFromHz * PortableMath::exp2 (section.sweepOctaves * along);
    }

private:
    const Song& song;
    size_t index = 0;
    int firstBar = 0;
};
}

juce::AudioBuffer<float> mixDown (const Song& song, const Score& score)
{
    const auto frames = static_cast<int> (song.track.barFrames (song.track.bars));
    juce::AudioBuffer<float> mix (2, frames);
    auto* outLeft = mix.getWritePointer (0);
    auto* outRight = mix.getWritePointer (1);

    std::vector<Channel> channels (settings.begin(), settings.end());
    Ducker ducker (song);
    Sweep sweep (song);
    Echo echo (static_cast<int> (song.echoSteps * song.track.beatFrames() / 4.0), rate);
    Room room (song.roomSeconds, rate);
    auto next = score.strokes().begin();

    for (int start = 0; start < frames; start += blockFrames)
    {
        int kickAt = -1;
        for (; next != score.strokes().end() && next->frame < start + blockFrames; ++next)
        {
            channels[static_cast<size_t> (next->bus)].start (*next);
            if (next->bus == Bus::kick)
                kickAt = static_cast<int> (next->frame) - start;
        }
        Block taken;
        for (int i = 0; i < blockFrames; ++i)
        {
            if (i == kickAt)
                ducker.trigger();
            taken[static_cast<size_t> (i)] = static_cast<float> (ducker.next());
        }

        StereoBlock sum, roomIn, echoIn;
        const auto cutoff = sweep.at (start);
        for (auto& channel : channels)
        {
            if (channel.isSilent())
                continue;
            const auto& played = channel.play (start, taken, cutoff);
            sum.add (played, 1.0f);
            roomIn.add (played, channel.bus.room);
            echoIn.add (played, channel.bus.echo);
        }

        const auto count = static_cast<size_t> (std::min (blockFrames, frames - start));
        for (size_t i = 0; i < count; ++i)
        {
            const auto echoed = echo.process ({ echoIn.left[i], echoIn.right[i] });
            const auto reflected =
                room.process ({ roomIn.left[i] + 0.2 * echoed.left, roomIn.right[i] + 0.2 * echoed.right });
            const auto gain = 1.0 - 0.5 * taken[i];
            outLeft[static_cast<size_t> (start) + i] =
                static_cast<float> (sum.left[i] + gain * (echoed.left + reflected.left));
            outRight[static_cast<size_t> (start) + i] =
                static_cast<float> (sum.right[i] + gain * (echoed.right + reflected.right));
        }
    }
    return mix;
}
