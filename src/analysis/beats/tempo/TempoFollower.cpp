#include "analysis/beats/tempo/TempoFollower.h"

#include "analysis/beats/onset/FirFilter.h"
#include "analysis/beats/onset/Periodicity.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
constexpr double windowSeconds = 10.0, stepSeconds = 2.0;

/** Tempos that are looked at: an octave around the known one, in steps of half a percent. */
constexpr int halfRange = 100;
constexpr int numTempos = 2 * halfRange + 1;
constexpr double octavesPerTempo = 0.5 / halfRange;

/** The price of a change of tempo from one stretch to the next, per octave, in units of the correlation. A jump costs
    no more than its limit: music may go on at another tempo. */
constexpr double pricePerOctave = 3.0, highestPrice = 0.6;
constexpr double pricePerTempo = pricePerOctave * octavesPerTempo;
constexpr auto mostGradual = static_cast<int> (highestPrice / pricePerTempo);

/** The price of a beat that comes early or late, in units of the onset function's spread. */
constexpr double tightness = 100.0;

/** Shares of an onset of its own, and of the likeness of all around it to the song's beat, in the strength of a beat. */
constexpr double ownShare = 0.3, likenessShare = 1.0;

double tempoAt (int index, double bpm)
{
    return bpm * std::exp2 ((index - halfRange) * octavesPerTempo);
}

int bestOf (const std::array<double, numTempos>& sums)
{
    return static_cast<int> (std::max_element (sums.begin(), sums.end()) - sums.begin());
}

struct Path
{
    std::vector<double> bpm; ///< of each stretch
    double agreement = 0.0;
};

/** The path of the best sum of periodicities, less what its changes cost. */
Path tempoPath (const OnsetFunction& onsets, double bpm)
{
    const auto window = static_cast<int> (windowSeconds * onsets.frameRate);
    const auto step = static_cast<int> (stepSeconds * onsets.frameRate);
    std::vector<std::array<double, numTempos>> own, best;
    std::vector<std::array<int, numTempos>> from;
    for (int centre = 0; centre < onsets.size(); centre += step)
    {
        const auto start = std::clamp (centre - window / 2, 0, std::max (0, onsets.size() - window));
        const auto length = static_cast<size_t> (std::min (window, onsets.size() - start));
        const Periodicity self (std::span (onsets.sum).subspan (static_cast<size_t> (start), length),
                                onsets.frameRate, windowSeconds);
        auto& mine = own.emplace_back();
        auto& now = best.emplace_back();
        auto& back = from.emplace_back();
        // The path that pays the highest price comes from the best of all.
        const auto bestBefore = best.size() > 1 ? bestOf (best[best.size() - 2]) : 0;
        for (int t = 0; t < numTempos; ++t)
        {
            const auto beat = 60.0 / tempoAt (t, bpm);
            const auto index = static_cast<size_t> (t);
            now[index] =
                (0.5 * self.at (0.5 * beat) + self.at (beat) + self.at (2 * beat) + self.at (4 * beat)) / 3.5;
            back[index] = t;
            mine[index] = now[index];
            if (best.size() == 1)
                continue;
            const auto& before = best[best.size() - 2];
            back[index] = bestBefore;
            auto most = before[static_cast<size_t> (bestBefore)] - highestPrice;
            for (int s = std::max (0, t - mostGradual); s <= std::min (numTempos - 1, t + mostGradual); ++s)
            {
                const auto price = pricePerTempo * std::abs (s - t);
                if (const auto sum = before[static_cast<size_t> (s)] - price; sum > most)
                {
                    most = sum;
                    back[index] = s;
                }
            }
            now[index] += most;
        }
    }
    Path path { std::vector<double> (best.size()), 0.0 };
    auto t = bestOf (best.back());
    for (auto i = best.size(); i-- > 0;)
    {
        path.bpm[i] = tempoAt (t, bpm);
        path.agreement += own[i][static_cast<size_t> (t)] / static_cast<double> (best.size());
        t = from[i][static_cast<size_t> (t)];
    }
    return path;
}

