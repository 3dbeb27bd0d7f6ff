#include "measure/BenchEngine.h"

#include "SignalFaults.h"
#include "timecode/deckmode/TimecodeBrand.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <vector>

// bench_timecode_ride: scratches rendered through a deck under a control record, beside the track resampled along the true
// motion: how alike both sound in pieces of 20 ms, and how far apart in the track they are at most.

namespace
{
constexpr double rate = 44100, tau = 2 * std::numbers::pi;
constexpr int block = 128, trackSeconds = 60, startSeconds = 20;
constexpr int piece = 882;                            // frames
double decoderDelay = 0.0015;                         // seconds; the first argument in ms
constexpr double widest = 0.02, offsetStep = 0.00005; // of the search for the best displacement, seconds

/** A speed that is reached in some time from the one before, on a line. */
struct Step
{
    double speed, seconds;
};

struct Motion
{
    const char* name;
    double seconds;
    std::function<double (double)> speedAt;
};

std::function<double (double)> along (std::vector<Step> once)
{
    return [once] (double t)
    {
        auto length = 0.0;
        for (const auto& step : once)
            length += step.seconds;
        auto within = t < 1 ? 0.0 : std::fmod (t - 1, length);
        auto before = once.back().speed;
        if (t < 1)
            return 1.0;
        for (const auto& step : once)
        {
            if (within < step.seconds)
                return before + (step.speed - before) * within / step.seconds;
            within -= step.seconds;
            before = step.speed;
        }
        return before;
    };
}

const std::vector<Motion>& motions()
{
    static const std::vector<Motion> all {
        { "baby", 5, [] (double t) { return t < 1 ? 1.0 : 2.5 * std::sin (tau * 2 * (t - 1)); } },
        { "chirp", 5, along ({ { 3, 0.05 }, { 0, 0.15 }, { -3.5, 0.05 }, { 0, 0.12 }, { 0, 0.03 } }) },
        { "tear", 5,
          along ({ { 2, 0.04 },
                   { 0.2, 0.06 },
                   { 2, 0.06 },
                   { 0, 0.06 },
                   { -2, 0.05 },
                   { -0.2, 0.06 },
                   { -2, 0.06 },
                   { 0, 0.05 } }) },
        { "fast", 4, [] (double t) { return t < 1 ? 1.0 : 6 * std::sin (tau * 5 * (t - 1)); } },
        { "slow hand", 5, [] (double t) { return t < 1 ? 1.0 : 0.3 * std::cos (tau * (t - 1)); } },
    };
    return all;
}

/** Noise as loud at 100 Hz as at 1 kHz, and little above. */
juce::AudioBuffer<float> makeTrack()
{
    juce::AudioBuffer<float> track (2, static_cast<int> (trackSeconds * rate));
    std::mt19937 random (3);
    std::normal_distribution<float> normal (0, 1);
    for (int channel = 0; channel < 2; ++channel)
    {
        auto low = 0.0f, lower = 0.0f;
        for (int i = 0; i < track.getNumSamples(); ++i)
        {
            low += 0.15f * (normal (random) - low);
            lower += 0.15f * (low - lower);
            track.setSample (channel, i, std::clamp (lower, -1.0f, 1.0f));
        }
    }
    return track;
}

/** The track between its samples, by a cubic through four of them. */
double trackAt (const juce::AudioBuffer<float>& track, double seconds)
{
    const auto at = std::clamp (seconds * rate, 1.0, track.getNumSamples() - 4.0);
    const auto i = static_cast<int> (at);
    const auto f = at - i;
    const auto sample = [&] (int n) { return static_cast<double> (track.getSample (0, i + n)); };
    const auto a = sample (-1), b = sample (0), c = sample (1), d = sample (2);
    return ((((b - c) * 1.5 + (d - a) * 0.5) * f + (a - b * 2.5 + c * 2 - d * 0.5)) * f + (c - a) * 0.5) * f
           + b;
}

std::vector<float> render (BenchEngine& engine, const ControlSignal& signal)
{
    std::vector<float> heard;
    auto& inputs = engine.inputs();
    for (size_t done = 0; done + block <= signal.size(); done += block)
    {
        inputs.clear();
        std::copy_n (signal.left.begin() + static_cast<std::ptrdiff_t> (done), block,
                     inputs.getWritePointer (0));
        std::copy_n (signal.right.begin() + static_cast<std::ptrdiff_t> (done), block,
                     inputs.getWritePointer (1));
        engine.processBlock();
        engine->deliverMessages();
        const auto* deckLeft = engine.output().getReadPointer (4);
        heard.insert (heard.end(), deckLeft, deckLeft + block);
    }
    return heard;
}

struct Likeness
{
    double median = 0, low = 0; ///< correlation of the pieces: the middle one, and the twentieth part's best
    double typical = 0, farthest = 0; ///< seconds of the track between what is heard and what should be
    double drift = 0;                 ///< seconds, from the first pieces to the last
};

Likeness compare (const juce::AudioBuffer<float>& track, const std::vector<float>& heard,
                  const ControlSignal& signal)
{
    const auto delay = static_cast<size_t> (decoderDelay * rate);
    std::vector<double> alike, offsets;
    for (auto first = signal.at (0.7); first + piece < heard.size(); first += piece)
    {
        auto loud = 0.0, travelled = 0.0;
        for (size_t i = first; i < first + piece; ++i)
        {
            loud += static_cast<double> (heard[i]) * static_cast<double> (heard[i]);
            travelled += std::abs (signal.place[i] - signal.place[i - 1]);
        }
        if (travelled < 0.15 * piece / rate) // too slow to say where a sound is
            continue;
        std::pair<double, double> best { -1, 0 };
        for (auto offset = -widest; offset <= widest; offset += offsetStep)
        {
            auto product = 0.0, square = 0.0;
            for (size_t i = first; i < first + piece; i += 2)
            {
                const auto speed = 10 * (signal.place[i - delay] - signal.place[i - delay - 1]) * rate;
                const auto ideal =
                    trackAt (track, signal.place[i - delay] + offset) * speed / std::sqrt (1 + speed * speed);
                product += ideal * static_cast<double> (heard[i]);
                square += ideal * ideal;
            }
            best = std::max (best, { product / std::sqrt (0.5 * square * loud + 1e-30), offset });
        }
        alike.push_back (best.first);
        offsets.push_back (best.second);
    }
    Likeness all;
    if (alike.empty())
        return all;
    const auto tenth = std::max<size_t> (1, offsets.size() / 10);
    const auto middle = [] (std::vector<double> some)
    {
        std::ranges::sort (some);
        return some[some.size() / 2];
    };
    all.drift = middle ({ offsets.end() - static_cast<std::ptrdiff_t> (tenth), offsets.end() })
                - middle ({ offsets.begin(), offsets.begin() + static_cast<std::ptrdiff_t> (tenth) });
    // The place at which a record begins to be followed is its own: only a change of it is an error.
    const auto usual = middle (offsets);
    for (auto& offset : offsets)
        offset = std::abs (offset - usual);
    std::ranges::sort (alike);
    all.median = alike[alike.size() / 2];
    all.low = alike[alike.size() / 20];
    all.typical = middle (offsets);
    all.farthest = *std::ranges::max_element (offsets);
    return all;
}

void ride (const ControlMedium& medium, const Motion& motion, const SignalFaults& faults,
           TimecodeDeck::Mode mode, const juce::AudioBuffer<float>& track)
{
    auto signal = play (medium, startSeconds, motion.seconds,
                        [&] (double t) { return std::optional (motion.speedAt (t)); });
    spoil (signal, faults, 7);
    BenchEngine engine (true, rate, block);
    engine->settings.deckSetup[0].timecodeLeadIn = 0.0f;
    engine->timecodes[0].setBrand (timecodeBrandOf (medium));
    engine->timecodes[0].setMode (mode);
    engine.putTrack (0, track, rate);
    engine.processBlock();
    engine->deliverMessages();
    if (mode == TimecodeDeck::Mode::relative) // from where the needle will lie
        engine.deck (0).head.position = startSeconds * rate;
    const auto found = compare (track, render (engine, signal), signal);
    std::printf ("| %s | %s | %s | %s | %.4f | %.4f | %.2f | %.2f | %+.2f |\n", motion.name, faults.name,
                 std::string (medium.id).c_str(),
                 mode == TimecodeDeck::Mode::absolute ? "absolute" : "relative", found.median, found.low,
                 1000 * found.typical, 1000 * found.farthest, 1000 * found.drift);
    std::fflush (stdout);
}
}

int main (int count, char** arguments)
{
    if (count > 1)
        decoderDelay = std::atof (arguments[1]) / 1000;
    std::printf (
        "| motion | deck | record | mode | alike, median | 5 %% | ms apart, median | most | drift |\n"
        "|---|---|---|---|---|---|---|---|---|\n");
    const auto track = makeTrack();
    for (const auto& faults : { goodDeck, clubDeck })
        for (const auto* id : { "cd", "serato_2a" })
            for (const auto& motion : motions())
                if (count < 3 || std::string (arguments[2]) == motion.name)
                    for (const auto mode : { TimecodeDeck::Mode::absolute, TimecodeDeck::Mode::relative })
                        ride (*findControlMedium (id), motion, faults, mode, track);
}