/** The tempo at a value of the onset function, between those of the stretches, as values per beat. */
double periodAt (const OnsetFunction& onsets, const std::vector<double>& path, int index)
{
    const auto place =
        std::min (index / (stepSeconds * onsets.frameRate), static_cast<double> (path.size() - 1));
    const auto left = static_cast<size_t> (place), right = std::min (left + 1, path.size() - 1);
    const auto part = place - static_cast<double> (left);
    return 60.0 * onsets.frameRate / ((1.0 - part) * path[left] + part * path[right]);
}

/** The beats: each value's best sum of strengths along a chain of beats that ends in it, traced back from the end. */
std::vector<int> beatsAlong (const OnsetFunction& onsets, const std::vector<double>& path,
                             const std::vector<double>& strength)
{
    const auto size = onsets.size();
    std::vector<double> best (static_cast<size_t> (size));
    std::vector<int> from (static_cast<size_t> (size), -1);
    std::vector<double> logOf (static_cast<size_t> (onsets.frameRate * 60.0 / 10.0), 0.0);
    for (size_t lag = 1; lag < logOf.size(); ++lag)
        logOf[lag] = std::log (static_cast<double> (lag));
    auto period = 0.0;
    for (int i = 0; i < size; ++i)
    {
        period = periodAt (onsets, path, i);
        const auto logPeriod = std::log (period);
        auto most = -1e9;
        for (int lag = static_cast<int> (0.75 * period);
             lag <= static_cast<int> (std::ceil (1.3 * period)) && lag <= i; ++lag)
        {
            const auto late = logOf[static_cast<size_t> (lag)] - logPeriod;
            if (const auto sum = best[static_cast<size_t> (i - lag)] - tightness * late * late; sum > most)
            {
                most = sum;
                from[static_cast<size_t> (i)] = i - lag;
            }
        }
        best[static_cast<size_t> (i)] = strength[static_cast<size_t> (i)] + std::max (0.0, most);
    }
    const auto tail = std::max (0, size - static_cast<int> (period) - 1);
    auto i = static_cast<int> (std::max_element (best.begin() + tail, best.end()) - best.begin());
    std::vector<int> beats;
    for (; i >= 0; i = from[static_cast<size_t> (i)])
        beats.push_back (i);
    std::reverse (beats.begin(), beats.end());
    return beats;
}

/** A line through a beat and its neighbours takes out what single onsets are early or late. */
std::vector<double> smoothed (const OnsetFunction& onsets, const std::vector<int>& beats)
{
    constexpr int around = 2;
    const auto count = static_cast<int> (beats.size());
    std::vector<double> positions;
    for (int k = 0; k < count; ++k)
    {
        const auto reach = std::min ({ around, k, count - 1 - k });
        auto sum = 0.0;
        for (int j = k - reach; j <= k + reach; ++j)
            sum += onsets.positionOf (beats[static_cast<size_t> (j)]);
        positions.push_back (sum / (2 * reach + 1));
    }
    return positions;
}

/** The bands over the beats of a pulse that may change its tempo, read in bins from half a beat before a value to half a beat
    after it. */
class BeatPicture
{
public:
    static constexpr int numBins = 24;
    using Bin = std::array<double, COnsetTrackingIntern::numBands>;
    using Bins = std::array<Bin, numBins>;

    BeatPicture (const OnsetFunction& function, const std::vector<double>& tempos)
        : onsets (function),
          path (tempos),
          sums (static_cast<size_t> (function.size()) + 1, Bin {})
    {
        for (size_t i = 0; i + 1 < sums.size(); ++i)
            for (size_t b = 0; b < sums[i].size(); ++b)
                sums[i + 1][b] = sums[i][b] + onsets.bands[i][b];
    }

    Bins at (int index) const
    {
        Bins bins {};
        const auto period = periodAt (onsets, path, index);
        const auto* low = &edge (index, period, 0);
        for (int k = 0; k < numBins; ++k)
        {
            const auto* high = &edge (index, period, k + 1);
            for (size_t b = 0; b < low->size(); ++b)
                bins[static_cast<size_t> (k)][b] = (*high)[b] - (*low)[b];
            low = high;
        }
        return bins;
    }

    static double product (const Bins& x, const Bins& y)
    {
        auto sum = 0.0;
        for (size_t k = 0; k < x.size(); ++k)
            for (size_t b = 0; b < x[k].size(); ++b)
                sum += x[k][b] * y[k][b];
        return sum;
    }

    static void add (Bins& to, const Bins& bins)
    {
        for (size_t k = 0; k < to.size(); ++k)
            for (size_t b = 0; b < to[k].size(); ++b)
                to[k][b] += bins[k][b];
    }

private:
    const Bin& edge (int index, double period, int bin) const
    {
        const auto place =
            index + static_cast<int> (std::lround (period * (bin - 0.5 * numBins - 0.5) / numBins));
        return sums[static_cast<size_t> (std::clamp (place, 0, onsets.size()))];
    }

    const OnsetFunction& onsets;
    const std::vector<double>& path;
    std::vector<Bin> sums;
};

/** The beat of most of the song: the mean of the stretches that look like the one that most others look like. Where a chain
    has slipped, the picture before and after are two, and their mean would be neither. */
BeatPicture::Bins usualBeat (const BeatPicture& picture, const std::vector<int>& beats)
{
    constexpr size_t stretchBeats = 24;
    constexpr auto leastLikeness = 0.5;
    std::vector<BeatPicture::Bins> stretches (std::max<size_t> (1, beats.size() / stretchBeats));
    for (size_t i = 0; i < beats.size(); ++i)
        BeatPicture::add (stretches[i * stretches.size() / beats.size()], picture.at (beats[i]));
    const auto likeness = [&] (size_t i, size_t j)
    {
        const auto power = BeatPicture::product (stretches[i], stretches[i])
                           * BeatPicture::product (stretches[j], stretches[j]);
        return power > 0.0 ? BeatPicture::product (stretches[i], stretches[j]) / std::sqrt (power) : 0.0;
    };
    size_t usual = 0;
    auto most = -1.0;
    for (size_t i = 0; i < stretches.size(); ++i)
    {
        auto sum = 0.0;
        for (size_t j = 0; j < stretches.size(); ++j)
            sum += std::max (0.0, likeness (i, j));
        if (sum > most)
        {
            most = sum;
            usual = i;
        }
    }
    BeatPicture::Bins mean {};
    for (size_t j = 0; j < stretches.size(); ++j)
        if (j == usual || likeness (usual, j) > leastLikeness)
            BeatPicture::add (mean, stretches[j]);
    return mean;
}

/** Likeness of the bands around each value to the song's usual beat: a chain that follows single strong onsets slips to
    another place in the beat where these fall silent, and goes on there; the picture of the beat tells. */
std::vector<double> likenessToBeat (const BeatPicture& picture, const std::vector<int>& beats, int size)
{
    const auto usual = usualBeat (picture, beats);
    std::vector<double> likeness;
    likeness.reserve (static_cast<size_t> (size));
    for (int i = 0; i < size; ++i)
        likeness.push_back (BeatPicture::product (usual, picture.at (i)));
    return likeness;
}

double meanAt (const std::vector<int>& places, const std::vector<double>& values)
{
    auto sum = 0.0;
    for (const auto place : places)
        sum += values[static_cast<size_t> (place)];
    return sum / static_cast<double> (std::max<size_t> (1, places.size()));
}
}

std::optional<TempoFollower::Result> TempoFollower::follow (const OnsetFunction& onsets, double bpm)
{
    if (onsets.size() < 2 * windowSeconds * onsets.frameRate)
        return {};
    const auto path = tempoPath (onsets, bpm);
    const auto single = zplOnsetTracking::CFIRFilter::smoother (
                            2 * COnsetTrackingIntern::framesIn (0.0116, onsets.frameRate) + 1)
                            .process (onsets.positive);
    const std::vector<double> onsetStrength (single.begin(), single.end());
    auto beats = beatsAlong (onsets, path.bpm, onsetStrength);
    const BeatPicture picture (onsets, path.bpm);
    for (int again = 0; again < 2 && beats.size() >= 8; ++again)
    {
        auto strength = likenessToBeat (picture, beats, onsets.size());
        // In the units of the onsets, so that a beat that is early or late costs the same.
        const auto scale = meanAt (beats, onsetStrength) / std::max (1e-9, meanAt (beats, strength));
        for (size_t i = 0; i < strength.size(); ++i)
            strength[i] = ownShare * onsetStrength[i] + likenessShare * scale * strength[i];
        beats = beatsAlong (onsets, path.bpm, strength);
    }
    if (beats.size() < 8)
        return {};
    return Result { Pulse (smoothed (onsets, beats)), path.agreement };
}
